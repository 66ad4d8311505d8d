// SPDX-License-Identifier: MIT

#ifndef APP_SHELL_STATUS_BAR_H_
#define APP_SHELL_STATUS_BAR_H_

#include <QLabel>
#include <QStatusBar>
#include <QStringList>
#include <QTimer>
#include <cstdint>
#include <optional>
#include <vector>

namespace app {

class LinkLamp;

// sbStatusBar: the link text in the first panel, which nothing ever covers, and aids beside it.
//
// It takes the width that the window has and never asks for more: aids for which there is no room
// are elided, or hidden, the least important first.  Nothing that is only good to know stands
// while a warning or a note is not whole.  Of what is unsent a sign is left where there is no room
// for words.
class StatusBar : public QStatusBar {
  Q_OBJECT

 public:
  explicit StatusBar(QWidget* parent = nullptr);

  // The first panel, sbStatusBar_1.  Never elided.
  void SetLinkText(const QString& text);

  // Whether the switcher answers: the lamp beside the link text, and the ground of both.
  void SetConnected(bool connected);

  // What the current cell of the map says, and more about it; empty for nothing.
  void SetReadout(const QString& text, const QString& detail = {});

  // How old the map is; empty for nothing.
  void SetMapState(const QString& text);

  // Shows the badge of the demo mode.
  void SetDemo(bool demo);

  // Shows the badge of the locked console.
  void SetConsoleLocked(bool locked);

  // Says that the console works in this folder and not in the program's; nothing takes it away.
  void SetFolder(const QString& folder);

  // A note that goes away by itself after five seconds.
  void ShowNote(const QString& text);

  // What is unsent, in words; empty for nothing.
  void SetUnsent(const QString& words);

  // Says that the port of that number is closed; without a number nothing.
  void SetClosedPort(std::optional<int> number);

  // Says that an unknown message code holds up all decoding; nothing takes it away.
  void SetBlockedCode(std::optional<std::uint8_t> code);

  // The panels that are connected, a line each: shown as their number.
  void SetPanels(const QStringList& panels);

  // The controllers on the open gateway, likewise.
  void SetControllers(const QStringList& controllers);

  // Takes over the legend of the map.  It stands at the right end while it is wanted and there
  // is room for it beside all else, whole.
  void SetLegend(QWidget* legend);
  void WantLegend(bool wanted);

  QSize minimumSizeHint() const override;

 protected:
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  // What stands beside the link text while it is wanted.
  struct Panel {
    QWidget* widget;
    int leastCharacters = 0;  // fewer are worth nothing; 0 for one that is never elided
    bool isWarning = false;   // has its least before anything else
    QWidget* sign = nullptr;  // stands for it where there is no room for its least; null for none
    bool wanted = false;
    int width = 0;            // its share; 0 when there is no room for it
    bool isOnlySign = false;  // the sign has its share
  };

  // `widget` is one of the panels.
  void Want(const QWidget* widget, bool wanted);
  // The next three include the distance to the next panel.  The width of so many characters.
  int WidthOf(int characters) const;
  // The width of a panel for which there is room.
  int FullWidth(const Panel& panel) const;
  // The width below which it is not shown.
  int LeastWidth(const Panel& panel) const;
  // What the link text leaves of the bar.
  int RoomForPanels() const;
  void ShareRoom();

  QLabel* link_;
  LinkLamp* lamp_;
  QLabel* closedPort_;
  QLabel* blocked_;
  QLabel* panels_;
  QLabel* controllers_;
  QLabel* readout_;
  QLabel* mapState_;
  QLabel* unsent_;
  QLabel* unsentSign_;
  QLabel* note_;
  QLabel* folder_;
  QLabel* demo_;
  QLabel* locked_;
  QWidget* legend_ = nullptr;
  bool legendWanted_ = false;
  std::vector<Panel> shares_;  // without the legend, the most important first
  QTimer noteTime_;
};

}  // namespace app

#endif  // APP_SHELL_STATUS_BAR_H_
