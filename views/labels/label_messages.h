// SPDX-License-Identifier: MIT
//
// What the operator is told about texts that the grid of labels refuses, or takes with a warning.

#ifndef VIEWS_LABELS_LABEL_MESSAGES_H_
#define VIEWS_LABELS_LABEL_MESSAGES_H_

#include <QString>

#include "stations/label_texts.h"
#include "views/rules/label_paste.h"

namespace views {

// Why a column does not take a text.
QString ProblemText(stations::LabelColumn column, const stations::TextCheck& check);

// The same for a cell: "Station 5, Station Label: ...".
QString CellRefusalText(const QString& station, stations::LabelColumn column,
                        const stations::TextCheck& check);

// Why a block is not pasted; `station` is that of the refusal's row.
QString PasteRefusalText(const QString& station, const rules::PasteRefusal& refusal);

// The warning that a label holds a character which a line of 7-bit data would spoil, or that it
// begins with the mark of hidden stations; empty when there is nothing to warn of.
QString LabelNote(const QString& station, stations::LabelColumn column, const QString& text);

}  // namespace views

#endif  // VIEWS_LABELS_LABEL_MESSAGES_H_
