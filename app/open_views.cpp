// SPDX-License-Identifier: MIT

#include "app/open_views.h"

#include <QScreen>

#include "app/shell/in_sight.h"
#include "views/main_view.h"
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
  Show(kButtons, [this] { return LoadButtons(); });
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
  const QSize screen = levels_->screen()->availableSize();
  levels_->FitInto(views::SizeOnScreen(screen, screen).width());
  levels_->open();
}

void OpenViews::ShowTally() {
  if (IsShown(tally_)) return;
  tally_ = new views::TallyDialog(services_.model, tallyReportedAt_, area_.window());
  tally_->setAttribute(Qt::WA_DeleteOnClose);
  connect(tally_, &QDialog::finished, this, [this] { services_.model.TallyViewOpen = false; });
  services_.model.TallyViewOpen = true;
  tally_->open();
}

void OpenViews::Connect(views::MainView& view) {
  connect(&view, &views::MainView::QdvStatusRequested, this, &OpenViews::QdvStatusRequested);
  connect(&view, &views::MainView::TableEdited, this, &OpenViews::TableEdited);
  connect(&view, &views::MainView::TableSent, this,
          [this](switcher::Table table, int station, int messages) {
            TableSent(table, station, messages);
            Q_EMIT SentByTool({.table = table, .station = station}, messages);
          });
  connect(&view, &views::MainView::NoteRequested, this, &OpenViews::NoteRequested);
}

views::MainView* OpenViews::LoadXmap() {
  auto* const view = new views::XmapView(services_);
  Connect(*view);
  connect(view, &views::XmapView::TakeSent, this, &OpenViews::TakeSent);
  connect(view, &views::XmapView::RefreshRequested, this, &OpenViews::MapRefreshRequested);
  connect(view, &views::XmapView::ReadoutChanged, this, &OpenViews::ReadoutChanged);
  view->SetInhibitsUnsent(unsent_.Has(switcher::Table::Inhibits));
  connect(view, &QObject::destroyed, this, [this] {
    Q_EMIT ReadoutChanged({});
    Q_EMIT XmapLoaded(false);
  });
  Q_EMIT XmapLoaded(true);
  Q_EMIT ReadoutChanged(view->Readout());
  return view;
}

views::MainView* OpenViews::LoadAlphas() {
  auto* const view = new views::AlphasView(services_);
  Connect(*view);
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

views::MainView* OpenViews::LoadButtons() {
  auto* const view = new views::ButtonsView(services_);
  Connect(*view);
  connect(view, &views::ButtonsView::SendButtonDataRequested, this,
          &OpenViews::SendButtonDataRequested);
  return view;
}

void OpenViews::TableEdited(switcher::Table table, int station) {
  unsent_.Edited(table, station);
  Q_EMIT Edited({.table = table, .station = station});
  ShowUnsent();
}

void OpenViews::TableSent(switcher::Table table, int station, int messages) {
  unsent_.Sent(table, station);
  Q_EMIT Sent({.table = table, .station = station}, messages);
  ShowUnsent();
}

void OpenViews::TableFailed(switcher::Table table, int station) {
  Q_EMIT NotSent({.table = table, .station = station});
}

void OpenViews::NothingUnsent() {
  unsent_.Clear();
  ShowUnsent();
}

void OpenViews::ShowUnsent() {
  if (views::XmapView* const xmap = Xmap()) {
    xmap->SetInhibitsUnsent(unsent_.Has(switcher::Table::Inhibits));
  }
  Q_EMIT UnsentChanged(unsent_.Names());
}

template <typename View>
View* OpenViews::Loaded(const QString& name) const {
  const QMdiSubWindow* const window = Find(name);
  return window == nullptr ? nullptr : qobject_cast<View*>(window->widget());
}

views::XmapView* OpenViews::Xmap() const { return Loaded<views::XmapView>(kXmap); }
views::AlphasView* OpenViews::Alphas() const { return Loaded<views::AlphasView>(kAlphas); }
views::ButtonsView* OpenViews::Buttons() const { return Loaded<views::ButtonsView>(kButtons); }

template <typename View>
View* OpenViews::Active() const {
  const QMdiSubWindow* const window = area_.activeSubWindow();
  return window == nullptr ? nullptr : qobject_cast<View*>(window->widget());
}

bool OpenViews::CanFind() const {
  return Active<views::XmapView>() != nullptr || Active<views::AlphasView>() != nullptr;
}

void OpenViews::ShowFind() {
  if (auto* const xmap = Active<views::XmapView>()) xmap->ShowFind();
  if (auto* const alphas = Active<views::AlphasView>()) alphas->ShowFind();
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
  Q_EMIT MapReported(output, mode);
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

void OpenViews::LabelsChanged(int /*selector*/) {
  if (views::XmapView* const xmap = Xmap()) xmap->UpdateXmapAlphas();
  if (views::AlphasView* const alphas = Alphas()) alphas->UpdateLabels();
  if (views::ButtonsView* const buttons = Buttons()) buttons->UpdateStation();
  if (IsShown(levels_)) levels_->UpdateLabels();
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

void OpenViews::MessageRefused(std::string_view description, switcher::DecodeStatus status) {
  Q_EMIT ReportRefused(QString::fromUtf8(description), status);
}

}  // namespace app
