// SPDX-License-Identifier: MIT

#include "views/xmap/xmap_view.h"

#include <QAction>
#include <QKeyEvent>
#include <QMenu>
#include <QScrollBar>

#include <algorithm>
#include <string_view>

#include "stations/texts.h"
#include "views/rules/xmap_records.h"
#include "views/widgets/icon.h"
#include "views/window_place/twips.h"
#include "views/xmap/xmap_find.h"
#include "views/xmap/xmap_grid_view.h"
#include "views/xmap/xmap_header.h"
#include "views/xmap/xmap_words.h"

namespace views {
namespace {

using model::ErrorReporter;
using rules::ActionDecision;
using rules::XmapAction;

constexpr std::string_view kConflictTitle = "Synchronization Warning";
constexpr std::string_view kConflictText =
    "Crosspoint selection received for Inhibited Crosspoint.\n";

// The grid follows the form only from this size up, and leaves it this much, all in twips.
constexpr int kSmallestFormWidth = 1400;
constexpr int kSmallestFormHeight = 600;
constexpr int kBesideGrid = 80;
constexpr int kAboveGrid = 780;

constexpr int kSmallestToolBarHeight = 20;
constexpr int kUsualToolBarHeight = 26;

constexpr int kZoomSteps[] = {75, 100, 125, 150, 175, 200};
constexpr int kFullSize = 100;

}  // namespace

const MapCommand kFindChannel = {Qt::Key_F, [](XmapView& view) { view.ShowFind(); }};
const MapCommand kGoToCrosspoint = {Qt::Key_G, [](XmapView& view) { view.ShowGoTo(); }};
const MapCommand kZoomIn = {Qt::Key_Plus, [](XmapView& view) { view.StepZoom(1); }};
const MapCommand kZoomOut = {Qt::Key_Minus, [](XmapView& view) { view.StepZoom(-1); }};
const MapCommand kZoomReset = {Qt::Key_0, [](XmapView& view) { view.SetZoom(kFullSize); }};

// A tool of the band, in the band's order.
struct XmapView::XmapTool {
  Tool tool;
  void (*run)(XmapView& view);
  bool onBand = true;
};

const XmapView::XmapTool XmapView::kTools[] = {
    {{"ID_Take", "&Take Pgm", "Take Current Crosspoint Selection", "take"},
     [](XmapView& view) { view.PerformAction(static_cast<int>(XmapAction::Take)); }},
    {{"ID_Sum", "&Sum Pgm", "Sum On or Off Current Source Selection", "sum"},
     [](XmapView& view) { view.PerformAction(static_cast<int>(XmapAction::Sum)); }},
    {{"ID_Call", "&Call", "Establish Or Break A Station Call", "call", true},
     [](XmapView& view) { view.PerformAction(static_cast<int>(XmapAction::Call)); }},
    {{"ID_Listen", "&Listen",
      "Establish Or Break A Listen Crosspoint (Will Be Interupted By A Call)", "listen"},
     [](XmapView& view) { view.PerformAction(static_cast<int>(XmapAction::Listen)); },
     false},
    {{"ID_PriorityListen", "&Priority Listen",
      "Establish Or Break A Priority Listen (Not Interupted By A Call)", "priority-listen"},
     [](XmapView& view) { view.PerformAction(static_cast<int>(XmapAction::PriorityListen)); }},
    {{"ID_ToggleInhibit", "Toggle &Inhibit", "Establish Or Remove A Crosspoint Inhibit",
      "toggle-inhibit", true},
     [](XmapView& view) { view.ToggleInhibit(); }},
    {{"ID_RefreshMap", "&Refresh Map", "Request An Update Of The Crosspoint Map From The Switcher",
      "refresh-map", true},
     [](XmapView& view) { view.RefreshMap(); }},
    {{"ID_SendInhibits", "Sen&d Inhibits", "Send Inhibit List To Switcher", "send-inhibits"},
     [](XmapView& view) { view.SendInhibits(); }},
    {{"ID_QDVStatus", "QDV Status", "Click To Display Current QDV Output Module Status",
      "qdv-status"},
     [](XmapView& view) { Q_EMIT view.QdvStatusRequested(); }},
};

XmapView::XmapView(const Services& services, QWidget* parent)
    : MainView(QStringLiteral("frmXmap"), QStringLiteral("Crosspoint Map"), QStringLiteral("Xmap"),
               services.settings, parent),
      services_(services),
      grid_(services.model),
      cells_(grid_, services.locks) {
  grid_.Clear();
  tools_ = new ToolBand(QStringLiteral("XptmapButtons"), tr("Crosspoint tools"), *this);
  gridView_ = new XmapGridView(grid_, cells_, this);
  find_ = new XmapFind(grid_, this);
  inhibitTool_ = new InhibitTool(services_, grid_, cells_, *this);
  takeUndo_ = new TakeUndo(services_, grid_, *this);
  setWindowIcon(Icon(QStringLiteral("teskctl")));
  gridView_->setAccessibleName(windowTitle());
  setFocusProxy(gridView_);
  AddTools();
  AddAids();
  AddLockCommands();
  services_.locks.AddObserver(*this);

  ShowUnsent();

  connect(&services_.unsent, &UnsentTables::Changed, this, &XmapView::ShowUnsent);
  connect(gridView_, &XmapGridView::CurrentCellChanged, this, &XmapView::ReadCurrentCell);
  connect(&cells_, &QAbstractItemModel::dataChanged, this, &XmapView::ReadCurrentCell);
  connect(&cells_, &QAbstractItemModel::headerDataChanged, this, &XmapView::ReadCurrentCell);
  connect(gridView_, &XmapGridView::TextTyped, this, &XmapView::ShowFind);
  connect(gridView_, &XmapGridView::ZoomStepped, this, &XmapView::StepZoom);
  connect(gridView_, &XmapGridView::MenuRequested, this, &XmapView::ShowMenu);
  connect(find_, &XmapFind::MatchesChanged, gridView_, &XmapGridView::SetMatches);
  connect(find_, &XmapFind::FirstMatch, this, [this](int output, int input) {
    if (output >= 1) gridView_->ShowOutput(output);
    if (input >= 1) gridView_->ShowInput(input);
  });
  connect(find_, &XmapFind::Chosen, gridView_, [this](int output, int input) {
    gridView_->Select({output, input});
  });
  connect(find_, &XmapFind::BlockChosen, gridView_, [this](const rules::CellBlock& block) {
    gridView_->SelectTo({block.lastOutput, block.lastInput});
  });
  connect(find_, &XmapFind::Closed, this, [this] { gridView_->setFocus(Qt::OtherFocusReason); });
  connect(gridView_, &XmapGridView::HeaderMenuRequested, this, &XmapView::ShowHeaderMenu);
  connect(inhibitTool_, &InhibitTool::NoteRequested, this, &XmapView::NoteRequested);
  connect(takeUndo_, &TakeUndo::NoteRequested, this, &XmapView::NoteRequested);
  connect(takeUndo_, &TakeUndo::CommandSent, this, [this](int output, int input, int action) {
    Q_EMIT TakeSent(output, input, action);
    pending_.Sent({output, input});
  });
  connect(&pending_, &PendingCrosspoints::Changed, gridView_, &XmapGridView::SetPending);
  connect(&pending_, &PendingCrosspoints::GivenUp, this, [this](int output) {
    Q_EMIT NoteRequested(
        tr("No report for Out %1").arg(QString::fromStdString(grid_.Number(output))));
  });

  LayOut();
  GenerateGrid();
}

XmapView::~XmapView() { services_.locks.RemoveObserver(*this); }

void XmapView::AddTools() {
  for (const XmapTool& each : kTools) {
    const auto run = [this, run = each.run] { run(*this); };
    const bool refreshes = std::string_view(each.tool.key) == "ID_RefreshMap";
    if (each.onBand) {
      tools_->Add(each.tool, run, refreshes ? QKeySequence(Qt::Key_F5) : QKeySequence());
    } else {
      ToolBand::MakeAction(each.tool, run, *this);
    }
  }
}

QAction* XmapView::AddAid(const char* name, const QString& caption, const QString& icon,
                          const QKeySequence& shortcut, const std::function<void()>& run) {
  auto* const action = new QAction(Icon(icon), caption, this);
  action->setObjectName(QLatin1String(name));
  action->setShortcut(shortcut);
  action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
  connect(action, &QAction::triggered, this, run);
  addAction(action);
  return action;
}

void XmapView::AddAids() {
  undoTake_ = AddAid("aidUndoTake", tr("&Undo Last Take…"), QStringLiteral("undo-take"),
                     Qt::CTRL | Qt::Key_U, [this] { takeUndo_->AskBack(); });
  const auto program = [this](int station) {
    if (station >= 1) Q_EMIT ProgramRequested(station);
  };
  const auto editLabel = [this](int station, bool ofInput) {
    if (station >= 1) Q_EMIT EditLabelRequested(station, ofInput);
  };
  programButtons_ =
      AddAid("aidProgramButtons", tr("Program Its &Buttons"), QStringLiteral("button-programming"),
             Qt::CTRL | Qt::Key_B, [this, program] { program(gridView_->Selected().output); });
  editLabel_ =
      AddAid("aidEditLabel", tr("Edit Its &Label"), QStringLiteral("station-labels"), Qt::Key_F2,
             [this, editLabel] { editLabel(gridView_->Selected().output, false); });
  programInput_ = AddAid("aidProgramInput", tr("Pro&gram The Input's Buttons"),
                         QStringLiteral("button-programming"), Qt::CTRL | Qt::SHIFT | Qt::Key_B,
                         [this, program] { program(gridView_->Selected().input); });
  editInputLabel_ = AddAid("aidEditInputLabel", tr("&Edit The Input's Label"),
                           QStringLiteral("station-labels"), Qt::SHIFT | Qt::Key_F2,
                           [this, editLabel] { editLabel(gridView_->Selected().input, true); });
}

void XmapView::ShowMenu(const QPoint& globalPosition) {
  auto* const menu = new QMenu(this);
  menu->setObjectName(QStringLiteral("aidXmapMenu"));
  menu->setAttribute(Qt::WA_DeleteOnClose);
  menu->addActions(tools_->actions());
  menu->addSeparator();
  menu->addActions({undoTake_, programButtons_, editLabel_, programInput_, editInputLabel_});
  menu->addSeparator();
  menu->addActions({lockOutput_, lockForPanels_});
  menu->popup(globalPosition);
}

void XmapView::ShowHeaderMenu(Qt::Orientation side, int channel, const QPoint& globalPosition) {
  auto* const menu = new QMenu(this);
  menu->setObjectName(QStringLiteral("aidHeaderMenu"));
  menu->setAttribute(Qt::WA_DeleteOnClose);
  const bool ofInput = side == Qt::Horizontal;
  const auto add = [menu](const QAction& like, auto run) {
    menu->addAction(like.icon(), like.text(), run)->setObjectName(like.objectName());
  };
  add(*programButtons_, [this, channel] { Q_EMIT ProgramRequested(channel); });
  add(*editLabel_, [this, channel, ofInput] { Q_EMIT EditLabelRequested(channel, ofInput); });
  if (!ofInput) AddLocks(*menu, channel);
  menu->popup(globalPosition);
}

void XmapView::AddLocks(QMenu& menu, int output) {
  using model::Locks;
  const auto add = [&menu](const QAction& like, bool isOn) {
    QAction* const action = menu.addAction(like.icon(), like.text());
    action->setObjectName(like.objectName());
    action->setCheckable(true);
    action->setChecked(isOn);
    return action;
  };
  menu.addSeparator();
  const bool isLocked = services_.locks.IsLocked(output);
  connect(add(*lockOutput_, isLocked), &QAction::triggered, this, [this, output](bool isOn) {
    SetLock(output, isOn ? std::optional(Locks::Against::Console) : std::nullopt);
  });
  QAction* const forPanels = add(*lockForPanels_, services_.locks.IsLockedForPanels(output));
  forPanels->setEnabled(isLocked);
  connect(forPanels, &QAction::triggered, this, [this, output](bool isOn) {
    SetLock(output, isOn ? Locks::Against::ConsoleAndPanels : Locks::Against::Console);
  });
}

void XmapView::AddLockCommands() {
  using model::Locks;
  const auto add = [this](const char* name, const QString& caption, const QString& tip) {
    auto* const action = new QAction(caption, this);
    action->setObjectName(QLatin1String(name));
    action->setCheckable(true);
    action->setToolTip(tip);
    addAction(action);
    return action;
  };
  lockOutput_ = add("aidLockOutput", tr("Lock &Output"),
                    tr("Keep the crosspoints of the current output as they are"));
  lockOutput_->setIcon(Icon(QStringLiteral("lock")));
  lockForPanels_ = add("aidLockForPanels", tr("Also For Pa&nels"),
                       tr("Ignore what network panels take on the locked output"));
  connect(lockOutput_, &QAction::triggered, this, [this](bool isOn) {
    SetLock(gridView_->Selected().output,
            isOn ? std::optional(Locks::Against::Console) : std::nullopt);
  });
  connect(lockForPanels_, &QAction::triggered, this, [this](bool isOn) {
    SetLock(gridView_->Selected().output,
            isOn ? Locks::Against::ConsoleAndPanels : Locks::Against::Console);
  });
  connect(gridView_, &XmapGridView::CurrentCellChanged, this, &XmapView::ShowLock);
}

void XmapView::ShowLock() {
  const int output = gridView_->Selected().output;
  const bool isLocked = services_.locks.IsLocked(output);
  lockOutput_->setEnabled(output >= 1);
  lockOutput_->setChecked(isLocked);
  lockForPanels_->setEnabled(isLocked);
  lockForPanels_->setChecked(services_.locks.IsLockedForPanels(output));
}

void XmapView::SetLock(int output, std::optional<model::Locks::Against> against) {
  if (output < 1 || RefusedByLock(services_)) {
    ShowLock();  // the command has changed by itself
    return;
  }
  if (against) {
    services_.locks.LockOutput(output, *against);
  } else {
    services_.locks.UnlockOutput(output);
  }
  const QString words =
      cells_.headerData(output - 1, Qt::Vertical, Qt::AccessibleTextRole).toString();
  Q_EMIT NoteRequested(against ? words : tr("%1: Output unlocked").arg(words));
}

void XmapView::LocksChanged() {
  cells_.LabelsChanged(Qt::Vertical);
  ShowLock();
}

void XmapView::LayOut() {
  const QSize form = FormGeometry().size();
  if (ToTwips(form.width()) >= kSmallestFormWidth &&
      ToTwips(form.height()) >= kSmallestFormHeight) {
    gridView_->resize(form.width() - ToPixels(kBesideGrid), form.height() - ToPixels(kAboveGrid));
  }
  // The tool bar takes what the title bar and the frame leave of the room above the grid.
  const int room = height() - gridView_->height();
  // A maximised map has no title bar: its tools are no higher than those of other windows.
  const int highest =
      std::min(ToPixels(kAboveGrid), std::max(kUsualToolBarHeight, tools_->sizeHint().height()));
  const int toolBarHeight = std::clamp(room, kSmallestToolBarHeight, highest);
  tools_->setGeometry(0, 0, width(), toolBarHeight);
  gridView_->move(0, toolBarHeight);
  PlaceFind();
}

void XmapView::PlaceFind() {
  constexpr int kMargin = 6;
  const QRect body = gridView_->viewport()->geometry().translated(gridView_->pos());
  find_->move(std::max(0, body.right() - find_->width() - kMargin), body.top() + kMargin);
}

bool XmapView::event(QEvent* event) {
  if (event->type() == QEvent::ShortcutOverride) {
    // The main window has these keys, too; in the view they are the view's.
    if (KeyCommand(*static_cast<QKeyEvent*>(event))) {
      event->accept();
      return true;
    }
  }
  return MainView::event(event);
}

void XmapView::keyPressEvent(QKeyEvent* event) {
  if (const std::function<void()> command = KeyCommand(*event)) {
    command();
    event->accept();
  } else {
    MainView::keyPressEvent(event);
  }
}

std::function<void()> XmapView::KeyCommand(const QKeyEvent& key) {
  if (key.key() == Qt::Key_Escape && !find_->isHidden()) return [this] { find_->Close(); };
  // The plus sign needs Shift on many keyboards.
  const Qt::KeyboardModifiers modifiers =
      key.modifiers() & ~(Qt::KeypadModifier | Qt::ShiftModifier);
  if (modifiers != Qt::ControlModifier) return nullptr;
  const int pressed = key.key() == Qt::Key_Equal ? Qt::Key_Plus : key.key();
  for (const MapCommand& command : {kFindChannel, kGoToCrosspoint, kZoomIn, kZoomOut, kZoomReset}) {
    if (command.key == pressed) return [this, command] { command.run(*this); };
  }
  return nullptr;
}

void XmapView::SetWarning(const QString& warning) { gridView_->SetWarning(warning); }

void XmapView::ShowFind(const QString& text) {
  find_->OpenFind(text);
  PlaceFind();
}

void XmapView::ShowGoTo() {
  find_->OpenGoTo();
  PlaceFind();
}

void XmapView::GoTo(int output, int input) {
  const auto isChannel = [this](int channel) {
    return channel >= 1 && channel <= grid_.ChannelCount();
  };
  if (!isChannel(output) || !isChannel(input)) return;
  gridView_->Select({output, input});
  gridView_->setFocus(Qt::OtherFocusReason);
}

void XmapView::GoToOutput(int output) { GoTo(output, std::max(1, gridView_->Selected().input)); }

void XmapView::GoToInput(int input) { GoTo(std::max(1, gridView_->Selected().output), input); }

int XmapView::Zoom() const { return gridView_->Zoom(); }

void XmapView::SetZoom(int percent) {
  gridView_->SetZoom(percent);
  PlaceFind();
}

void XmapView::StepZoom(int step) {
  const int zoom = Zoom();
  if (step > 0) {
    const auto* const next = std::upper_bound(std::begin(kZoomSteps), std::end(kZoomSteps), zoom);
    if (next != std::end(kZoomSteps)) SetZoom(*next);
  } else {
    const auto* const next = std::lower_bound(std::begin(kZoomSteps), std::end(kZoomSteps), zoom);
    if (next != std::begin(kZoomSteps)) SetZoom(*std::prev(next));
  }
}

bool XmapView::HasCrosshair() const { return gridView_->HasCrosshair(); }

void XmapView::SetCrosshair(bool visible) { gridView_->SetCrosshair(visible); }

void XmapView::ShowUnsent() {
  const bool unsent = services_.unsent.Has(switcher::Table::Inhibits);
  findChild<QAction*>(QStringLiteral("ID_SendInhibits"))
      ->setIcon(Icon(QStringLiteral("send-inhibits"),
                     unsent ? QStringLiteral("unsent-badge") : QString()));
}

void XmapView::GenerateGrid() {
  if (const model::Status status = DrawEverything(); !status.ok()) {
    ShowFailure(services_, "Error Generating Crosspoint Grid", status);
    return;
  }
  gridView_->selectCell(rules::kFixedCells, rules::kFixedCells);
}

model::Status XmapView::DrawEverything() {
  model::Status read = WithStations(services_, [this](jet::RecordSet& stations) {
    model::Status labels = DrawAlphas(stations);
    if (!labels.ok()) return labels;
    return DrawInhibits(stations);
  });
  if (read.ok()) UpdateXmap(model::kAll, 0);
  return read;
}

model::Status XmapView::DrawAlphas(jet::RecordSet& stations) {
  model::Status status = rules::DrawLabels(stations, stations::ReadTexts, &grid_);
  cells_.LabelsChanged(Qt::Vertical);
  cells_.LabelsChanged(Qt::Horizontal);
  find_->Refresh();
  return status;
}

model::Status XmapView::DrawInhibits(jet::RecordSet& stations) {
  rules::ChannelSet changed;
  model::Status status = rules::DrawInhibits(stations, stations::ReadTexts, &grid_, &changed);
  cells_.OutputsChanged(changed);
  return status;
}

void XmapView::UpdateXmap(int row, int mode) {
  pending_.Reported(row);
  const rules::MapUpdate update = grid_.UpdateXmap(row, mode);
  takeUndo_->Reported(row);
  cells_.OutputsChanged(update.changed);
  for (int i = 0; i < update.conflicts; ++i) {
    services_.reporter.Show(ErrorReporter::Icon::Exclamation, kConflictTitle, kConflictText);
  }
}

void XmapView::UpdateXmapInhibits() {
  const model::Status status =
      WithStations(services_, [this](jet::RecordSet& stations) { return DrawInhibits(stations); });
  if (!status.ok()) ShowFailure(services_, "Error Reading Crosspoint Inhibits", status);
}

void XmapView::InhibitsReported() {
  UpdateXmapInhibits();
  cells_.OutputsChanged(grid_.RedrawCrosspoints());
}

void XmapView::InhibitsStored(int output, std::string_view before, std::string_view after) {
  if (!grid_.InhibitsStored(output, before, after)) return;
  cells_.OutputsChanged(rules::ChannelSet().set(static_cast<std::size_t>(output)));
}

void XmapView::UpdateXmapAlphas() {
  const model::Status status =
      WithStations(services_, [this](jet::RecordSet& stations) { return DrawAlphas(stations); });
  if (!status.ok()) ShowFailure(services_, "Error Reading Channel Labels", status);
}

void XmapView::PerformAction(int action) {
  const QPoint cell = gridView_->selectedCell();
  const ActionDecision decision = grid_.DecideAction(action, cell.y(), cell.x());
  switch (decision.kind) {
    case ActionDecision::Kind::Nothing:
      break;
    case ActionDecision::Kind::NoCell:
      SetReadout(tr("No crosspoint selected"));
      break;
    case ActionDecision::Kind::AlreadyMade:
      Q_EMIT NoteRequested(grid_.MarkAt(cell.y(), cell.x()) == rules::Mark::Priority
                               ? tr("Already made by priority; Call or Priority Listen breaks it")
                               : tr("Already made; Sum breaks it"));
      break;
    case ActionDecision::Kind::Inhibited:
      ShowRefusal(services_, "Action Not Allowed On Inhibited Crosspoint");
      break;
    case ActionDecision::Kind::Send: {
      if (services_.commands.RefusesTake(decision.output)) break;
      const bool sent = services_.commands.SendTake(decision.output, decision.input,
                                                    static_cast<std::uint8_t>(decision.code));
      if (sent) Q_EMIT TakeSent(decision.output, decision.input, static_cast<int>(decision.code));
      if (services_.model.DemoMode == 1) {
        grid_.DrawAction(decision);
        cells_.OutputsChanged(rules::ChannelSet().set(static_cast<std::size_t>(decision.output)));
      } else if (sent) {
        pending_.Sent({decision.output, decision.input});
        if (decision.code == switcher::TakeAction::Take) {
          takeUndo_->Sent(decision.output, decision.input);
        }
      }
      break;
    }
  }
}

void XmapView::ToggleInhibit() {
  const Crosspoint cell = gridView_->Selected();
  if (cell == Crosspoint()) {
    SetReadout(tr("No crosspoint selected"));
  } else {
    inhibitTool_->Toggle(cell, gridView_->Block());
  }
}

// The next poll asks for the whole map.
void XmapView::RefreshMap() {
  if (RefusedByLock(services_)) return;
  services_.model.XmapComplete = false;
  Q_EMIT RefreshRequested();
}

void XmapView::SendInhibits() { SendTables(services_, {{.table = switcher::Table::Inhibits}}); }

void XmapView::ReadCurrentCell() {
  const int output = gridView_->Selected().output;
  const int chosen = gridView_->Block().Cells();
  QString detail;
  if (chosen > 1) {
    detail = tr("%1 crosspoints chosen").arg(chosen);
  } else if (output >= 1) {
    detail = HearsWords(grid_, output);
  }
  SetReadout(cells_.data(gridView_->currentIndex(), Qt::AccessibleTextRole).toString(), detail);
}

void XmapView::SetReadout(const QString& readout, const QString& detail) {
  if (readout == readout_ && detail == detail_) return;
  readout_ = readout;
  detail_ = detail;
  Q_EMIT ReadoutChanged(readout_, detail_);
}

}  // namespace views
