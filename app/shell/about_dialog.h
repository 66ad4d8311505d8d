// SPDX-License-Identifier: MIT

#ifndef APP_SHELL_ABOUT_DIALOG_H_
#define APP_SHELL_ABOUT_DIALOG_H_

#include <QDialog>
#include <QLabel>

#include "model/system_model.h"

namespace app {

// frmTeskAbout: what the program is, how it is set up, and whether the switcher is there, as it is
// each time the box comes to the front.
class AboutDialog : public QDialog {
  Q_OBJECT

 public:
  // `model` must outlive the box.
  AboutDialog(const model::SystemModel& model, QWidget* parent);

 protected:
  bool event(QEvent* event) override;

 private:
  void Fill();

  const model::SystemModel& model_;
  QLabel* title_;
  QLabel* path_;
  QLabel* port_;
  QLabel* connected_;
  QLabel* stations_;
  QLabel* channels_;
};

}  // namespace app

#endif  // APP_SHELL_ABOUT_DIALOG_H_
