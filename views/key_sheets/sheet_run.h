// SPDX-License-Identifier: MIT

#ifndef VIEWS_KEY_SHEETS_SHEET_RUN_H_
#define VIEWS_KEY_SHEETS_SHEET_RUN_H_

#include <QObject>
#include <QPagedPaintDevice>
#include <QTimer>

#include <cstddef>
#include <memory>
#include <vector>

#include "views/export/key_sheet_pages.h"
#include "views/services.h"

namespace views {

// Draws the key sheets of stations, one in each turn of the event loop: so the console goes on
// working meanwhile, however many they are.
class SheetRun : public QObject {
  Q_OBJECT

 public:
  // The device has its page layout.  What `services` refers to must outlive the object.  Begins by
  // itself in the next turn.
  SheetRun(const Services& services, std::vector<int> stations,
           std::shared_ptr<QPagedPaintDevice> device, QObject* parent = nullptr);

  // How many stations are done, of how many, and how many pages they made: a station without a
  // record makes none.
  int DoneCount() const { return static_cast<int>(done_); }
  int Count() const { return static_cast<int>(stations_.size()); }
  int PageCount() const { return pageCount_; }

  // Draws no more.
  void Stop() { turn_.stop(); }

 Q_SIGNALS:
  // DoneCount() has changed.
  void Progressed();

  // All sheets are drawn, and the device has all of them or has failed.  Of no sheet at all it has
  // an empty page.
  void Done();
  void DeviceFailed();
  // A station could not be read.
  void ReadFailed(const model::Status& status);

 private:
  void DrawNext();
  void Finish();

  const Services services_;
  const std::vector<int> stations_;
  const std::shared_ptr<QPagedPaintDevice> device_;
  KeySheetPages pages_;
  std::size_t done_ = 0;
  int pageCount_ = 0;
  QTimer turn_;
};

}  // namespace views

#endif  // VIEWS_KEY_SHEETS_SHEET_RUN_H_
