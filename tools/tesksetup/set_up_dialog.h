// SPDX-License-Identifier: MIT

#ifndef TOOLS_TESKSETUP_SET_UP_DIALOG_H_
#define TOOLS_TESKSETUP_SET_UP_DIALOG_H_

#include <QDialog>
#include <QStringList>
#include <functional>

#include "model/status.h"
#include "tools/tesksetup/console_plan.h"

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QMessageBox;

namespace tesksetup {

// Asks for a console's name, folder, serial line and panels, and has it set up.
class SetUpDialog : public QDialog {
  Q_OBJECT

 public:
  struct Actions {
    // Sets the console up.
    std::function<model::Status(const ConsolePlan&)> setUp;
    // Starts it; false when it cannot be started.
    std::function<bool(const QString& folder)> start;
  };

  // `devices` are the serial devices to choose from; new folders are proposed in `parentFolder`.
  SetUpDialog(Actions actions, const QStringList& devices, const QString& parentFolder,
              QWidget* parent = nullptr);

 private:
  void BuildForm(const QStringList& devices);
  void ChooseFolder();
  void ProposeFolder();
  void FolderChanged();
  void ShowDevice();
  void ShowPanels();
  void Judge();
  void SetUp();
  void TellDone();

  ConsolePlan Plan() const;

  const Actions actions_;
  const QString parentFolder_;
  QLineEdit* name_ = nullptr;
  QLineEdit* folder_ = nullptr;
  QLabel* folderNote_ = nullptr;
  QComboBox* device_ = nullptr;
  QLabel* deviceNote_ = nullptr;
  QCheckBox* panels_ = nullptr;
  QLineEdit* port_ = nullptr;
  QPushButton* setUp_ = nullptr;
  bool folderIsChosen_ = false;  // no longer follows the name
};

}  // namespace tesksetup

#endif  // TOOLS_TESKSETUP_SET_UP_DIALOG_H_
