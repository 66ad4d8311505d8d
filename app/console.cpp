// SPDX-License-Identifier: MIT

#include "app/console.h"

#include <QApplication>
#include <QDate>
#include <QDeadlineTimer>
#include <QFileInfo>
#include <QSessionManager>
#include <chrono>
#include <utility>

#include "app/decode_tick.h"
#include "app/shell/about_dialog.h"
#include "app/shell/mdi_arrangement.h"
#include "app/switcher_observers.h"
#include "config/configuration.h"
#include "views/xmap/xmap_legend.h"

namespace app {
namespace {

// So long the end of the program waits for disks.
constexpr std::chrono::seconds kPatience{5};

switcher::Day Today() {
  const QDate today = QDate::currentDate();
  return {std::chrono::year(today.year()), std::chrono::month(static_cast<unsigned>(today.month())),
          std::chrono::day(static_cast<unsigned>(today.day()))};
}

}  // namespace

Console::Console(AppFolder folder)
    : folder_(std::move(folder)),
      settingsFile_(folder_),
      places_(config::PlacesSection(settingsFile_.Read())),
      files_(folder_.File(db::kMainFile), folder_.File(db::kWorkingCopy),
             folder_.lacks.ok() ? db::WhenMissing::Create : db::WhenMissing::Fail),
      changes_(locks_),
      unsentMessages_({.model = model_,
                       .database = [this] { return files_.Database(); },
                       .changes = changes_,
                       .today = Today}),
      sentFile_(folder_.File(kSentFile), unsentMessages_.Held()),
      journal_(changes_, folder_.File(kJournalFile), folder_.File(db::kMainFile)),
      damage_(files_, boxes_),
      window_(commands_),
      windowPlace_(window_, places_),
      port_([this](int number) { return settingsFile_.SerialDevice(number); }),
      liveCommands_({.model = model_, .port = port_, .reporter = boxes_}, &locks_),
      share_(port_, [this] { return window_.PollTimer().remainingTimeAsDuration(); }),
      tables_({.model = model_,
               .files = files_,
               .port = port_,
               .reporter = boxes_,
               .account = &unsentMessages_}),
      tableTools_(tables_),
      unsent_(unsentMessages_),
      viewServices_{.model = model_,
                    .stations = [this] { return files_.Stations(); },
                    .changes = changes_,
                    .locks = locks_,
                    .knownMap = knownMap_,
                    .commands = liveCommands_,
                    .tables = tableTools_,
                    .unsent = unsent_,
                    .poll = window_,
                    .settings = places_,
                    .reporter = boxes_},
      views_(window_.Area(), viewServices_),
      storedElsewhere_(changes_, views_),
      viewMenu_({.menu = window_.ViewMenu(), .views = views_, .window = window_}),
      editMenu_({.menu = window_.EditMenu(),
                 .views = views_,
                 .window = window_,
                 .find = viewMenu_.FindCommand()}),
      undo_({.menu = editMenu_,
             .views = views_,
             .data = viewServices_,
             .database = [this] { return files_.Database(); }}),
      export_({.menu = window_.ExportMenu(),
               .window = window_,
               .data = viewServices_,
               .storeEdits = [this] { return views_.StoreEdits(); }}),
      keySheets_({.window = window_,
                  .exports = window_.ExportMenu(),
                  .data = viewServices_,
                  .storeEdits = [this] { return views_.StoreEdits(); }}),
      import_({.window = window_,
               .data = viewServices_,
               .storeEdits = [this] { return views_.StoreEdits(); }}),
      sentNote_(unsent_),
      logFile_(folder_.File(kLogFile), eventLog_, window_.Hints()),
      labels_(
          {.model = model_, .database = [this] { return files_.Database(); }, .changes = changes_}),
      inhibits_(
          {.model = model_, .database = [this] { return files_.Database(); }, .changes = changes_}),
      network_({.access = ReadAccessSettings(folder_.ProgramFile(config::kConfigurationFile),
                                             folder_.File(config::kConfigurationFile)),
                .model = model_,
                .files = files_,
                .changes = changes_,
                .locks = locks_,
                .port = port_,
                .knownMap = knownMap_,
                .line = share_,
                .decodeTimer = window_,
                .labels = labels_,
                .inhibits = inhibits_,
                .boxes = boxes_,
                .hints = window_.Hints(),
                .gainsChanged = [this] { views_.GainsChanged(); }}),
      aids_({.model = model_,
             .port = port_,
             .knownMap = knownMap_,
             .device = [this] { return QFileInfo(settingsFile_.SerialDevice(model_.ComPort)); },
             .status = window_.Status(),
             .hints = window_.Hints(),
             .warnOnMap = [this](const QString& warning) { views_.SetMapWarning(warning); }}),
      unsentAids_({.model = model_,
                   .unsent = unsent_,
                   .status = window_.Status(),
                   .hints = window_.Hints(),
                   .sendChanges = window_.SendChangesCommand()}),
      switcherReports_({.model = model_, .labels = labels_, .log = eventLog_}),
      presets_(
          {.window = window_,
           .folder = folder_.File(kPresetsFolder),
           .recall = {.model = model_,
                      .locks = locks_,
                      .knownMap = knownMap_,
                      .commands = liveCommands_,
                      .facts = {
                          .outputLabel =
                              [this](int output) { return labels_.Output(output).toStdString(); },
                          .inputLabel =
                              [this](int input) { return labels_.Input(input).toStdString(); },
                          .isInhibited =
                              [this](int output, int input) {
                                return inhibits_.IsInhibited(output, input);
                              }}},
           .writer = presetWriter_,
           .reporter = boxes_}),
      decoder_({.model = model_,
                .database = [this] { return files_.Database(); },
                .reporter = boxes_,
                .changes = changes_,
                .observers = InOrder({.knownMap = knownMap_,
                                      .unsent = unsentMessages_,
                                      .log = switcherReports_,
                                      .aids = aids_,
                                      .views = views_,
                                      .presets = presets_,
                                      .panels = network_.Panels(),
                                      .openGateway = network_.ControllerObserver()})}),
      link_({.model = model_,
             .port = port_,
             .decoder = decoder_,
             .display = window_,
             .account = &unsentMessages_}),
      transfers_(
          {.window = window_,
           .views = views_,
           .data = viewServices_,
           .download = {.model = model_, .tables = tables_, .poll = window_, .unsent = unsent_},
           .retrieval = {.model = model_,
                         .decoder = decoder_,
                         .port = port_,
                         .link = link_,
                         .poll = window_,
                         .reporter = boxes_},
           .compare = {.comparison = {
                           .model = model_,
                           .database = [this] { return files_.Database(); },
                           .port = port_,
                           .link = link_,
                           .poll = window_,
                           .reporter = boxes_,
                           .noteHeld =
                               [this](const switcher::TablePart& part, switcher::Digest digest) {
                                 unsentMessages_.NoteHeld(part, digest);
                               }},
                       .changes = changes_,
                       .storeEdits = [this] { return views_.StoreEdits(); }}}),
      log_({.log = eventLog_,
            .labels = labels_,
            .window = window_,
            .views = views_,
            .unsent = unsent_,
            .transfers = transfers_,
            .boxes = boxes_,
            .commands = commands_}),
      backups_({.files = files_, .writer = backupWriter_, .folder = folder_.File(kBackupsFolder)}),
      saveCopy_({.window = window_,
                 .files = files_,
                 .writer = copyWriter_,
                 .reporter = boxes_,
                 .storeEdits = [this] { return views_.StoreEdits(); }}),
      restoreBackup_({.window = window_,
                      .files = files_,
                      .backups = backups_,
                      .changes = changes_,
                      .reader = copyWriter_,
                      .reporter = boxes_,
                      .storeEdits = [this] { return views_.StoreEdits(); }}),
      rescue_({.journal = journal_,
               .database = [this] { return files_.Database(); },
               .changes = changes_,
               .hints = window_.Hints(),
               .command = window_.UnsavedRunsCommand(),
               .window = window_,
               .reporter = boxes_,
               .storeEdits = [this] { return views_.StoreEdits(); }}),
      recentChanges_({.journal = folder_.File(kJournalFile),
                      .keeper = journal_,
                      .views = views_,
                      .window = window_}),
      settings_({.model = model_,
                 .window = window_,
                 .file = settingsFile_,
                 .link = link_,
                 .port = port_,
                 .listener = network_.PanelListener(),
                 .reporter = boxes_,
                 .locks = locks_,
                 .isComparing = [this] { return transfers_.IsComparing(); }}),
      lockKeeper_({.locks = locks_,
                   .file = folder_.File(kLocksFile),
                   .window = window_,
                   .storeEdits = [this] { return views_.StoreEdits(); }}),
      opening_({.folder = folder_,
                .places = places_,
                .settings = settingsFile_,
                .model = model_,
                .boxes = boxes_,
                .window = window_,
                .place = windowPlace_,
                .views = views_,
                .files = files_,
                .listener = network_.PanelListener(),
                .link = link_,
                .locks = lockKeeper_,
                .journal = journal_,
                .rescue = rescue_,
                .unsent = unsentMessages_,
                .sentFile = sentFile_,
                .damage = damage_,
                .backups = backups_}),
      shutDown_({.model = model_,
                 .boxes = boxes_,
                 .window = window_,
                 .place = windowPlace_,
                 .transfers = transfers_,
                 .views = views_,
                 .files = files_,
                 .workingCopy = folder_.File(db::kWorkingCopy),
                 .port = port_,
                 .settings = settingsFile_,
                 .listener = network_.PanelListener(),
                 .panels = network_.Panels(),
                 .mayClose = [this] { return rescue_.MayClose(); }}) {
  ConnectCommands();
  ConnectTimers();
  ConnectStatusBar();
  ConnectBackups();
  ConnectJournal();
  ConnectSettings();
  ConnectSentFile();
  ConnectPlaces();
  ConnectNetwork();
  ConnectShutDown();
  connect(&opening_, &Opening::Loaded, this, [this] {
    network_.Begin();
    ShowDemoMode();
  });
  connect(&views_, &OpenViews::Loaded, this, &Console::ConnectView);
}

void Console::Start() { opening_.Run(); }

void Console::ConnectCommands() {
  QMdiArea& area = window_.Area();
  commands_.Set(QStringLiteral("ID_Contents"), [this] { manual_.Show(); });
  commands_.Set(QStringLiteral("ID_About"), [this] {
    auto* const about = new AboutDialog(model_, &window_);
    about->setAttribute(Qt::WA_DeleteOnClose);
    about->open();
  });
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
  connect(&window_.CompareCommand(), &QAction::triggered, &transfers_,
          &Transfers::CompareWithSwitcher);
  connect(&window_.SendChangesCommand(), &QAction::triggered, &transfers_, &Transfers::SendChanges);
  connect(&window_.PresetsCommand(), &QAction::triggered, &presets_, &Presets::Show);
  window_.UpdateCommands();
  connect(&viewMenu_, &ViewMenu::EventLogRequested, &log_, &LogKeeper::Show);
  connect(&window_.DiscardCommand(), &QAction::triggered, this, [this] {
    if (const auto code = link_.DiscardBlockedByte()) log_.ByteDiscarded(*code);
  });
}

void Console::ConnectTimers() {
  connect(&window_.PollTimer(), &QTimer::timeout, this, [this] {
    link_.PollTick();
    aids_.Tick();
  });
  connect(&window_.DecodeTimer(), &QTimer::timeout, this, [this] {
    if (!DecodeTick(link_, network_.Panels())) window_.DecodeTimer().stop();
  });
}

template <typename Part>
void Console::ShowAndLogNotesOf(Part& part) {
  connect(&part, &Part::NoteRequested, &window_.Status(), &StatusBar::ShowNote);
  connect(&part, &Part::NoteRequested, &log_, &LogKeeper::Note);
}

void Console::ConnectStatusBar() {
  StatusBar& status = window_.Status();
  status.SetLegend(new views::XmapLegend(&status));
  connect(&window_, &MainWindow::LinkTextShown, this, [this] {
    knownMap_.LinkChanged();  // before those who ask it
    aids_.LinkChanged();
    unsentAids_.Update();
  });
  connect(&views_, &OpenViews::XmapLoaded, &status, [&status](bool loaded) {
    if (!loaded) status.SetReadout({});
  });
  connect(&views_, &OpenViews::ActiveViewChanged, &status,
          [this, &status] { status.WantLegend(views_.IsMapCurrent()); });
  connect(&window_, &MainWindow::LinkTextShown, &transfers_, &Transfers::LinkChanged);
  connect(&transfers_, &Transfers::NoteRequested, &status, &StatusBar::ShowNote);
  connect(&sentNote_, &SentNote::NoteRequested, &status, &StatusBar::ShowNote);
  ShowAndLogNotesOf(undo_);
  ShowAndLogNotesOf(export_);
  connect(&window_.KeySheetsCommand(), &QAction::triggered, &keySheets_, &KeySheetsCommand::Ask);
  ShowAndLogNotesOf(keySheets_);
  connect(&window_.ImportCommand(), &QAction::triggered, &import_, &ImportCommand::Ask);
  ShowAndLogNotesOf(import_);
  ShowAndLogNotesOf(presets_);
  connect(&presets_, &Presets::LineRequested, &log_, &LogKeeper::Note);
  connect(&presets_, &Presets::TakeSent, &log_, &LogKeeper::NoteTake);
  ShowAndLogNotesOf(lockKeeper_);
}

void Console::ConnectSentFile() {
  connect(&unsent_, &views::UnsentTables::Changed, &sentFile_, &SentFile::Update);
  connect(&unsent_, &views::UnsentTables::HeldChanged, &sentFile_, &SentFile::Update);
  connect(&sentFile_, &SentFile::Failed, this, [this](const QString& why) {
    window_.Hints().Give(Hint::SentFails,
                         tr("What the switcher holds cannot be kept: %1").arg(why));
  });
  connect(&sentFile_, &SentFile::Written, this,
          [this] { window_.Hints().Withdraw(Hint::SentFails); });
}

void Console::ConnectPlaces() {
  connect(&places_, &config::WindowSettings::Failed, this, [this](const QString& why) {
    const QString text = tr("Where the windows stand cannot be kept: %1").arg(why);
    window_.Hints().Give(Hint::PlacesFail, text);
    log_.Note(text);  // at the end of the run nobody sees a hint
  });
  connect(&places_, &config::WindowSettings::Written, this,
          [this] { window_.Hints().Withdraw(Hint::PlacesFail); });
}

void Console::ConnectNetwork() {
  StatusBar& status = window_.Status();
  connect(&network_, &Network::PanelsChanged, &status, &StatusBar::SetPanels);
  connect(&network_, &Network::ControllersChanged, &status, &StatusBar::SetControllers);
  connect(&network_, &Network::NoteRequested, &status, &StatusBar::ShowNote);
  connect(&network_, &Network::Happened, &log_, &LogKeeper::NoteNetwork);
  connect(&network_, &Network::HappenedAgain, &log_, &LogKeeper::NoteNetworkAgain);
  connect(&window_, &MainWindow::LinkTextShown, &network_, &Network::LinkChanged);
  connect(&views_, &OpenViews::GainSet, &network_, &Network::GainsChanged);
  connect(&settings_, &ChangeSettings::PanelsChanged, &network_, &Network::PanelSettingsChanged);
  network_.TellAccess();
}

// A main view that was loaded asks for what is not its own.
void Console::ConnectView(views::MainView* view) {
  StatusBar& status = window_.Status();
  connect(view, &views::MainView::NoteRequested, &status, &StatusBar::ShowNote);
  connect(view, &views::MainView::QdvStatusRequested, this,
          [this] { commands_.Run(QStringLiteral("ID_QDVStatus")); });
  if (const auto* const xmap = qobject_cast<views::XmapView*>(view)) {
    connect(xmap, &views::XmapView::ReadoutChanged, &status, &StatusBar::SetReadout);
    status.SetReadout(xmap->Readout(), xmap->Detail());
    connect(xmap, &views::XmapView::ProgramRequested, this, [this](int station) {
      views_.GoTo({ViewPlace::Kind::Station, station});
    });
    connect(xmap, &views::XmapView::EditLabelRequested, this,
            [this](int station, bool ofInput) { views_.GoTo(PlaceOfLabel(station, ofInput)); });
  }
  if (const auto* const alphas = qobject_cast<views::AlphasView*>(view)) {
    connect(alphas, &views::AlphasView::ShowInMapRequested, this,
            [this](int station, bool asInput) {
              views_.GoTo({asInput ? ViewPlace::Kind::Input : ViewPlace::Kind::Output, station});
            });
  }
  if (const auto* const buttons = qobject_cast<views::ButtonsView*>(view)) {
    connect(buttons, &views::ButtonsView::SendButtonDataRequested, &transfers_,
            [this] { transfers_.SendData(-1); });
    connect(buttons, &views::ButtonsView::UseRequested, this,
            [this](const stations::Use& use) { views_.GoTo(PlaceOf(use)); });
  }
}

void Console::ConnectBackups() {
  connect(&window_.SaveCopyCommand(), &QAction::triggered, &saveCopy_, &SaveCopy::Ask);
  ShowAndLogNotesOf(saveCopy_);
  connect(&window_.RestoreBackupCommand(), &QAction::triggered, &restoreBackup_,
          &RestoreBackup::Ask);
  ShowAndLogNotesOf(restoreBackup_);
  connect(&transfers_, &Transfers::RetrievalBegun, &backups_,
          [this] { backups_.Keep(db::Backups::Cause::BeforeRetrieval); });
  connect(&backups_, &BackupKeeper::Kept, this, [this](const QString& name) {
    window_.Hints().Withdraw(Hint::NoBackup);
    log_.Note(tr("Copy kept: %1").arg(name));
  });
  connect(&backups_, &BackupKeeper::Failed, this, [this](const QString& why) {
    const QString text = tr("No copy of the database was kept: %1").arg(why);
    window_.Hints().Give(Hint::NoBackup, text);
    log_.Note(text);
  });
}

void Console::ConnectJournal() {
  connect(&journal_, &JournalKeeper::Failed, this, [this](const QString& why) {
    const QString text = tr("What is edited now would not survive a crash: %1").arg(why);
    window_.Hints().Give(Hint::JournalFails, text);
    log_.Note(text);
  });
  connect(&journal_, &JournalKeeper::Recovered, this, [this] {
    window_.Hints().Withdraw(Hint::JournalFails);
    log_.Note(tr("What is edited survives a crash again"));
  });
  connect(&transfers_, &Transfers::RetrievalBegun, &journal_, &JournalKeeper::BeginGroup);
  connect(&transfers_, &Transfers::RetrievalEnded, &journal_, &JournalKeeper::EndGroup);
  connect(&shutDown_, &ShutDown::AllSaved, &journal_, &JournalKeeper::RunSaved);
  connect(&rescue_, &Rescue::ShowRequested, &recentChanges_, &RecentChanges::ShowRun);
  ShowAndLogNotesOf(rescue_);
  connect(&viewMenu_, &ViewMenu::RecentChangesRequested, &recentChanges_, &RecentChanges::Show);
}

void Console::ConnectSettings() {
  connect(&window_.SettingsCommand(), &QAction::triggered, &settings_, &ChangeSettings::Ask);
  ShowAndLogNotesOf(settings_);
  connect(&settings_, &ChangeSettings::DemoModeChanged, this, &Console::ShowDemoMode);
}

void Console::ShowDemoMode() {
  const bool isDemo = model_.DemoMode == 1;
  window_.Status().SetDemo(isDemo);
  if (isDemo) {
    window_.Hints().Give(Hint::Demo, tr("Demo mode: the map draws its own takes, whether or not a "
                                        "switcher carries them out."));
  } else {
    window_.Hints().Withdraw(Hint::Demo);
  }
}

void Console::ConnectShutDown() {
  window_.SetCloseHandler([this] { return shutDown_.Run(); });
  connect(&shutDown_, &ShutDown::Ending, &presets_, &Presets::CancelNow);
  connect(&shutDown_, &ShutDown::Ending, &restoreBackup_, &RestoreBackup::CancelNow);
  connect(&shutDown_, &ShutDown::SavingDatabase, &journal_,
          [this] { journal_.WriteBeforeSaving(QDeadlineTimer(kPatience)); });
  connect(&shutDown_, &ShutDown::SavingDatabase, &backups_, &BackupKeeper::NoteMainFile);
  connect(&shutDown_, &ShutDown::DatabaseSaved, &log_, [this] { log_.Note(tr("Database saved")); });
  // Behind the journal, which says first that the run is saved.
  connect(&shutDown_, &ShutDown::AllSaved, &backups_, [this](bool replaced) {
    if (replaced) backups_.KeepMainFile();
  });
  connect(&shutDown_, &ShutDown::AllClosed, this, [this] {
    network_.CloseOpenGateway();
    places_.Write();
    const QDeadlineTimer patience(kPatience);
    sentFile_.Finish(patience);
    lockKeeper_.Finish(patience);
    presetWriter_.Finish(patience);
    backupWriter_.Finish(patience);
    copyWriter_.Finish(patience);
  });
  connect(&termination_, &Termination::Requested, &shutDown_, &ShutDown::Terminate);
  // Whoever logs out of the desktop wants what was edited kept: only the shut-down saves it.
  connect(qApp, &QGuiApplication::commitDataRequest, this, [this](QSessionManager& session) {
    if (!shutDown_.EndSession()) session.cancel();
  });
}

}  // namespace app
