// SPDX-License-Identifier: MIT

#include "app/shell/link_aids.h"

#include <QCoreApplication>
#include <optional>

#include "app/shell/port_access.h"

namespace app {
namespace {

// A switcher answers the first poll; so many seconds without an answer, and there is none.
constexpr int kPatience = 5;

QString HintText(const char* text) { return QCoreApplication::translate("LinkAids", text); }

}  // namespace

void LinkAids::MapReported(QTime time) {
  mapTime_ = time;
  ShowMapState();
}

void LinkAids::LinkChanged() {
  services_.status.SetConnected(IsConnected());
  // A port that could not be opened at start leaves the link's own text empty.
  services_.status.SetClosedPort(
      services_.port.IsOpen() ? std::nullopt : std::optional<int>(services_.model.ComPort));
  ShowMapState();
}

void LinkAids::Tick() {
  LinkChanged();
  ShowHints();
}

QString LinkAids::MapWarning() {
  if (!IsConnected()) {
    staleMap_ = mapTime_;
  } else if (services_.knownMap.IsKnown()) {
    staleMap_ = {};
  }
  // In demo mode the map is the operator's own.
  if (services_.model.DemoMode == 1) return {};
  const QString time = staleMap_.toString(QStringLiteral("HH:mm:ss"));
  if (!IsConnected()) {
    return time.isEmpty() ? HintText("Not connected: no map yet")
                          : HintText("Not connected: map of %1").arg(time);
  }
  return time.isEmpty()
             ? QString()
             : HintText("Map of %1, from before the link was lost: Refresh Map").arg(time);
}

void LinkAids::ShowMapState() {
  services_.warnOnMap(MapWarning());
  if (IsConnected() && !services_.model.XmapComplete) {
    services_.status.SetMapState(HintText("Map requesting…"));
  } else if (mapTime_.isValid()) {
    services_.status.SetMapState(
        HintText("Map %1").arg(mapTime_.toString(QStringLiteral("HH:mm:ss"))));
  } else {
    services_.status.SetMapState({});
  }
}

void LinkAids::ShowHints() {
  if (const auto denied =
          services_.port.IsOpen() ? std::nullopt : PortAccessHint(services_.device())) {
    services_.hints.Give(Hint::PortDenied, *denied);
  } else {
    services_.hints.Withdraw(Hint::PortDenied);
  }
  wasConnected_ = wasConnected_ || IsConnected();
  if (wasConnected_) {
    // From now on the link's own text says all that is needed.
    services_.hints.Withdraw(Hint::NoSwitcher);
  } else if (++silentTicks_ == kPatience) {
    services_.hints.Give(
        Hint::NoSwitcher,
        HintText("No switcher found on COM %1. Help ▸ Contents shows how to try the "
                 "simulated one.")
            .arg(services_.model.ComPort));
  }
}

}  // namespace app
