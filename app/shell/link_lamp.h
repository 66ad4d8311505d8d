// SPDX-License-Identifier: MIT

#ifndef APP_SHELL_LINK_LAMP_H_
#define APP_SHELL_LINK_LAMP_H_

#include <QWidget>

namespace app {

// aidLinkLamp: a tick while the switcher answers, a cross on red while it does not.  It begins
// with the cross.
class LinkLamp : public QWidget {
  Q_OBJECT
  Q_PROPERTY(bool connected READ IsConnected)

 public:
  explicit LinkLamp(QWidget* parent = nullptr);

  void SetConnected(bool connected);
  bool IsConnected() const { return isConnected_; }

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  void SayState();

  bool isConnected_ = false;
};

}  // namespace app

#endif  // APP_SHELL_LINK_LAMP_H_
