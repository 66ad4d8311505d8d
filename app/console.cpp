// SPDX-License-Identifier: MIT

#include "app/console.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QScreen>
#include <QSessionManager>
#include <QStringList>
#include <system_error>
#include <utility>

#include "app/decode_tick.h"
#include "app/shell/about_dialog.h"
#include "app/shell/mdi_arrangement.h"
#include "app/start_up.h"
#include "config/configuration.h"
#include "config/ini_file.h"
#include "config/serial_devices.h"
#include "views/window_place/visible_place.h"
#include "views/xmap/xmap_legend.h"

namespace app {

namespace {

using Icon = model::ErrorReporter::Icon;

// The largest main window: all screens together, and no less than this many pixels each way.
// The picture of a window takes memory, and a mistyped setting must not ask for more than there
// is.
constexpr int kLeastLimit = 8192;

QSize Bounded(const QSize& size) {
  const QSize screens = QGuiApplication::primaryScreen()->virtualSize();
  return size.boundedTo(screens.expandedTo(QSize(kLeastLimit, kLeastLimit)));
}

}  // namespace

Console::Console(AppFolder folder)
    : folder_(std::move(folder)),
      settings_(config::PlacesSection(ReadSettings())),
      placement_(settings_, QStringLiteral("Main")),
      files_(File(db::kMainFile), File(db::kWorkingCopy),
             folder_.lacks.ok() ? db::WhenMissing::Create : db::WhenMissing::Fail),
      damage_(files_, boxes_),
      window_(commands_),
      port_([this](int number) { return SerialDevice(number); }),
      liveCommands_({.model = model_, .port = port_, .reporter = boxes_}),
      line_(port_, [this] { return window_.PollTimer().remainingTimeAsDuration(); }),
      tables_({.model = model_, .files = files_, .port = port_, .reporter = boxes_}),
      views_(window_.Area(), ViewServices()),
      viewMenu_(window_.ViewMenu(), views_, window_, [this] { log_.Show(); }),
      labels_(
          model_, [this] { return files_.Database(); }, changes_),
      inhibits_(
          model_, [this] { return files_.Database(); }, changes_),
      panelReports_(window_.Status(), labels_, inhibits_),
      panelErrors_(boxes_, window_.Hints()),
      panelCommands_({.model = model_, .port = port_, .reporter = panelErrors_}),
      panels_({.model = model_,
               .files = files_,
               .commands = panelCommands_,
               .line = line_,
               .timer = panelPause_,
               .decodeTimer = window_,
               .events = panelReports_,
               .reporter = panelErrors_}),
      decoder_({.model = model_,
                .database = [this] { return files_.Database(); },
                .reporter = boxes_,
                .changes = changes_,
                .observers = {views_, panels_}}),
      link_(model_, port_, decoder_, window_),
      transfers_(window_, views_, {.model = model_, .tables = tables_, .poll = *this},
                 {.parts = {.model = model_,
                            .decoder = decoder_,
                            .port = port_,
                            .link = link_,
                            .poll = *this,
                            .reporter = boxes_},
                  .closeViews = {}}),
      aids_(model_,
            {.isOpen = [this] { return port_.IsOpen(); },
             .device = [this] { return QFileInfo(SerialDevice(model_.ComPort)); }},
            window_.Status(), window_.Hints()),
      log_({.model = model_,
            .labels = labels_,
            .window = window_,
            .views = views_,
            .panels = panelReports_,
            .transfers = transfers_,
            .boxes = boxes_,
            .commands = commands_}),
      export_(window_.ExportMenu(), window_, ViewServices(),
              [this] { return views_.StoreEdits(); }) {
  ConnectCommands();
  ConnectTimers();
  listener_.SetAcceptHandler(
      [this](std::unique_ptr<gateway::ClientSocket> client) { panels_.Accept(std::move(client)); });

  StatusBar& status = window_.Status();
  status.SetLegend(new views::XmapLegend(&status));
  connect(&views_, &OpenViews::ReadoutChanged, &status, &StatusBar::SetReadout);
  connect(&views_, &OpenViews::XmapLoaded, &status, &StatusBar::WantLegend);

  connect(&views_, &OpenViews::UnsentChanged, &status, &StatusBar::SetUnsent);
  connect(&views_, &OpenViews::MapReported, this,
          [this] { aids_.MapReported(QTime::currentTime()); });
  connect(&window_, &MainWindow::LinkTextShown, this, [this] { aids_.LinkChanged(); });
  connect(&window_.DiscardCommand(), &QAction::triggered, this, [this] {
    if (const auto code = link_.DiscardBlockedByte()) log_.ByteDiscarded(*code);
  });
  connect(&transfers_, &Transfers::NoteRequested, &status, &StatusBar::ShowNote);
  connect(&views_, &OpenViews::SentByTool, &sentNote_, &SentNote::Add);
  connect(&sentNote_, &SentNote::NoteRequested, &status, &StatusBar::ShowNote);
  connect(&views_, &OpenViews::NoteRequested, &status, &StatusBar::ShowNote);
  connect(&export_, &ExportMenu::NoteRequested, &status, &StatusBar::ShowNote);
  connect(&export_, &ExportMenu::NoteRequested, &log_, &LogKeeper::Note);

  window_.SetCloseHandler([this] { return ShutDown(); });
  connect(&termination_, &Termination::Requested, this, [this] {
    terminating_ = true;
    if (ended_) {
      EndProgram();  // only the last reports stood in the way
    } else {
      window_.close();
    }
  });
  // Whoever logs out of the desktop wants what was edited kept: only the shut-down saves it.
  connect(qApp, &QGuiApplication::commitDataRequest, this, [this](QSessionManager& session) {
    if (!ended_ && !views_.StoreEdits()) {
      session.cancel();
      return;
    }
    terminating_ = true;
    if (!window_.close()) session.cancel();
  });
}

views::Services Console::ViewServices() {
  return {.model = model_,
          .stations = [this] { return files_.Stations(); },
          .changes = changes_,
          .commands = liveCommands_,
          .tables = *this,
          .poll = *this,
          .settings = settings_,
          .reporter = boxes_};
}

Console::~Console() { delete help_.data(); }

std::filesystem::path Console::File(const char* name) const {
  return QDir(folder_.path).filePath(QLatin1String(name)).toStdU16String();
}

// What cannot be read names nothing, and has its defaults.
config::IniFile Console::ReadSettings() const {
  config::IniFile settings;
  (void)config::IniFile::Load(File(config::kConfigurationFile), &settings);
  return settings;
}

QString Console::SerialDevice(int number) const {
  return QString::fromStdString(config::SerialDevice(ReadSettings(), number));
}

// A place that no screen shows is kept in the settings until the window is moved: the screen may
// be back tomorrow.
void Console::PlaceWindow() {
  QList<QRect> screens;
  for (const QScreen* const screen : QGuiApplication::screens()) {
    screens.append(screen->geometry());
  }
  QRect stored = placement_.Stored();
  stored.setSize(Bounded(stored.size()));
  const QRect place =
      views::VisiblePlace(stored, screens, QGuiApplication::primaryScreen()->availableGeometry());
  window_.move(place.topLeft());
  window_.resize(place.size());
  placement_.SetRestored(window_.Place());
  if (place != stored) {
    window_.Hints().Give(Hint::WindowRescued,
                         tr("The stored place of this window is on no screen: it is shown here."));
  }
}

void Console::Start() {
  if (!folder_.lacks.ok()) model::ReportError(boxes_, "Preparing User Folder", folder_.lacks);
  if (!settings_.Problem().ok()) {
    model::ReportError(boxes_, "Reading Window Settings", settings_.Problem());
  }
  PlaceWindow();
  SayWhatIsUnusual();
  config::IniFile settings;
  if (const auto status = config::IniFile::Load(File(config::kConfigurationFile), &settings);
      !status.ok()) {
    model::ReportError(boxes_, "Reading Configuration File", status);
  }
  StartUp(model_, files_, listener_, link_, boxes_).Run(folder_.path.toStdString(), settings);
  damage_.Tell();
  if (listener_.IsListening()) panelReports_.Begin();
  if (model_.DemoMode == 1) {
    window_.Status().SetDemo(true);
    window_.Hints().Give(Hint::Demo, tr("Demo mode: the map draws its own takes, whether or not a "
                                        "switcher carries them out."));
  }
  window_.PollTimer().start();
  window_.DecodeTimer().start();
  views_.ShowButtons();
  views_.ShowAlphas();
  views_.ShowXmap();
  window_.show();
  boxes_.ShowOver(&window_);
}

// About the files that it works on: nothing that is wrong, but what the operator must know.
void Console::SayWhatIsUnusual() {
  if (folder_.IsTheUsers()) window_.Status().SetFolder(folder_.path);
  if (const QString other = OtherDatabase(folder_); !other.isEmpty()) {
    boxes_.Show(Icon::Exclamation, "Orvo Intercom Control", other.toStdString());
  }
  if (files_.IsWriteProtected()) {
    boxes_.Show(Icon::Exclamation, "Orvo Intercom Control",
                tr("Tesk.mdb Is Write-Protected\r\rWhat is edited cannot be saved, unless the "
                   "protection is taken off before the console is closed.")
                    .toStdString());
  }
}

void Console::ConnectCommands() {
  QMdiArea& area = window_.Area();
  commands_.Set(QStringLiteral("ID_Contents"), [this] { ShowContents(); });
  commands_.Set(QStringLiteral("ID_About"), [this] { ShowAbout(); });
  commands_.Set(QStringLiteral("ID_SendData"), [this] { transfers_.SendData(0); });
  commands_.Set(QStringLiteral("ID_RetreiveData"), [this] { transfers_.RetrieveData(); });
  commands_.Set(QStringLiteral("ID_Exit"), [this] { window_.close(); });
  commands_.Set(QStringLiteral("ID_XpointMap"), [this] { views_.ShowXmap(); });
  commands_.Set(QStringLiteral("ID_StationAlphas"), [this] { views_.ShowAlphas(); });
  commands_.Set(QStringLiteral("ID_ButtonProgramming"), [this] { views_.ShowButtons(); });
  for (const char* const id : {"ID_SourceLevelControl", "ID_ViewSourcelevelControl"}) {
    commands_.Set(QLatin1String(id), [this] { views_.ShowLevels(); });
  }
  for (const char* const id : {"ID_QDVStatus", "ID_ViewQDVStatus"}) {
    commands_.Set(QLatin1String(id), [this] { views_.ShowTally(); });
  }
  commands_.Set(QStringLiteral("ID_Cascade"), [&area] { Cascade(area); });
  commands_.Set(QStringLiteral("ID_TileHorizontal"), [&area] { TileHorizontal(area); });
  commands_.Set(QStringLiteral("ID_TileVertical"), [&area] { TileVertical(area); });
  commands_.Set(QStringLiteral("ID_ArrangeIcons"), [&area] { ArrangeIcons(area); });
  window_.UpdateCommands();
  connect(&views_, &OpenViews::QdvStatusRequested, this,
          [this] { commands_.Run(QStringLiteral("ID_QDVStatus")); });
  connect(&views_, &OpenViews::SendButtonDataRequested, this, [this] { transfers_.SendData(-1); });
}

void Console::ConnectTimers() {
  connect(&window_.PollTimer(), &QTimer::timeout, this, [this] {
    link_.PollTick();
    aids_.Tick();
  });
  connect(&window_.DecodeTimer(), &QTimer::timeout, this, [this] {
    if (!DecodeTick(link_, panels_)) window_.DecodeTimer().stop();
  });
}

void Console::SetPolling(bool on) {
  if (on) {
    window_.PollTimer().start();
  } else {
    window_.PollTimer().stop();
  }
}

void Console::ShowAbout() {
  auto* const about = new AboutDialog(model_, &window_);
  about->setAttribute(Qt::WA_DeleteOnClose);
  about->open();
}

void Console::ShowContents() {
  if (StartHelpViewer()) return;
  if (help_ == nullptr) help_ = new HelpWindow;
  const QString place = ManualPlace(QApplication::activeModalWidget());
  if (!place.isEmpty()) help_->ShowPlace(place);
  if (help_->isMinimized()) help_->showNormal();
  help_->show();
  help_->raise();
  help_->activateWindow();
}

// The shut-down, in its order.  False when the database could not be saved: the program then
// goes on, and closing tries again.
bool Console::ShutDown() {
  if (ended_) return true;
  transfers_.CancelNow();
  // What is typed and cannot be stored has been reported; the window stays, so that it can be
  // mended or given up.  A system that ends the program does not wait for that, and all that was
  // stored before must not be lost for it.
  if (!views_.StoreEdits() && !terminating_) return false;
  if (!window_.isMinimized()) placement_.Save(window_.Place());
  bool saved = false;
  if (const model::Status status = files_.SaveAndClose(&saved); !status.ok()) {
    OfferToCloseWithoutSaving(status);
    terminating_ = false;
    return false;
  }
  if (saved) log_.Note(tr("Database saved"));
  EndRun();
  return true;
}

// A protection or a full disk that nobody can do anything about must not hold the console for ever.
void Console::OfferToCloseWithoutSaving(const model::Status& status) {
  boxes_.ShowOffering(
      Icon::Critical, "Database Error", model::ErrorText("Error Saving Database File", status),
      {{.name = QStringLiteral("aidCloseWithoutSaving"),
        .caption = tr("Close Without Saving"),
        .action = [this] { CloseWithoutSaving(); },
        .tip = tr("Leaves Tesk.mdb as it is, keeps what was edited in a file of its own beside it, "
                  "and closes the console.")}});
}

// Where it went is said before the program is gone.
void Console::CloseWithoutSaving() {
  if (!files_.IsOpen()) return;  // another box of this kind was answered before
  transfers_.CancelNow();
  std::filesystem::path kept;
  const model::Status status = files_.CloseWithoutSaving(&kept);
  const QString name = QString::fromStdU16String(kept.u16string());
  QStringList lines{tr("Closed Without Saving"), QString(),
                    tr("What was edited is in this file: %1").arg(name)};
  if (kept == File(db::kWorkingCopy)) {
    lines.append(tr("Copy it before the console is started again: the start deletes it."));
  }
  if (!status.ok()) lines.append(QString::fromStdString(status.Description()));
  boxes_.Show(Icon::Exclamation, "Orvo Intercom Control", lines.join(u'\r').toStdString());
  EndRun();
  window_.close();
}

// What the shut-down does when nothing keeps it from ending any more.
void Console::EndRun() {
  if (port_.IsOpen()) port_.Close();
  window_.PollTimer().stop();
  window_.DecodeTimer().stop();

  if (const model::Status status = WriteSettings(); !status.ok()) {
    model::ReportError(boxes_, "Writing Configuration File", status);
  }
  listener_.Stop();
  panels_.CloseAll();
  views_.CloseAll();
  ended_ = true;
  EndProgram();
}

// A file that cannot be read is not written either: what it holds would be lost.  Nor is one made
// in the place of the house's that could not be copied.
model::Status Console::WriteSettings() const {
  const std::filesystem::path path = File(config::kConfigurationFile);
  std::error_code unseen;
  if (!folder_.lacks.ok() && !std::filesystem::exists(path, unseen)) return {};
  config::IniFile file;
  if (model::Status status = config::IniFile::Load(path, &file); !status.ok()) return status;
  config::WriteConfiguration(model_, port_.Number(), file);
  return file.Save(path);
}

// The last reports are read before the program ends, unless the system wants it gone.
void Console::EndProgram() {
  if (terminating_ || boxes_.IsEmpty()) {
    QMetaObject::invokeMethod(qApp, &QCoreApplication::quit, Qt::QueuedConnection);
    return;
  }
  connect(&boxes_, &MessageBoxes::Emptied, qApp, &QCoreApplication::quit, Qt::QueuedConnection);
  boxes_.ShowOver(nullptr);
}

}  // namespace app
