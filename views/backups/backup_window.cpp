// SPDX-License-Identifier: MIT

#include "views/backups/backup_window.h"

#include <QDateTime>
#include <QFileDialog>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QPointer>
#include <QScreen>
#include <QVBoxLayout>
#include <algorithm>
#include <chrono>
#include <memory>
#include <system_error>
#include <utility>

#include "db/database_files.h"
#include "db/open_copy.h"
#include "stations/difference.h"
#include "stations/open_stations.h"
#include "views/change_words.h"
#include "views/widgets/icon.h"
#include "views/widgets/row_height.h"
#include "views/window_place/on_screen.h"

namespace views {
namespace {

enum Column { kMade, kWhy };
constexpr int kPathRole = Qt::UserRole;
constexpr int kOtherFileRole = Qt::UserRole + 1;

constexpr int kWidthCharacters = 100;
constexpr int kCopiesShown = 6;
constexpr int kDifferencesShown = 12;
// What comes from the switcher comes in numbers.
constexpr std::chrono::milliseconds kUntilComparedAnew{200};

QString TimeWords(const QDateTime& time) {
  return time.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
}

QDateTime TimeOf(const std::tm& time) {
  return {QDate(time.tm_year + 1900, time.tm_mon + 1, time.tm_mday),
          QTime(time.tm_hour, time.tm_min, time.tm_sec)};
}

QString PathText(const std::filesystem::path& path) {
  return QString::fromStdU16String(path.u16string());
}

std::filesystem::path PathOf(const QTreeWidgetItem& item) {
  return item.data(kMade, kPathRole).toString().toStdU16String();
}

// What the fields hold that do not differ: the targets of a button whose operation does.
FieldLookup LookupIn(jet::Database& database) {
  std::unique_ptr<jet::RecordSet> opened;
  if (!stations::OpenStations(database, &opened).ok()) return nullptr;
  return [stations = std::shared_ptr<jet::RecordSet>(std::move(opened))](int station,
                                                                         std::string_view field) {
    jet::Value value;
    if (!stations->Seek(station).ok() || !stations->Get(field, &value).ok()) value.SetNull();
    return value;
  };
}

std::vector<Difference> RowsOf(std::span<const stations::Change> changes) {
  std::vector<Difference> rows;
  for (ChangeRow& row : ChangeOutline(changes)) rows.emplace_back(std::move(row));
  return rows;
}

}  // namespace

BackupWindow::BackupWindow(const Services& services, QWidget* parent)
    : QDialog(parent),
      ChangeObserver(services.changes),
      services_(services),
      copies_(new QTreeWidget(this)),
      otherFile_(new QPushButton(tr("Other &File…"), this)),
      summary_(new QLabel(this)),
      list_(new DifferenceList({.filter = QStringLiteral("aidFilterBackup"),
                                .list = QStringLiteral("lstBackupDiff"),
                                .before = tr("Now"),
                                .after = tr("Copy")},
                               this)),
      ok_(new QPushButton(tr("&Restore"), this)),
      cancel_(new QPushButton(tr("Cancel"), this)) {
  setObjectName(QStringLiteral("frmBackup"));
  setWindowTitle(tr("Restore Backup"));
  setWindowIcon(Icon(QStringLiteral("restore-backup")));
  LayOut();
  ListCopies();
  connect(copies_, &QTreeWidget::currentItemChanged, this, &BackupWindow::Compare);
  connect(otherFile_, &QPushButton::clicked, this, &BackupWindow::AskForFile);
  connect(list_, &DifferenceList::TicksChanged, this,
          [this] { ok_->setEnabled(list_->TickedCount() > 0); });
  connect(ok_, &QPushButton::clicked, this, &BackupWindow::Restore);
  connect(cancel_, &QPushButton::clicked, this, &QDialog::reject);
  compareAnew_.setSingleShot(true);
  compareAnew_.setInterval(kUntilComparedAnew);
  connect(&compareAnew_, &QTimer::timeout, this, &BackupWindow::CompareAnew);
  copies_->setCurrentItem(copies_->topLevelItem(0));
}

// While it is hidden at its end the list asks for texts once more.
BackupWindow::~BackupWindow() { List({}, nullptr); }

void BackupWindow::LayOut() {
  copies_->setObjectName(QStringLiteral("lstBackups"));
  copies_->setAccessibleName(tr("Copies"));
  copies_->setHeaderLabels({tr("Copy Made"), tr("Why")});
  copies_->setRootIsDecorated(false);
  copies_->setUniformRowHeights(true);
  copies_->setAllColumnsShowFocus(true);
  copies_->header()->setSectionsMovable(false);
  copies_->header()->setSectionResizeMode(kMade, QHeaderView::ResizeToContents);
  otherFile_->setObjectName(QStringLiteral("aidOtherFile"));
  otherFile_->setToolTip(tr("Choose a copy that is kept somewhere else"));
  summary_->setObjectName(QStringLiteral("aidBackupSummary"));
  summary_->setTextFormat(Qt::PlainText);
  summary_->setWordWrap(true);
  // The list below stays where it is, whatever is said.
  summary_->setMinimumHeight(2 * fontMetrics().lineSpacing());
  summary_->setTextInteractionFlags(Qt::TextSelectableByMouse);
  ok_->setObjectName(QStringLiteral("cmdOkBackup"));
  ok_->setEnabled(false);
  cancel_->setObjectName(QStringLiteral("cmdCancelBackup"));
  // Enter in a list or in the filter presses none of them: it neither restores nor loses ticks.
  for (QPushButton* const button : {otherFile_, ok_, cancel_}) button->setAutoDefault(false);

  auto* const beside = new QVBoxLayout;
  beside->addWidget(otherFile_);
  beside->addStretch();
  auto* const choice = new QHBoxLayout;
  choice->addWidget(copies_, 1);
  choice->addLayout(beside);
  // A box of buttons would make its first one the default.
  auto* const buttons = new QHBoxLayout;
  buttons->addStretch();
  buttons->addWidget(ok_);
  buttons->addWidget(cancel_);
  auto* const layout = new QVBoxLayout(this);
  layout->addLayout(choice, kCopiesShown);
  layout->addWidget(summary_);
  layout->addWidget(list_, kDifferencesShown);
  layout->addLayout(buttons);
  const int rows = kCopiesShown + kDifferencesShown;
  const QSize wanted(kWidthCharacters * fontMetrics().averageCharWidth(),
                     sizeHint().height() + rows * fontMetrics().height() / 2);
  resize(SizeOnScreen(wanted, screen()->availableSize()));
  copies_->setFocus();
}

QTreeWidgetItem* BackupWindow::MakeItem(const QString& made, const QString& why,
                                        const std::filesystem::path& path) {
  auto* const item = new QTreeWidgetItem({made, why});
  const QString text = PathText(path);
  item->setData(kMade, kPathRole, text);
  // Of the column whose width is not that of its contents.
  item->setSizeHint(kWhy, QSize(0, RowHeight(fontMetrics())));
  item->setToolTip(kMade, text);
  item->setToolTip(kWhy, text);
  return item;
}

void BackupWindow::ListCopies() {
  const auto words = [](db::Backups::Cause cause) {
    switch (cause) {
      case db::Backups::Cause::BeforeRetrieval:
        return tr("Before a retrieval");
      case db::Backups::Cause::Daily:
        return tr("Once a day");
      case db::Backups::Cause::BeforeSaving:
        return tr("Tesk.mdb before a run replaced it");
      case db::Backups::Cause::BeforeRestoring:
        return tr("Before a copy was restored");
    }
    return QString();
  };
  std::vector<db::Backups::Copy> copies;
  const model::Status status = services_.copies.List(&copies);
  for (const db::Backups::Copy& copy : copies) {
    copies_->addTopLevelItem(MakeItem(TimeWords(TimeOf(copy.time)), words(copy.cause), copy.path));
  }
  if (!status.ok()) {
    summary_->setText(
        tr("The copies cannot be listed. %1").arg(QString::fromStdString(status.Description())));
  } else if (copies.empty()) {
    summary_->setText(tr("No copies yet. Other File… takes one that is kept somewhere else."));
  }
}

void BackupWindow::AskForFile() {
  auto* const dialog = new QFileDialog(this, tr("Other File"), QString(),
                                       tr("Database files (*.mdb);;All files (*)"));
  dialog->setObjectName(QStringLiteral("aidOtherFileDialog"));
  dialog->setAttribute(Qt::WA_DeleteOnClose);
  dialog->setFileMode(QFileDialog::ExistingFile);
  connect(dialog, &QFileDialog::fileSelected, this, &BackupWindow::Choose);
  dialog->open();
}

QTreeWidgetItem* BackupWindow::ItemOf(const std::filesystem::path& path) const {
  for (int row = 0; row < copies_->topLevelItemCount(); ++row) {
    QTreeWidgetItem* const item = copies_->topLevelItem(row);
    std::error_code unseen;
    if (std::filesystem::equivalent(path, PathOf(*item), unseen)) return item;
  }
  return nullptr;
}

void BackupWindow::Choose(const QString& path) {
  copies_->setFocus();
  if (QTreeWidgetItem* const item = ItemOf(path.toStdU16String()); item != nullptr) {
    copies_->setCurrentItem(item);
    Compare();  // the file may have been replaced since
    return;
  }
  const QFileInfo file(path);
  QTreeWidgetItem* const item =
      MakeItem(TimeWords(file.lastModified()), tr("Other file: %1").arg(file.fileName()),
               std::filesystem::path(path.toStdU16String()));
  item->setData(kMade, kOtherFileRole, true);
  copies_->insertTopLevelItem(0, item);
  copies_->setCurrentItem(item);
}

void BackupWindow::SetKeeping(bool keeping) {
  if (keeping == isKeeping_) return;
  isKeeping_ = keeping;
  if (keeping) question_ = summary_->text();
  summary_->setText(keeping ? tr("Keeping a copy first…") : question_);
  for (QWidget* const choice : {static_cast<QWidget*>(copies_), static_cast<QWidget*>(otherFile_),
                                static_cast<QWidget*>(list_)}) {
    choice->setEnabled(!keeping);
  }
  ok_->setEnabled(!keeping && list_->TickedCount() > 0);
  (keeping ? cancel_ : ok_)->setFocus();
}

void BackupWindow::done(int result) {
  compareAnew_.stop();
  ++comparisons_;  // nothing that is still read is listed
  List({}, nullptr);
  QDialog::done(result);
}

void BackupWindow::Changed(std::span<const stations::Change> /*changes*/) {
  if (isVisible() && !compareAnew_.isActive()) compareAnew_.start();
}

void BackupWindow::Compare() {
  unticked_.clear();
  ReadCopy();
}

void BackupWindow::CompareAnew() {
  if (isKeeping_) return compareAnew_.start();
  // While another file is read again its rows are not listed; what they had is known already.
  if (list_->RowCount() > 0) unticked_ = list_->Unticked();
  ReadCopy();
}

void BackupWindow::ReadCopy() {
  compareAnew_.stop();
  const QTreeWidgetItem* const item = copies_->currentItem();
  if (item == nullptr) return;
  ++comparisons_;
  const auto copy = std::make_shared<std::unique_ptr<jet::Database>>();
  const auto open = [copy, path = PathOf(*item)] { return db::OpenCopy(path, copy.get()); };
  if (!item->data(kMade, kOtherFileRole).toBool()) return ShowCopy(open(), *copy);
  ShowReading();
  services_.elsewhere(open, [window = QPointer(this), copy,
                             comparison = comparisons_](const model::Status& status) {
    if (window != nullptr && window->comparisons_ == comparison) window->ShowCopy(status, *copy);
  });
}

void BackupWindow::ShowReading() {
  List({}, nullptr);
  ok_->setEnabled(false);
  summary_->setText(tr("The file is being read…"));
}

// A copy that cannot be had yet may still be written to: it is looked at only when all is well.
void BackupWindow::ShowCopy(const model::Status& opened,
                            const std::unique_ptr<jet::Database>& copy) {
  jet::Database* const database = services_.database();
  model::Status status = database == nullptr ? db::NotOpen() : opened;
  std::vector<stations::Change> changes;
  if (status.ok()) status = stations::Difference(*database, *copy, &changes);
  List(std::move(changes), database);
  ok_->setEnabled(list_->TickedCount() > 0);
  if (!status.ok()) {
    summary_->setText(
        tr("This copy cannot be restored. %1").arg(QString::fromStdString(status.Description())));
  } else if (changes_.empty()) {
    summary_->setText(tr("This copy holds the same as the database."));
  } else {
    summary_->setText(
        tr("What is ticked becomes as it is in the copy. Nothing is sent; the "
           "database as it is now is kept as a copy first."));
  }
}

// A copy may differ in everything: what the rows hold is put into words when they are seen.
void BackupWindow::List(std::vector<stations::Change> changes, jet::Database* database) {
  std::vector<Difference> rows = RowsOf(changes);
  changes_ = std::move(changes);
  DifferenceModel::SayValues sayValues;
  if (!rows.empty()) {
    sayValues = [this, lookup = LookupIn(*database)](ChangeRow* row) {
      SayValues(changes_, lookup, row);
    };
  }
  list_->SetRows(std::move(rows), true, std::move(sayValues));
  list_->Untick(unticked_);
}

void BackupWindow::Restore() {
  const std::vector<ChangeRow> rows = list_->Ticked();
  if (rows.empty()) return;
  const QString path = copies_->currentItem()->data(kMade, kPathRole).toString();
  Q_EMIT RestoreRequested(Chosen(changes_, rows), QFileInfo(path).fileName());
}

}  // namespace views
