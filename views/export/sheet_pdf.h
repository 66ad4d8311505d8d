// SPDX-License-Identifier: MIT

#ifndef VIEWS_EXPORT_SHEET_PDF_H_
#define VIEWS_EXPORT_SHEET_PDF_H_

#include <QIODevice>
#include <QString>
#include <vector>

#include "views/rules/export_sheets.h"

namespace views {

// Each writes a PDF document of A4 pages in landscape to an open device.  False when not all of
// it could be written.

// A sheet with its captions at the head of every page.  Columns are as wide as their texts; all of
// them are narrowed when the page is too narrow.
bool WriteSheetPdf(QIODevice& device, const QString& title, const rules::Sheet& sheet);

// The map, drawn with the marks of the view, on as many pages as 64 by 64 channels each need.
bool WriteMapPdf(QIODevice& device, const QString& title, const rules::XmapGrid& grid);

}  // namespace views

#endif  // VIEWS_EXPORT_SHEET_PDF_H_
