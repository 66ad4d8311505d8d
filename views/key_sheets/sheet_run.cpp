// SPDX-License-Identifier: MIT

#include "views/key_sheets/sheet_run.h"

#include <span>
#include <utility>

#include "views/rules/export_sheets.h"

namespace views {

SheetRun::SheetRun(const Services& services, std::vector<int> stations,
                   std::shared_ptr<QPagedPaintDevice> device, QObject* parent)
    : QObject(parent),
      services_(services),
      stations_(std::move(stations)),
      device_(std::move(device)),
      pages_(*device_) {
  connect(&turn_, &QTimer::timeout, this, &SheetRun::DrawNext);
  turn_.start(0);
}

void SheetRun::DrawNext() {
  if (done_ == stations_.size()) return Finish();
  std::vector<rules::KeySheet> sheets;
  const model::Status read = WithStations(services_, [&](jet::RecordSet& stations) {
    return rules::ReadKeySheets(stations, services_.model, std::span(stations_).subspan(done_, 1),
                                &sheets);
  });
  if (!read.ok()) {
    turn_.stop();
    Q_EMIT ReadFailed(read);
    return;
  }
  for (const rules::KeySheet& sheet : sheets) {
    if (!pages_.Draw(sheet)) {
      turn_.stop();
      Q_EMIT DeviceFailed();
      return;
    }
    ++pageCount_;
  }
  ++done_;
  Q_EMIT Progressed();
}

void SheetRun::Finish() {
  turn_.stop();
  if (pages_.End()) {
    Q_EMIT Done();
  } else {
    Q_EMIT DeviceFailed();
  }
}

}  // namespace views
