// SPDX-License-Identifier: MIT

#include "app/shell/open_views.h"

#include <QScreen>
#include <algorithm>
#include <optional>
#include <string>
#include <vector>

#include "app/shell/in_sight.h"
#include "db/station_fields.h"
#include "stations/texts.h"
#include "views/main_view.h"
#include "views/widgets/shown.h"
#include "views/window_place/on_screen.h"

namespace app {

using views::IsShown;

namespace {

const QString kXmap = QStringLiteral("frmXmap");
const QString kAlphas = QStringLiteral("frmAlphas");
const QString kButtons = QStringLiteral("frmButtons");

}  // namespace

OpenViews::OpenViews(QMdiArea& area, const views::Services& services)
    : area_(area), services_(services) {
  connect(&area_, &QMdiArea::subWindowActivated, this, &OpenViews::ActiveViewChanged);
}

OpenViews::~OpenViews() {
  delete levels_;
  delete tally_;
}

QMdiSubWindow* OpenViews::Find(const QString& name) const {
  for (QMdiSubWindow* const window : area_.subWindowList()) {
    // A window that was closed is hidden until it is deleted.
    if (window->isHidden() || window->widget() == nullptr) continue;
    if (window->widget()->objectName().compare(name, Qt::CaseInsensitive) == 0) return window;
  }
  return nullptr;
}

void OpenViews::Show(const QString& name, const std::function<views::MainView*()>& load) {
  // By itself the area would make what comes up as large as a maximised window before it.
  QMdiSubWindow* const active = area_.activeSubWindow();
  if (active != nullptr && active->isMaximized()) active->showNormal();
  QMdiSubWindow* window = Find(name);
  views::MainView* view = nullptr;  // when it is a new one
  if (window == nullptr) {
    view = load();
    Q_EMIT Loaded(view);
    window = area_.addSubWindow(view);
    window->setAttribute(Qt::WA_DeleteOnClose);
    window->setWindowIcon(view->windowIcon());
  } else if (window->isMinimized()) {
    window->showNormal();
  }
  window->show();
  area_.setActiveSubWindow(window);
  // By itself a new window would give the focus to its first tool, and the first tools send.
  if (view != nullptr) view->FirstFocus().setFocus(Qt::ActiveWindowFocusReason);
  BringInSight(area_, *window, window->rect());
}

void OpenViews::ShowXmap() {
  Show(kXmap, [this] { return LoadXmap(); });
}

void OpenViews::ShowAlphas() {
  Show(kAlphas, [this] { return LoadAlphas(); });
}

void OpenViews::ShowButtons() {
  Show(kButtons, [this] { return new views::ButtonsView(services_); });
}

void OpenViews::ShowButtonsOf(int station) {
  ShowButtons();
  Buttons()->GoToStation(station);
}

void OpenViews::ShowLabelOf(int station, bool ofInput) {
  ShowAlphas();
  Alphas()->GoTo(station,
                 ofInput ? stations::LabelColumn::InputLabel : stations::LabelColumn::StationLabel);
}

void OpenViews::ShowInMap(int station, bool asInput) {
  ShowXmap();
  if (asInput) {
    Xmap()->GoToInput(station);
  } else {
    Xmap()->GoToOutput(station);
  }
}

void OpenViews::ShowAllInPlace() {
  ShowButtons();
  ShowAlphas();
  ShowXmap();
  for (const QString& name : {kButtons, kAlphas, kXmap}) {
    qobject_cast<views::MainView*>(Find(name)->widget())->RestorePlacement();
  }
  QMdiSubWindow* const map = Find(kXmap);
  BringInSight(area_, *map, map->rect());
}

void OpenViews::ShowLevels() {
  if (IsShown(levels_)) return;
  levels_ = new views::InputLevelDialog(services_, gainsReportedAt_, area_.window());
  levels_->setAttribute(Qt::WA_DeleteOnClose);
  connect(levels_, &views::InputLevelDialog::GainSet, this, &OpenViews::GainSet);
  const QSize screen = levels_->screen()->availableSize();
  levels_->FitInto(views::SizeOnScreen(screen, screen).width());
  levels_->open();
}

void OpenViews::ShowTally() {
  if (IsShown(tally_)) return;
  tally_ = new views::TallyDialog(services_.model, tallyReportedAt_, area_.window());
  tally_->setAttribute(Qt::WA_DeleteOnClose);
  NameStations();
  connect(tally_, &QDialog::finished, this, [this] { services_.model.TallyViewOpen = false; });
  services_.model.TallyViewOpen = true;
  tally_->open();
}

views::MainView* OpenViews::LoadXmap() {
  auto* const view = new views::XmapView(services_);
  connect(view, &QObject::destroyed, this, [this] {
    // A window that was closed is deleted later: meanwhile another map may have been loaded.
    if (Xmap() == nullptr) Q_EMIT XmapLoaded(false);
  });
  view->SetWarning(mapWarning_);
  Q_EMIT XmapLoaded(true);
  return view;
}

views::MainView* OpenViews::LoadAlphas() {
  auto* const view = new views::AlphasView(services_);
  connect(view, &views::AlphasView::EditChanged, this, &OpenViews::EditsChanged);
  // What shows labels follows a row that was stored, in this order; the optos come last.
  connect(view, &views::AlphasView::LabelsChanged, this, [this] {
    views::ButtonsView* const buttons = Buttons();
    if (buttons != nullptr) {
      buttons->UpdateButtonLabels();
      buttons->UpdateCheckboxLabels();
    }
    if (views::XmapView* const xmap = Xmap()) xmap->UpdateXmapAlphas();
    if (buttons != nullptr) {
      buttons->UpdateOptoCheckboxLabels();
      buttons->UpdateOptoChannels();
    }
  });
  return view;
}

template <typename View>
View* OpenViews::FindView(const QString& name) const {
  const QMdiSubWindow* const window = Find(name);
  return window == nullptr ? nullptr : qobject_cast<View*>(window->widget());
}

views::XmapView* OpenViews::Xmap() const { return FindView<views::XmapView>(kXmap); }
views::AlphasView* OpenViews::Alphas() const { return FindView<views::AlphasView>(kAlphas); }
views::ButtonsView* OpenViews::Buttons() const { return FindView<views::ButtonsView>(kButtons); }

template <typename View>
View* OpenViews::Active() const {
  const QMdiSubWindow* const window = area_.activeSubWindow();
  return window == nullptr ? nullptr : qobject_cast<View*>(window->widget());
}

bool OpenViews::IsMapCurrent() const {
  const QMdiSubWindow* const window = area_.currentSubWindow();
  return window != nullptr && !window->isHidden() &&
         qobject_cast<views::XmapView*>(window->widget()) != nullptr;
}

bool OpenViews::CanFind() const {
  return Active<views::XmapView>() != nullptr || Active<views::AlphasView>() != nullptr ||
         Active<views::ButtonsView>() != nullptr;
}

void OpenViews::ShowFind() {
  if (auto* const xmap = Active<views::XmapView>()) xmap->ShowFind();
  if (auto* const alphas = Active<views::AlphasView>()) alphas->ShowFind();
  if (auto* const buttons = Active<views::ButtonsView>()) buttons->ShowFind();
}

void OpenViews::SetMapWarning(const QString& warning) {
  if (warning == mapWarning_) return;
  mapWarning_ = warning;
  if (views::XmapView* const xmap = Xmap()) xmap->SetWarning(mapWarning_);
}

bool OpenViews::HasEdits() const {
  const views::AlphasView* const alphas = Alphas();
  return alphas != nullptr && alphas->HasEdit();
}

bool OpenViews::StoreEdits() {
  views::AlphasView* const alphas = Alphas();
  return alphas == nullptr || alphas->StoreRow();
}

void OpenViews::CloseAll() {
  StoreEdits();
  if (levels_ != nullptr) levels_->close();
  if (tally_ != nullptr) tally_->close();
  for (QMdiSubWindow* const window : area_.subWindowList()) {
    if (!window->isHidden()) window->close();
  }
}

void OpenViews::CrosspointRowChanged(int output, int mode) {
  if (views::XmapView* const xmap = Xmap()) xmap->UpdateXmap(output, mode);
}

void OpenViews::GainsChanged() {
  gainsReportedAt_ = QDateTime::currentDateTime();
  if (!IsShown(levels_)) return;
  levels_->ShowReported(gainsReportedAt_);
  levels_->Update_GainMap();
}

void OpenViews::TallyChanged() {
  tallyReportedAt_ = QDateTime::currentDateTime();
  if (services_.model.TallyViewOpen && tally_ != nullptr) tally_->UpdateTally(tallyReportedAt_);
}

void OpenViews::LabelsChanged(int /*selector*/) { UpdateLabels(); }

void OpenViews::UpdateLabels() {
  if (views::XmapView* const xmap = Xmap()) xmap->UpdateXmapAlphas();
  if (views::AlphasView* const alphas = Alphas()) alphas->UpdateLabels();
  if (views::ButtonsView* const buttons = Buttons()) buttons->UpdateStation();
  if (IsShown(levels_)) levels_->UpdateLabels();
  if (IsShown(tally_)) NameStations();
}

void OpenViews::NameStations() {
  std::vector<std::optional<std::string>> labels;
  // Without them the lamps have their numbers.
  (void)views::WithStations(services_, [&](jet::RecordSet& stations) {
    const int count = std::clamp<int>(services_.model.ChannelCount, 0, model::kLevelCount);
    return stations::ReadAvailableTexts(stations, db::kLabelField, count, &labels);
  });
  QStringList names;
  for (const std::optional<std::string>& label : labels) {
    names.append(QString::fromStdString(label.value_or(std::string())));
  }
  tally_->ShowStations(names);
}

void OpenViews::InhibitsChanged(int /*output*/) {
  if (views::XmapView* const xmap = Xmap()) xmap->InhibitsReported();
}

void OpenViews::RelaysChanged(int /*output*/) {
  if (views::ButtonsView* const buttons = Buttons()) buttons->UpdateRelaySelections();
}

void OpenViews::ButtonsChanged(int /*station*/) {
  if (views::ButtonsView* const buttons = Buttons()) buttons->UpdateStation();
}

void OpenViews::OptosChanged() {
  if (views::ButtonsView* const buttons = Buttons()) buttons->UpdateStation();
}

}  // namespace app
