// SPDX-License-Identifier: MIT

#ifndef APP_SHELL_LINK_AIDS_H_
#define APP_SHELL_LINK_AIDS_H_

#include <QFileInfo>
#include <QTime>
#include <functional>

#include "app/shell/hint_strip.h"
#include "app/shell/status_bar.h"
#include "model/system_model.h"
#include "switcher/known_map.h"
#include "switcher/serial_port.h"
#include "switcher/switcher_events.h"

namespace app {

// Says how the link does beyond its own text: how old the map is, that no switcher answers, that
// the port may not be opened.
class LinkAids : public switcher::SwitcherEvents {
 public:
  struct Services {
    const model::SystemModel& model;
    const switcher::SerialPort& port;
    const switcher::KnownMap& knownMap;
    std::function<QFileInfo()> device;  // that the port is on
    StatusBar& status;
    HintStrip& hints;
    std::function<void(const QString&)> warnOnMap;  // says it over the map; empty for nothing
  };

  // All must outlive the object.
  explicit LinkAids(const Services& services) : services_(services) {}

  // The switcher reported a row of the map at `time`.
  void MapReported(QTime time);

  // The link is up or down, or the port was opened.
  void LinkChanged();

  // Once a second.
  void Tick();

  void CrosspointRowChanged(int /*output*/, int /*mode*/) override {
    MapReported(QTime::currentTime());
  }

 private:
  bool IsConnected() const { return services_.model.LinkStatus[0] == 1; }
  void ShowMapState();
  // What the map is while the switcher does not answer, and from then on until it was reported
  // anew.
  QString MapWarning();
  void ShowHints();

  const Services services_;
  QTime mapTime_;   // invalid before the first report
  QTime staleMap_;  // of what was reported before the link was lost; invalid when nothing shows it
  int silentTicks_ = 0;
  bool wasConnected_ = false;
};

}  // namespace app

#endif  // APP_SHELL_LINK_AIDS_H_
