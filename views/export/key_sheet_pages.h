// SPDX-License-Identifier: MIT

#ifndef VIEWS_EXPORT_KEY_SHEET_PAGES_H_
#define VIEWS_EXPORT_KEY_SHEET_PAGES_H_

#include "views/export/paged_document.h"
#include "views/rules/export_sheets.h"

namespace views {

// Key sheets on pages of a document: for each station one with its keys in four rows of eight, to
// be cut out and put on the panel.  A key is an eighth of the page wide; it is equally high on all
// papers that are high enough for four.
class KeySheetPages {
 public:
  // The device has its page layout and must outlive the object.
  explicit KeySheetPages(QPagedPaintDevice& device) : document_(device) {}

  // Draws the next page.  False when the device does not take it.
  bool Draw(const rules::KeySheet& sheet);

  // Ends the document.  False when not all pages arrived.
  bool End() { return document_.End(); }

 private:
  void DrawKey(const QRectF& place, int button, const rules::KeyLegend& key);
  void DrawCaption(const QRectF& line, const QString& caption);
  void DrawTargets(const QRectF& room, const QString& targets);

  PagedDocument document_;
};

}  // namespace views

#endif  // VIEWS_EXPORT_KEY_SHEET_PAGES_H_
