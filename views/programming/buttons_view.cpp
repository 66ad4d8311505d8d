// SPDX-License-Identifier: MIT

#include "views/programming/buttons_view.h"

#include <QAction>
#include <QApplication>
#include <QKeyEvent>
#include <QShortcut>
#include <QTabBar>
#include <QTabWidget>
#include <QVBoxLayout>

#include <algorithm>
#include <cmath>
#include <string>
#include <utility>
#include <vector>

#include "db/station_fields.h"
#include "stations/button_program.h"
#include "stations/operations.h"
#include "stations/record.h"
#include "stations/relays.h"
#include "views/copy_to/copy_to_window.h"
#include "views/programming/buttons_form.h"
#include "views/programming/page_metrics.h"
#include "views/rules/button_tip.h"
#include "views/where_used/where_used_window.h"
#include "views/widgets/icon.h"
#include "views/widgets/scaled_font.h"
#include "views/widgets/shown.h"
#include "views/widgets/tool_band.h"

namespace views {
namespace {

using stations::StationSnapshot;

constexpr auto kOperator = StationEvent::Cause::Operator;

constexpr std::string_view kReadFailed = "Error Reading Station Record";
constexpr std::string_view kMoveFailed = "Error Moving To Another Station";
constexpr std::string_view kButtonFailed = "Error Storing Button Programming";
constexpr std::string_view kRelayFailed = "Error Storing Relay Assignment";

constexpr Tool kSendButtons{"ID_SendButtonData", "Send All Button Data",
                            "Click To Send Button Programming Information Only For All Stations",
                            "send-button-data"};
constexpr Tool kSendSingle{
    "ID_SendSingleStation", "Program Single Station",
    "Click To Send Button And Relay Programming Information For The Current Station Only",
    "send-single-station", true};
constexpr Tool kSendOptos{"ID_SendOptoData", "Send Opto Data Only",
                          "Click To Send Opto Programming Information Only", "send-opto-data",
                          true};
constexpr Tool kQdvStatus{"ID_QDVStatus", "QDV Status",
                          "Click To Display Current QDV Output Module Status", "qdv-status", true};

// The form's first size, in pixels; the usual font is for it.
constexpr double kFirstWidth = 593;
constexpr double kFirstHeight = 407;

// The font does not change with every pixel of the form's size.
constexpr double kFontSteps = 24;

// The caption over the targets until an operation is chosen or another button or station is
// shown.  It differs from the captions that follow.
const char* FirstTargetsCaption(int type) {
  switch (type) {
    case stations::kExternal:
      return "External Channel To Be Called When OPTO Is Activated";
    case stations::kTalk:
    case stations::kListen:
    case stations::kPriorityListen:
    case stations::kGroup:
      return stations::OperationOf(type).buttonTargets;
    default:
      return "Station(s) To Be Called When Opto Is Activated";
  }
}

}  // namespace

ButtonsView::ButtonsView(const Services& services, QWidget* parent)
    : MainView(QStringLiteral("frmButtons"), QStringLiteral("Station Button Programming"),
               QStringLiteral("Butns"), services.settings, parent),
      shown_{services} {
  AddTools();
  form_ = new ButtonsForm(shown_, this);
  auto* const column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(kPageMargin);
  column->addWidget(tools_);
  column->addWidget(form_, 1);
  Connect();
  AddAids();
  AddKeys();
  StationEvent opening(shown_, kOperator);
  ShowAll(opening);
  form_->targets.setTitle(QString::fromLatin1(FirstTargetsCaption(SelectedType(opening))));
  SpeakSelectedButton();
}

ButtonsView::~ButtonsView() {
  delete copyTo_;
  delete whereUsed_;
}

void ButtonsView::AddTools() {
  setWindowIcon(Icon(QStringLiteral("button-programming")));
  tools_ = new ToolBand(QStringLiteral("Button Commands"), tr("Button tools"), *this);
  tools_->Add(kSendButtons, [this] { Q_EMIT SendButtonDataRequested(); });
  tools_->Add(kSendSingle, [this] { SendSingleStation(); });
  tools_->Add(kSendOptos, [this] { SendOptos(); });
  tools_->Add(kQdvStatus, [this] { Q_EMIT QdvStatusRequested(); });
}

void ButtonsView::AddAids() {
  const auto add = [this](const char* name, const QString& caption, const QString& tip,
                          const char* icon, const char* keys, auto run) {
    auto* const action = new QAction(Icon(QLatin1String(icon)), caption, this);
    action->setObjectName(QLatin1String(name));
    action->setToolTip(QStringLiteral("%1 (%2)").arg(tip, QLatin1String(keys)));
    action->setShortcut(QKeySequence(QLatin1String(keys)));
    action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    connect(action, &QAction::triggered, this, run);
    addAction(action);
    form_->AddCommand(*action);
  };
  add("aidCopyToStations", tr("Copy To Stations…"),
      tr("Copy buttons or relays of this station to others"), "copy-to-stations", "Ctrl+Shift+C",
      &ButtonsView::CopyToStations);
  add("aidWhereUsed", tr("Where Used"),
      tr("List the buttons, optos and inhibits that point at this station"), "where-used",
      "Ctrl+Shift+U", &ButtonsView::ShowWhereUsed);
}

void ButtonsView::Connect() {
  connect(form_, &ButtonsForm::ButtonPressed, this, &ButtonsView::EditButton);
  connect(&form_->navigator, &StationNavigator::MoveRequested, this, &ButtonsView::Move);
  connect(&form_->navigator, &StationNavigator::ButtonSelected, this, [this](int button) {
    StationEvent event(shown_, kOperator);
    SelectButton(event, button);
  });
  connect(&form_->tabs, &QTabWidget::currentChanged, this, [this](int tab) {
    StationEvent event(shown_, kOperator);
    ChangeTab(event, tab);
  });
  connect(&form_->options, &OperationOptions::Chosen, this, &ButtonsView::ChooseType);
  connect(&form_->targets, &TargetBoxes::Toggled, this,
          [this](int index, bool checked) { ToggleTarget(index + 1, checked); });
  connect(&form_->relays, &TargetBoxes::Toggled, this,
          [this](int index, bool checked) { ToggleRelay(index + 1, checked); });
  connect(&form_->optos, &OptoPage::NoteRequested, this, &ButtonsView::NoteRequested);
  connect(&form_->finder, &StationFinder::Chosen, this, &ButtonsView::GoToStation);
  connect(&form_->finder, &StationFinder::NotFound, this, [this](const QString& text) {
    Q_EMIT NoteRequested(tr("No station has the number or label %1").arg(text));
  });
  for (int first = 1; first <= shown_.services.model.ButtonCount; first += ButtonPage::kButtons) {
    form_->PageOf(first).SetTips([this](int button) { return TipOf(button); });
  }
}

void ButtonsView::AddKeys() {
  for (const auto& [keys, step] :
       {std::pair(QKeyCombination(Qt::ControlModifier, Qt::Key_PageUp), -1),
        {QKeyCombination(Qt::ControlModifier, Qt::Key_PageDown), 1}}) {
    auto* const shortcut = new QShortcut(keys, this);
    shortcut->setContext(Qt::WidgetWithChildrenShortcut);
    connect(shortcut, &QShortcut::activated, this, [this, step = step] { StepTab(step); });
  }
}

// Not as a focus proxy: Tab would go around between the tabs and their page.
QWidget& ButtonsView::FirstFocus() { return *form_->tabs.tabBar(); }

QSize ButtonsView::minimumSizeHint() const {
  return {form_->navigator.width() + 2 * kPageMargin, MainView::minimumSizeHint().height()};
}

void ButtonsView::FitFont() {
  const QFont desktop = QApplication::font();
  const QSizeF form = FormGeometry().size();
  const double room = std::min(form.width() / kFirstWidth, form.height() / kFirstHeight);
  const double scale = std::min(1.0, std::max(1.0, room) / ScaleOf(desktop));
  const QFont fitting = Scaled(desktop, std::floor(scale * kFontSteps) / kFontSteps);
  if (font() != fitting) setFont(fitting);
  // Its places are fixed, and made for the usual font.
  form_->navigator.setFont(Scaled(desktop, std::min(1.0, 1 / ScaleOf(desktop))));
}

void ButtonsView::changeEvent(QEvent* event) {
  MainView::changeEvent(event);
  if (event->type() == QEvent::ApplicationFontChange) FitFont();
}

// A number or a label that is typed where nothing takes it is that of a station.
void ButtonsView::keyPressEvent(QKeyEvent* event) {
  const bool isPlain = (event->modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier)) == 0;
  const QString text = event->text();
  if (!isPlain || text.isEmpty() || !text.at(0).isLetterOrNumber()) {
    MainView::keyPressEvent(event);
    return;
  }
  form_->finder.Begin();
  QCoreApplication::sendEvent(&form_->finder, event);
}

void ButtonsView::resizeEvent(QResizeEvent* event) {
  MainView::resizeEvent(event);
  FitFont();
  form_->PlaceFields(width());
}

const stations::ButtonProgram& ButtonsView::Selected(StationEvent& event) const {
  static const stations::ButtonProgram kNone;
  const auto& buttons = event.Station().buttons;
  const auto index = static_cast<std::size_t>(Button() - 1);
  return index < buttons.size() ? buttons[index] : kNone;
}

int ButtonsView::SelectedType(StationEvent& event) const {
  return event.Use(kReadFailed, Selected(event).type);
}

int ButtonsView::StationNumber(StationEvent& event) {
  return event.Use(kReadFailed, event.Station().number).Int();
}

template <typename Part>
void ButtonsView::Refresh(Part& part, void (Part::*draw)(StationEvent&)) {
  StationEvent event(shown_, StationEvent::Cause::Refresh);
  (part.*draw)(event);
}

void ButtonsView::UpdateButtonLabels() { Refresh(*this, &ButtonsView::ShowButtonLabels); }

void ButtonsView::UpdateButtonTypes() { Refresh(*this, &ButtonsView::ShowButtonTypes); }

void ButtonsView::UpdateCheckboxLabels() { Refresh(*this, &ButtonsView::ShowTargetCaptions); }

void ButtonsView::UpdateCheckboxSelections() { Refresh(*this, &ButtonsView::ShowTargets); }

void ButtonsView::UpdateRelaySelections() { Refresh(*this, &ButtonsView::ShowRelays); }

void ButtonsView::UpdateOptionButtons() { Refresh(*this, &ButtonsView::ShowChosenOption); }

void ButtonsView::UpdateOptoCheckboxLabels() {
  Refresh(form_->optos, &OptoPage::UpdateOptoCheckboxLabels);
}

void ButtonsView::UpdateOptoSelections() { Refresh(form_->optos, &OptoPage::UpdateOptoSelections); }

void ButtonsView::UpdateOptoOptionButtons() {
  Refresh(form_->optos, &OptoPage::UpdateOptoOptionButtons);
}

void ButtonsView::UpdateOptoChannels() { Refresh(form_->optos, &OptoPage::FillChannelList); }

void ButtonsView::CheckForInactive() { Refresh(*this, &ButtonsView::StoreIfInactive); }

void ButtonsView::UpdateStation() { Refresh(*this, &ButtonsView::ShowStationAnew); }

int ButtonsView::CurrentStation() const {
  jet::RecordSet* const current = shown_.services.stations();
  if (current == nullptr || !current->HasRecord()) return 0;
  return stations::Record(*current).Number(db::kStationNumField);
}

void ButtonsView::ShowAll(StationEvent& event) {
  ShowButtonLabels(event);
  ShowButtonTypes(event);
  ShowTargetCaptions(event);
  ShowTargets(event);
  ShowRelays(event);
  ShowOption(event);
  form_->optos.Show(event);
}

void ButtonsView::ShowStationAnew(StationEvent& event) {
  ShowAll(event);
  form_->targets.setTitle(
      QString::fromLatin1(stations::OperationOf(SelectedType(event)).buttonTargets));
}

void ButtonsView::ShowStation(StationEvent& event) {
  const StationSnapshot& station = event.Station();
  const jet::Value number = event.Use(kReadFailed, station.number);
  form_->finder.ShowStation(number.Int(), QString::fromStdString(station.label.value));
  form_->heading.ShowStation(QString::fromStdString(event.Use(kReadFailed, station.label)),
                             QString::fromStdString(event.Use(kReadFailed, station.inputLabel)),
                             number.IsNull() ? QString() : QString::number(number.Int()));
}

void ButtonsView::ShowButtonLabels(StationEvent& event) {
  ShowStation(event);
  std::vector<std::string> captions;
  for (const auto& button : event.Station().buttons) {
    captions.push_back(
        event.Use(kReadFailed, stations::ButtonCaption(button, event.Station().targets)));
  }
  for (std::size_t first = 0; first < captions.size(); first += ButtonPage::kButtons) {
    const auto onPage = std::min<std::size_t>(ButtonPage::kButtons, captions.size() - first);
    form_->PageOf(static_cast<int>(first) + 1)
        .SetCaptions(std::span(captions).subspan(first, onPage));
  }
}

void ButtonsView::ShowButtonTypes(StationEvent& event) {
  int button = 0;
  for (const auto& read : event.Station().buttons) {
    ++button;
    form_->PageOf(button).SetOperation(button,
                                       stations::OperationOf(event.Use(kReadFailed, read.type)));
  }
}

void ButtonsView::ShowTargetCaptions(StationEvent& event) {
  form_->targets.SetCaptions(event.Use(
      kReadFailed,
      event.Station().targets.Captions(SelectedType(event), shown_.services.model.ChkBoxCount)));
}

void ButtonsView::ShowTargets(StationEvent& event) {
  form_->targets.SetFlags(event.Use(kReadFailed, Selected(event).targets));
}

void ButtonsView::ShowRelays(StationEvent& event) {
  form_->relays.SetFlags(event.Use(kReadFailed, event.Station().relays));
}

void ButtonsView::ShowOption(StationEvent& event) {
  form_->options.Select(SelectedType(event));
  form_->inactive.hide();
}

void ButtonsView::ShowChosenOption(StationEvent& event) {
  ShowOption(event);
  ShowOperation(event);
}

void ButtonsView::ShowOperation(StationEvent& event) {
  const std::string caption =
      event.Use(kReadFailed, stations::ChosenCaption(Selected(event), event.Station().targets));
  const stations::Operation& operation = stations::OperationOf(SelectedType(event));
  form_->inactive.hide();
  ButtonPage& page = form_->PageOf(Button());
  page.SetOperation(Button(), operation);
  form_->targets.setTitle(QString::fromLatin1(operation.buttonTargets));
  page.SetCaption(Button(), QString::fromStdString(caption));
  ShowTargetCaptions(event);
}

void ButtonsView::SpeakSelectedButton() {
  form_->targets.SetSpokenName(
      tr("Target %1 of button %2").arg(QStringLiteral("%1"), QString::number(Button())));
}

void ButtonsView::StoreIfInactive(StationEvent& event) {
  const jet::RecordSet* const current = shown_.services.stations();
  if (current == nullptr || !current->HasRecord()) return;
  bool changed = false;
  event.Do(kButtonFailed, [&](jet::RecordSet& stations) {
    return stations::StoreInactive(stations, Button(), shown_.services.Navigation(), &changed);
  });
  if (changed) NoteInactive(event);
}

void ButtonsView::NoteInactive(StationEvent& event) {
  if (form_->options.Selected() != stations::kInactive) {
    form_->inactive.ShowFor(tr("Button %1").arg(Button()));
  }
  Q_EMIT NoteRequested(tr("Button %1 of station %2 has no target and is stored as inactive")
                           .arg(Button())
                           .arg(StationNumber(event)));
}

void ButtonsView::Move(stations::Movement movement) {
  MoveBy([&](jet::RecordSet& stations) {
    return stations::MoveStation(stations, movement, shown_.services.model.StationCount);
  });
}

bool ButtonsView::GoToStation(int station) {
  if (station > shown_.services.model.StationCount) return false;
  MoveBy([&](jet::RecordSet& stations) {
    const jet::Bookmark before = stations.Mark();
    if (model::Status found = stations::FindStation(stations, station); !found.ok()) return found;
    return stations.NoMatch() ? model::Status(stations.GoTo(before)) : model::Status();
  });
  return CurrentStation() == station;
}

void ButtonsView::GoToButton(int station, int button) {
  if (button > shown_.services.model.ButtonCount) return;
  if (GoToStation(station)) EditButton(button);
}

void ButtonsView::GoToRelays(int station) {
  if (GoToStation(station)) form_->tabs.setCurrentIndex(ButtonsForm::kRelayTab);
}

void ButtonsView::GoToOpto(int station) {
  if (GoToStation(station)) form_->tabs.setCurrentIndex(ButtonsForm::kOptoTab);
}

void ButtonsView::MoveBy(const std::function<model::Status(jet::RecordSet&)>& move) {
  StationEvent event(shown_, kOperator);
  StoreIfInactive(event);
  event.Do(kMoveFailed, move);
  ShowButtonLabels(event);
  ShowButtonTypes(event);
  ShowTargets(event);
  ShowRelays(event);
  form_->optos.UpdateOptoSelections(event);
  form_->optos.SelectChannel(event);
  ShowChosenOption(event);
  form_->optos.UpdateOptoOptionButtons(event);
}

void ButtonsView::ChangeTab(StationEvent& event, int tab) {
  StoreIfInactive(event);
  form_->ShowTab(tab);
}

void ButtonsView::StepTab(int step) {
  QTabWidget& tabs = form_->tabs;
  const int tab = tabs.currentIndex() + step;
  if (tab >= 0 && tab < tabs.count()) tabs.setCurrentIndex(tab);
}

void ButtonsView::SelectButton(StationEvent& event, int button) {
  StoreIfInactive(event);
  selectedButton_ = button;
  ShowTargets(event);
  ShowChosenOption(event);
  SpeakSelectedButton();
}

void ButtonsView::EditButton(int button) {
  {
    StationEvent event(shown_, kOperator);
    form_->navigator.SelectButton(button);
    SelectButton(event, button);
    const QSignalBlocker quietly(form_->tabs);
    form_->tabs.setCurrentIndex(ButtonsForm::kEditTab);
    ChangeTab(event, ButtonsForm::kEditTab);
  }
  // What another view stores when it loses the focus is an event of its own.
  form_->targets.setFocus(Qt::OtherFocusReason);
}

void ButtonsView::ToggleTarget(int target, bool set) {
  StationEvent event(shown_, kOperator);
  const int count = shown_.services.model.ChkBoxCount;
  bool isInactive = false;
  if (!event.Do(kButtonFailed, [&](jet::RecordSet& stations) {
        return stations::StoreTarget(stations, Button(), target, set, count,
                                     shown_.services.Operator(), &isInactive);
      })) {
    ShowTargets(event);
    return;
  }
  const std::string caption = event.Use(
      kReadFailed, stations::EditedCaption(Selected(event), count, event.Station().targets));
  form_->PageOf(Button()).SetCaption(Button(), QString::fromStdString(caption));
  if (isInactive) NoteInactive(event);
}

void ButtonsView::ChooseType(int type) {
  StationEvent event(shown_, kOperator);
  if (!event.Do(kButtonFailed, [&](jet::RecordSet& stations) {
        return stations::StoreType(stations, Button(), type, shown_.services.Operator());
      })) {
    ShowOption(event);
    return;
  }
  ShowOperation(event);
}

void ButtonsView::ToggleRelay(int relay, bool set) {
  StationEvent event(shown_, kOperator);
  if (!event.Do(kRelayFailed, [&](jet::RecordSet& stations) {
        return stations::StoreRelay(stations, relay, set, shown_.services.model.RelayCount,
                                    shown_.services.Operator());
      })) {
    ShowRelays(event);
  }
}

void ButtonsView::ShowFind() { form_->finder.Begin(); }

QString ButtonsView::TipOf(int button) {
  const StationSnapshot station(shown_.services.stations(), shown_.services.model.ButtonCount);
  const auto index = static_cast<std::size_t>(button - 1);
  if (index >= station.buttons.size()) return {};
  return tr("Button %1").arg(button) + u'\n' +
         QString::fromStdString(rules::ButtonTip(station.buttons[index], station.targets,
                                                 shown_.services.model.ChkBoxCount));
}

void ButtonsView::CopyToStations() {
  const int station = CurrentStation();
  if (station == 0 || IsShown(copyTo_) || RefusedByLock(shown_.services)) return;
  using Choice = CopySource::Choice;
  const int focused = form_->FocusedButton();
  const int button = focused != 0 ? focused : Button();
  const int inSight = form_->FirstInSight();
  const bool isPage = inSight != 0 && inSight <= shown_.services.model.ButtonCount;
  const int tab = form_->tabs.currentIndex();
  CopySource source{.station = station, .button = button, .choice = Choice::Button};
  source.pageFirst = isPage ? inSight : button - (button - 1) % ButtonPage::kButtons;
  if (isPage && focused == 0) source.choice = Choice::Page;
  if (tab == ButtonsForm::kRelayTab) source.choice = Choice::Relays;
  copyTo_ = new CopyToWindow(shown_.services, source, window());
  copyTo_->setAttribute(Qt::WA_DeleteOnClose);
  connect(copyTo_, &CopyToWindow::Copied, this, &ButtonsView::NoteRequested);
  copyTo_->open();
}

void ButtonsView::ShowWhereUsed() {
  const int station = CurrentStation();
  if (station == 0) return;
  if (whereUsed_ == nullptr) {
    whereUsed_ = new WhereUsedWindow(shown_.services, window());
    connect(whereUsed_, &WhereUsedWindow::GoToRequested, this, &ButtonsView::UseRequested);
  }
  whereUsed_->ShowStation(station);
  BringUp(*whereUsed_);
}

void ButtonsView::SendSingleStation() {
  if (RefusedByLock(shown_.services)) return;
  StationEvent event(shown_, kOperator);
  const int station = StationNumber(event);
  if (station == 0) return;
  const switcher::PollPause pause(shown_.services.poll);
  SendTable(shown_.services, {.table = switcher::Table::Buttons, .station = station});
  SendTable(shown_.services, {.table = switcher::Table::Relays, .station = station});
}

void ButtonsView::SendOptos() { SendTable(shown_.services, {.table = switcher::Table::Optos}); }

}  // namespace views
