// SPDX-License-Identifier: MIT

#include "views/labels/label_messages.h"

#include <QCoreApplication>

#include "views/rules/label_headings.h"

namespace views {
namespace {

using rules::PasteRefusal;
using stations::LabelColumn;
using stations::TextProblem;

// Begins the label of a hidden station on the wire.
constexpr QChar kHiddenMark = u'{';

QString Tr(const char* text) { return QCoreApplication::translate("LabelMessages", text); }

QString Caption(LabelColumn column) { return QString::fromLatin1(rules::Heading(column).caption); }

QString InCell(const QString& station, LabelColumn column, const QString& reason) {
  return Tr("Station %1, %2: %3").arg(station, Caption(column), reason);
}

}  // namespace

QString ProblemText(LabelColumn column, const stations::TextCheck& check) {
  const QString character = QString::fromStdString(check.character);
  switch (check.problem) {
    case TextProblem::TooLong:
      return Tr("The text is longer than %1 characters.").arg(stations::Spec(column).maxLength);
    case TextProblem::NotInCodePage:
      return Tr("“%1” is not in code page 1252, which the database is written in.").arg(character);
    case TextProblem::EndOfMessage:
      return Tr("A label cannot hold “%1”: its code ends a message to the switcher.")
          .arg(character);
    case TextProblem::Control:
      return Tr("The text holds a line break, a tab or another control character.");
    case TextProblem::None:
      break;
  }
  return {};
}

QString CellRefusalText(const QString& station, LabelColumn column,
                        const stations::TextCheck& check) {
  return InCell(station, column, ProblemText(column, check));
}

QString PasteRefusalText(const QString& station, const PasteRefusal& refusal) {
  const auto cell = [&](const QString& reason) { return InCell(station, refusal.column, reason); };
  QString reason;
  switch (refusal.reason) {
    case PasteRefusal::Reason::None:
      return {};
    case PasteRefusal::Reason::Empty:
      reason = Tr("There is no text to paste.");
      break;
    case PasteRefusal::Reason::TooManyRows:
      reason = Tr("The block reaches beyond the last row: there is room for %1 from here.")
                   .arg(refusal.row);
      break;
    case PasteRefusal::Reason::TooManyColumns:
      reason = Tr("Station %1: The block reaches beyond the last column.").arg(station);
      break;
    case PasteRefusal::Reason::StationNumber:
      reason = cell(Tr("The number of a station cannot be changed."));
      break;
    case PasteRefusal::Reason::NotAChoice:
      reason = cell(Tr("Only No, Yes, 0 and 1 can stand here."));
      break;
    case PasteRefusal::Reason::Unreadable:
      reason = cell(Tr("The field cannot be read."));
      break;
    case PasteRefusal::Reason::Text:
      reason = cell(ProblemText(refusal.column, refusal.text));
      break;
  }
  return Tr("Nothing was pasted.") + u'\n' + reason;
}

QString LabelNote(const QString& station, LabelColumn column, const QString& text) {
  if (!IsLabel(column)) return {};
  const std::string wide = stations::FirstWideCharacter(text.toStdString());
  if (!wide.empty()) {
    return Tr("Station %1: “%2” does not travel well on a line of 7-bit data")
        .arg(station, QString::fromStdString(wide));
  }
  if (column == LabelColumn::StationLabel && text.startsWith(kHiddenMark)) {
    return Tr("Station %1: a label that begins with “{” marks a hidden station").arg(station);
  }
  return {};
}

}  // namespace views
