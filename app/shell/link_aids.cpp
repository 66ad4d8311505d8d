// SPDX-License-Identifier: MIT

#include "app/shell/link_aids.h"

#include <QCoreApplication>
#include <optional>
#include <utility>

#include "app/port_access.h"

namespace app {
namespace {

// A switcher answers the first poll; so many seconds without an answer, and there is none.
constexpr int kPatience = 5;

QString HintText(const char* text) { return QCoreApplication::translate("LinkAids", text); }

}  // namespace

LinkAids::LinkAids(const model::SystemModel& model, Port port, StatusBar& status, HintStrip& hints)
    : model_(model), port_(std::move(port)), status_(status), hints_(hints) {}

void LinkAids::MapReported(QTime time) {
  mapTime_ = time;
  ShowMapState();
}

void LinkAids::LinkChanged() {
  status_.SetConnected(IsConnected());
  // A port that could not be opened at start leaves the link's own text empty.
  status_.SetClosedPort(port_.isOpen() ? std::nullopt : std::optional<int>(model_.ComPort));
  ShowMapState();
}

void LinkAids::Tick() {
  LinkChanged();
  ShowHints();
}

void LinkAids::ShowMapState() {
  if (IsConnected() && !model_.XmapComplete) {
    status_.SetMapState(HintText("Map requesting…"));
  } else if (mapTime_.isValid()) {
    status_.SetMapState(HintText("Map %1").arg(mapTime_.toString(QStringLiteral("HH:mm:ss"))));
  } else {
    status_.SetMapState({});
  }
}

void LinkAids::ShowHints() {
  if (const auto denied = port_.isOpen() ? std::nullopt : PortAccessHint(port_.device())) {
    hints_.Give(Hint::PortDenied, *denied);
  } else {
    hints_.Withdraw(Hint::PortDenied);
  }
  wasConnected_ = wasConnected_ || IsConnected();
  if (wasConnected_) {
    // From now on the link's own text says all that is needed.
    hints_.Withdraw(Hint::NoSwitcher);
  } else if (++silentTicks_ == kPatience) {
    hints_.Give(Hint::NoSwitcher,
                HintText("No switcher found on COM %1. Help ▸ Contents shows how to try the "
                         "simulated one.")
                    .arg(model_.ComPort));
  }
}

}  // namespace app
