// SPDX-License-Identifier: MIT
//
// What the programming view is made of.

#include <QApplication>
#include <QComboBox>
#include <QHBoxLayout>
#include <QScrollArea>
#include <QShortcut>
#include <QTabBar>
#include <QTabWidget>
#include <QToolButton>
#include <QVBoxLayout>

#include <cmath>
#include <string>
#include <utility>
#include <vector>

#include "views/programming/buttons_view.h"
#include "views/programming/inactive_note.h"
#include "views/programming/operation_options.h"
#include "views/programming/opto_page.h"
#include "views/programming/page_metrics.h"
#include "views/programming/station_fields.h"
#include "views/programming/station_navigator.h"
#include "views/programming/target_boxes.h"
#include "views/widgets/icon.h"
#include "views/widgets/scaled_font.h"
#include "views/widgets/tool_band.h"

namespace views {
namespace {

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

// A page that scrolls where the tab is too small for it.
QScrollArea* Scrolled(QWidget* page) {
  auto* const area = new QScrollArea;
  area->setFrameShape(QFrame::NoFrame);
  area->setFocusPolicy(Qt::NoFocus);
  area->setWidgetResizable(true);
  area->setWidget(page);
  return area;
}

QWidget* PageWith(std::initializer_list<QWidget*> parts) {
  auto* const page = new QWidget;
  auto* const column = new QVBoxLayout(page);
  column->setContentsMargins(kPageMargin, kPageMargin, kPageMargin, kPageMargin);
  column->setSpacing(kPageMargin);
  for (QWidget* const part : parts) column->addWidget(part);
  column->addStretch();
  return page;
}

std::vector<std::string> RelayCaptions(int count) {
  std::vector<std::string> captions;
  for (int relay = 1; relay <= count; ++relay) {
    captions.push_back(
        QStringLiteral("Relay %1").arg(relay, 2, 10, QLatin1Char('0')).toStdString());
  }
  return captions;
}

}  // namespace

void ButtonsView::AddTools() {
  setWindowIcon(Icon(QStringLiteral("button-programming")));
  tools_ = new ToolBand(QStringLiteral("Button Commands"), tr("Button tools"), *this);
  tools_->Add(kSendButtons, [this] { Q_EMIT SendButtonDataRequested(); });
  tools_->Add(kSendSingle, [this] { SendSingleStation(); });
  tools_->Add(kSendOptos, [this] { SendOptos(); });
  tools_->Add(kQdvStatus, [this] { Q_EMIT QdvStatusRequested(); });
}

void ButtonsView::AddPages() {
  const model::SystemModel& model = services_.model;
  optos_ = new OptoPage(services_, updating_, this);
  navigator_ = new StationNavigator(*optos_->ChannelSelector(), this);
  fields_ = new StationFields(this);
  tabs_ = new QTabWidget(this);
  tabs_->setObjectName(QStringLiteral("SSActiveTabs1"));
  tabs_->setDocumentMode(true);
  tabs_->setUsesScrollButtons(true);
  tabs_->setElideMode(Qt::ElideNone);
  // With keys the tabs themselves are gone through.
  for (QToolButton* const scroll : tabs_->tabBar()->findChildren<QToolButton*>()) {
    scroll->setFocusPolicy(Qt::NoFocus);
  }

  for (int index = 0; index < kButtonPages; ++index) {
    const int first = index * ButtonPage::kButtons + 1;
    auto* const page = new ButtonPage(first, model.ButtonCount);
    connect(page, &ButtonPage::Clicked, this, &ButtonsView::EditButton);
    tabs_->addTab(
        Scrolled(page),
        QStringLiteral("Buttons %1 - %2").arg(first).arg(first + ButtonPage::kButtons - 1));
    pages_[static_cast<std::size_t>(index)] = page;
  }

  options_ = new OperationOptions(QStringLiteral("fmButType"), QStringLiteral("optButType"));
  inactive_ = new InactiveNote(QStringLiteral("aidInactiveNote"));
  options_->AddNote(*inactive_);
  targets_ = new TargetBoxes(QStringLiteral("frStations"), QStringLiteral("ckStationSel"),
                             model.ChkBoxCount);
  tabs_->addTab(Scrolled(PageWith({options_, targets_})), QStringLiteral("Edit Selected Button"));

  relays_ =
      new TargetBoxes(QStringLiteral("frRelays"), QStringLiteral("ckRelaySel"), model.RelayCount);
  relays_->setTitle(tr("Relays Assigned To The Station"));
  relays_->SetCaptions(RelayCaptions(model.RelayCount));
  tabs_->addTab(Scrolled(PageWith({relays_})), QStringLiteral("Relay Assignments"));
  tabs_->addTab(Scrolled(optos_), QStringLiteral("Opto Assignments"));

  connect(navigator_, &StationNavigator::MoveRequested, this, &ButtonsView::Move);
  connect(tabs_, &QTabWidget::currentChanged, this, &ButtonsView::ChangeTab);
  connect(options_, &OperationOptions::Chosen, this, &ButtonsView::ChooseType);
  connect(targets_, &TargetBoxes::Toggled, this,
          [this](int index, bool checked) { ToggleTarget(index + 1, checked); });
  connect(relays_, &TargetBoxes::Toggled, this,
          [this](int index, bool checked) { ToggleRelay(index + 1, checked); });
  connect(optos_, &OptoPage::Edited, this, [this](int station) {
    services_.unsent.NoteEdited({.table = switcher::Table::Optos, .station = station});
  });
  connect(optos_, &OptoPage::NoteRequested, this, &ButtonsView::NoteRequested);

  // Selecting the item that is selected already counts, too: only the second signal tells of it.
  QComboBox* const selector = &navigator_->ButtonSelector();
  connect(selector, &QComboBox::currentIndexChanged, this, [this](int index) {
    wasButtonSelected_ = true;
    SelectButton(index + 1);
  });
  connect(selector, &QComboBox::activated, this, [this](int index) {
    if (!std::exchange(wasButtonSelected_, false)) SelectButton(index + 1);
  });
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

void ButtonsView::LayOut() {
  station_ = new QHBoxLayout;
  station_->setContentsMargins(kPageMargin, kPageMargin, kPageMargin, 0);
  station_->setSpacing(kPageMargin);
  station_->addWidget(navigator_);
  station_->addWidget(fields_, 1);
  station_->addStretch();
  auto* const column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(kPageMargin);
  column->addWidget(tools_);
  column->addLayout(station_);
  column->addWidget(tabs_, 1);
}

// Not as a focus proxy: Tab would go around between the tabs and their page.
QWidget& ButtonsView::FirstFocus() { return *tabs_->tabBar(); }

QSize ButtonsView::minimumSizeHint() const {
  return {navigator_->width() + 2 * kPageMargin, MainView::minimumSizeHint().height()};
}

void ButtonsView::FitFont() {
  const QFont desktop = QApplication::font();
  const QSizeF form = FormGeometry().size();
  const double room = std::min(form.width() / kFirstWidth, form.height() / kFirstHeight);
  const double scale = std::min(1.0, std::max(1.0, room) / ScaleOf(desktop));
  const QFont fitting = Scaled(desktop, std::floor(scale * kFontSteps) / kFontSteps);
  if (font() != fitting) setFont(fitting);
  // Its places are fixed, and made for the usual font.
  navigator_->setFont(Scaled(desktop, std::min(1.0, 1 / ScaleOf(desktop))));
}

void ButtonsView::changeEvent(QEvent* event) {
  MainView::changeEvent(event);
  if (event->type() == QEvent::ApplicationFontChange) FitFont();
}

void ButtonsView::resizeEvent(QResizeEvent* event) {
  MainView::resizeEvent(event);
  FitFont();
  // In a narrow view the fields stand under the navigation.
  const int needed = navigator_->width() + fields_->minimumSizeHint().width() + 3 * kPageMargin;
  station_->setDirection(width() < needed ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight);
}

}  // namespace views
