// SPDX-License-Identifier: MIT

#ifndef VIEWS_TRANSFER_DOWNLOAD_WINDOW_H_
#define VIEWS_TRANSFER_DOWNLOAD_WINDOW_H_

#include <QLabel>

#include "views/transfer/sending_window.h"

namespace views {

// frmDownProg: asks, then shows how far the tables have got on their way to the switcher.  The
// model's DownloadMode says which tables; it is set by whoever opens the window.
class DownloadWindow : public SendingWindow {
  Q_OBJECT

 public:
  explicit DownloadWindow(const Services& services, QWidget* parent = nullptr);

 protected:
  void ShowSending() override { text_->hide(); }

 private:
  QLabel* text_;
};

}  // namespace views

#endif  // VIEWS_TRANSFER_DOWNLOAD_WINDOW_H_
