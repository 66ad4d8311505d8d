// SPDX-License-Identifier: MIT

#ifndef APP_SHELL_LINK_AIDS_H_
#define APP_SHELL_LINK_AIDS_H_

#include <QFileInfo>
#include <QTime>
#include <functional>

#include "app/shell/hint_strip.h"
#include "app/shell/status_bar.h"
#include "model/system_model.h"

namespace app {

// Says how the link does beyond its own text: how old the map is, that no switcher answers, that
// the port may not be opened.
class LinkAids {
 public:
  // What tells of the port: whether it is open, and the device it is on.
  struct Port {
    std::function<bool()> isOpen;
    std::function<QFileInfo()> device;
  };

  // All must outlive the object.
  LinkAids(const model::SystemModel& model, Port port, StatusBar& status, HintStrip& hints);

  // The switcher reported a row of the map at `time`.
  void MapReported(QTime time);

  // The link is up or down, or the port was opened.
  void LinkChanged();

  // Once a second.
  void Tick();

 private:
  bool IsConnected() const { return model_.LinkStatus[0] == 1; }
  void ShowMapState();
  void ShowHints();

  const model::SystemModel& model_;
  const Port port_;
  StatusBar& status_;
  HintStrip& hints_;
  QTime mapTime_;  // invalid before the first report
  int silentTicks_ = 0;
  bool wasConnected_ = false;
};

}  // namespace app

#endif  // APP_SHELL_LINK_AIDS_H_
