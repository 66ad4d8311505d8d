// SPDX-License-Identifier: MIT

#ifndef APP_ABOUT_DIALOG_H_
#define APP_ABOUT_DIALOG_H_

#include <QDialog>

#include "model/system_model.h"

namespace app {

// frmTeskAbout: what the program is and how it is set up.
class AboutDialog : public QDialog {
  Q_OBJECT

 public:
  AboutDialog(const model::SystemModel& model, QWidget* parent);
};

}  // namespace app

#endif  // APP_ABOUT_DIALOG_H_
