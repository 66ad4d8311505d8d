// SPDX-License-Identifier: MIT

#include "tools/tesksetup/set_up_dialog.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QIntValidator>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QVBoxLayout>
#include <QWheelEvent>

#include "tools/tesksetup/console_folder.h"
#include "views/widgets/icon.h"

namespace tesksetup {

namespace {

constexpr int kLargestPort = 65535;

// The wheel scrolls the dialog: it must not choose another device when it passes over the list.
class DeviceBox : public QComboBox {
 public:
  using QComboBox::QComboBox;

 protected:
  void wheelEvent(QWheelEvent* event) override { event->ignore(); }
};

QLabel* NewNote(const char* name, QWidget* parent) {
  auto* const note = new QLabel(parent);
  note->setObjectName(QLatin1String(name));
  note->setTextFormat(Qt::PlainText);
  note->setWordWrap(true);
  return note;
}

// The name of the folder that is proposed for a console of that name.
QString FolderName(QString name) {
  name.replace(QLatin1Char('/'), QLatin1Char('-'));
  return name.startsWith(QLatin1Char('.')) ? QLatin1Char('_') + name : name;
}

QMessageBox* NewBox(QMessageBox::Icon icon, const QString& title, const QString& text,
                    QMessageBox::StandardButtons buttons, QWidget* parent) {
  auto* const box = new QMessageBox(icon, title, text, buttons, parent);
  box->setAttribute(Qt::WA_DeleteOnClose);
  box->setTextFormat(Qt::PlainText);
  return box;
}

}  // namespace

SetUpDialog::SetUpDialog(Actions actions, const QStringList& devices, const QString& parentFolder,
                         QWidget* parent)
    : QDialog(parent), actions_(std::move(actions)), parentFolder_(parentFolder) {
  setObjectName(QStringLiteral("frmSetUp"));
  setWindowTitle(tr("Set Up an Intercom Console"));
  setWindowIcon(views::Icon(QStringLiteral("teskctl")));
  BuildForm(devices);
  FolderChanged();
  ShowPanels();
}

void SetUpDialog::BuildForm(const QStringList& devices) {
  auto* const what = NewNote("lblWhat", this);
  what->setText(
      tr("Each switcher has a console of its own, with its own folder, serial line and "
         "database."));

  name_ = new QLineEdit(this);
  name_->setObjectName(QStringLiteral("txtName"));
  name_->setPlaceholderText(tr("Studio A"));
  name_->setToolTip(tr("How the console is called in the applications menu"));

  folder_ = new QLineEdit(this);
  folder_->setObjectName(QStringLiteral("txtFolder"));
  folder_->setMinimumWidth(360);
  auto* const choose = new QPushButton(tr("&Browse…"), this);
  choose->setObjectName(QStringLiteral("cmdBrowse"));
  choose->setAutoDefault(false);
  auto* const folderLine = new QHBoxLayout;
  folderLine->addWidget(folder_, 1);
  folderLine->addWidget(choose);
  folderNote_ = NewNote("lblFolderNote", this);

  device_ = new DeviceBox(this);
  device_->setObjectName(QStringLiteral("cmbDevice"));
  device_->setEditable(true);
  device_->setInsertPolicy(QComboBox::NoInsert);
  device_->addItems(devices);
  device_->setCurrentIndex(-1);
  device_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  deviceNote_ = NewNote("lblDeviceNote", this);

  panels_ = new QCheckBox(tr("Serve network &panels on TCP port"), this);
  panels_->setObjectName(QStringLiteral("ckPanels"));
  port_ = new QLineEdit(QString::number(ConsolePlan().ipPort), this);
  port_->setObjectName(QStringLiteral("txtPort"));
  port_->setAccessibleName(tr("TCP port of the network panels"));
  port_->setValidator(new QIntValidator(1, kLargestPort, port_));
  port_->setMaximumWidth(port_->fontMetrics().horizontalAdvance(QStringLiteral("0000000000")));
  auto* const panelsLine = new QHBoxLayout;
  panelsLine->addWidget(panels_);
  panelsLine->addWidget(port_);
  panelsLine->addStretch();
  // Shown also while the box is not ticked, so that it is read in time.
  auto* const panelsNote = NewNote("lblPanelsNote", this);
  panelsNote->setText(
      tr("Whoever reaches the port can take any crosspoint: let the firewall "
         "admit the network of the panels only. Each console of this machine "
         "needs a port of its own."));

  auto* const form = new QFormLayout;
  form->addRow(tr("&Name:"), name_);
  form->addRow(tr("&Folder:"), folderLine);
  form->itemAt(1, QFormLayout::LabelRole)->widget()->setObjectName(QStringLiteral("lblFolder"));
  qobject_cast<QLabel*>(form->itemAt(1, QFormLayout::LabelRole)->widget())->setBuddy(folder_);
  form->addRow(QString(), folderNote_);
  form->addRow(tr("&Serial device:"), device_);
  form->addRow(QString(), deviceNote_);
  form->addRow(QString(), panelsLine);
  form->addRow(QString(), panelsNote);

  auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Cancel, this);
  setUp_ = buttons->addButton(tr("Set &Up"), QDialogButtonBox::AcceptRole);
  setUp_->setObjectName(QStringLiteral("cmdSetUp"));
  setUp_->setDefault(true);
  buttons->button(QDialogButtonBox::Cancel)->setObjectName(QStringLiteral("cmdCancel"));

  auto* const layout = new QVBoxLayout(this);
  layout->setSpacing(14);
  layout->addWidget(what);
  layout->addLayout(form);
  layout->addStretch();
  layout->addWidget(buttons);

  connect(name_, &QLineEdit::textChanged, this, &SetUpDialog::ProposeFolder);
  connect(folder_, &QLineEdit::textEdited, this, [this] { folderIsChosen_ = true; });
  connect(folder_, &QLineEdit::textChanged, this, &SetUpDialog::FolderChanged);
  connect(choose, &QPushButton::clicked, this, &SetUpDialog::ChooseFolder);
  connect(device_, &QComboBox::editTextChanged, this, &SetUpDialog::ShowDevice);
  connect(panels_, &QCheckBox::toggled, this, &SetUpDialog::ShowPanels);
  connect(port_, &QLineEdit::textChanged, this, &SetUpDialog::Judge);
  connect(buttons, &QDialogButtonBox::accepted, this, &SetUpDialog::SetUp);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
}

void SetUpDialog::ChooseFolder() {
  auto* const dialog = new QFileDialog(this, tr("The Console's Folder"), parentFolder_);
  dialog->setObjectName(QStringLiteral("dlgFolder"));
  dialog->setAttribute(Qt::WA_DeleteOnClose);
  dialog->setFileMode(QFileDialog::Directory);
  dialog->setOption(QFileDialog::ShowDirsOnly);
  connect(dialog, &QFileDialog::fileSelected, this, [this](const QString& folder) {
    folderIsChosen_ = true;
    folder_->setText(folder);
  });
  dialog->open();
}

void SetUpDialog::ProposeFolder() {
  if (!folderIsChosen_) {
    const QString name = FolderName(name_->text().trimmed());
    folder_->setText(name.isEmpty() ? QString() : QDir(parentFolder_).filePath(name));
  }
  Judge();
}

// Proposes what the folder's own settings say.
void SetUpDialog::FolderChanged() {
  const QString folder = folder_->text().trimmed();
  folderNote_->clear();
  if (!folder.isEmpty() && HoldsConsole(folder)) {
    ConsolePlan plan;
    if (const model::Status status = ReadSettings(folder, &plan); status.ok()) {
      device_->setEditText(plan.device);
      panels_->setChecked(plan.servesPanels);
      port_->setText(QString::number(plan.ipPort));
      folderNote_->setText(
          tr("There is a console in this folder. Its database stays, and so do "
             "its settings but for those below."));
    } else {
      folderNote_->setText(QString::fromStdString(status.Description()));
    }
  }
  folderNote_->setVisible(!folderNote_->text().isEmpty());
  device_->lineEdit()->setPlaceholderText(tr("%1, the machine's own port").arg(OwnDevice(folder)));
  ShowDevice();
  Judge();
}

void SetUpDialog::ShowDevice() {
  const QString named = device_->currentText().trimmed();
  const QFileInfo device(named.isEmpty() ? OwnDevice(folder_->text().trimmed()) : named);
  deviceNote_->clear();
  if (!device.exists()) {
    deviceNote_->setText(
        tr("There is no such device now. The console waits for it, and goes on when it is there."));
  } else if (!device.isReadable() || !device.isWritable()) {
    deviceNote_->setText(
        tr("You may not use this device. Ask for your user to be added to the group %1, then log "
           "in anew.")
            .arg(device.group()));
  }
  deviceNote_->setVisible(!deviceNote_->text().isEmpty());
}

void SetUpDialog::ShowPanels() {
  port_->setEnabled(panels_->isChecked());
  Judge();
}

void SetUpDialog::Judge() {
  setUp_->setEnabled(!name_->text().trimmed().isEmpty() &&
                     QDir::isAbsolutePath(folder_->text().trimmed()) &&
                     port_->hasAcceptableInput());
}

ConsolePlan SetUpDialog::Plan() const {
  return {.name = name_->text().trimmed(),
          .folder = QDir::cleanPath(folder_->text().trimmed()),
          .device = device_->currentText().trimmed(),
          .servesPanels = panels_->isChecked(),
          .ipPort = port_->text().toInt()};
}

void SetUpDialog::SetUp() {
  const model::Status status = actions_.setUp(Plan());
  if (status.ok()) {
    TellDone();
    return;
  }
  NewBox(QMessageBox::Critical, tr("The Console Is Not Set Up"),
         QString::fromStdString(status.Description()), QMessageBox::Ok, this)
      ->open();
}

void SetUpDialog::TellDone() {
  const ConsolePlan plan = Plan();
  auto* const box = NewBox(QMessageBox::Information, tr("The Console Is Set Up"),
                           tr("The applications menu has it as \"Orvo Intercom Control - %1\".\n"
                              "Its files are in %2.")
                               .arg(plan.name, plan.folder),
                           QMessageBox::Close, this);
  auto* const start = box->addButton(tr("&Start It"), QMessageBox::AcceptRole);
  start->setObjectName(QStringLiteral("cmdStart"));
  box->setDefaultButton(start);
  connect(box, &QMessageBox::finished, this, [this, box, start, folder = plan.folder] {
    if (box->clickedButton() == start && !actions_.start(folder)) {
      NewBox(QMessageBox::Critical, tr("The Console Does Not Start"),
             tr("%1 cannot be started.").arg(ProgramIn(folder)), QMessageBox::Ok, this)
          ->open();
      return;
    }
    accept();
  });
  box->open();
}

}  // namespace tesksetup
