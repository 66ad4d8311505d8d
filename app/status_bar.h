// SPDX-License-Identifier: MIT

#ifndef APP_STATUS_BAR_H_
#define APP_STATUS_BAR_H_

#include <QLabel>
#include <QStatusBar>
#include <QStringList>
#include <QTimer>
#include <cstdint>
#include <optional>

namespace app {

// sbStatusBar: the link text in the first panel, which nothing ever covers, and aids beside it.
class StatusBar : public QStatusBar {
  Q_OBJECT

 public:
  explicit StatusBar(QWidget* parent = nullptr);

  // The first panel, sbStatusBar_1.  Never elided.
  void SetLinkText(const QString& text);

  // What the cell under the operator's hand says; empty for nothing.
  void SetReadout(const QString& text);

  // How old the map is; empty for nothing.
  void SetMapState(const QString& text);

  // Shows the badge of the demo mode.
  void SetDemo(bool demo);

  // Says that the console works in this folder and not in the program's; nothing takes it away.
  void SetFolder(const QString& folder);

  // A note that goes away by itself after five seconds.
  void ShowNote(const QString& text);

  // Names the tables that were edited and not sent; empty for none.
  void SetUnsent(const QString& tables);

  // Says that the port of that number is closed; without a number nothing.
  void SetClosedPort(std::optional<int> number);

  // Says that an unknown message code holds up all decoding; nothing takes it away.
  void SetBlockedCode(std::optional<std::uint8_t> code);

  // The panels that are connected, a line each: shown as their number.
  void SetPanels(const QStringList& panels);

  // Takes over the legend of the map.  It stands at the right end while it is wanted and there
  // is room for it: a narrow window shows the link and the readout first.
  void SetLegend(QWidget* legend);
  void WantLegend(bool wanted);

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  void UpdateLegend();

  QLabel* link_;
  QLabel* closedPort_;
  QLabel* blocked_;
  QLabel* panels_;
  QLabel* readout_;
  QLabel* mapState_;
  QLabel* unsent_;
  QLabel* note_;
  QLabel* folder_;
  QLabel* demo_;
  QWidget* legend_ = nullptr;
  bool legendWanted_ = false;
  QTimer noteTime_;
};

}  // namespace app

#endif  // APP_STATUS_BAR_H_
