// SPDX-License-Identifier: MIT

#include "views/import_file/import_words.h"

#include <QCoreApplication>

#include "views/labels/label_messages.h"

namespace views {
namespace {

constexpr int kShownCharacters = 40;

struct ImportText {
  Q_DECLARE_TR_FUNCTIONS(ImportWords)
};

// What stands in a cell, on one line.
QString CellWords(const std::string& text) {
  const QString words = QString::fromStdString(text).simplified();
  return words.size() <= kShownCharacters ? words : words.left(kShownCharacters) + u'…';
}

QString WhyWords(const rules::ImportFault& fault) {
  using Reason = rules::ImportFault::Reason;
  const QString text = CellWords(fault.text);
  switch (fault.reason) {
    case Reason::NotText:
      return ImportText::tr("The file is no text: save it as CSV.");
    case Reason::NoRows:
      return ImportText::tr("The file has no rows below its captions.");
    case Reason::OpenQuotes:
      return ImportText::tr("The quotes that begin there are never closed.");
    case Reason::TooManyCells:
      return ImportText::tr("It has more than %1 cells: this is no file of labels or programming.")
          .arg(fault.expected);
    case Reason::TooManyRows:
      return ImportText::tr("The file has more than %1 rows; this system has no more.")
          .arg(fault.expected);
    case Reason::UnknownCaption:
      return ImportText::tr("“%1” is no column of such a file.").arg(text);
    case Reason::RepeatedCaption:
      return ImportText::tr("The column “%1” is there twice.").arg(text);
    case Reason::MissingCaption:
      return ImportText::tr("The column “%1” is missing.").arg(text);
    case Reason::CellCount:
      return ImportText::tr("It has %1 cells instead of %2.").arg(fault.number).arg(fault.expected);
    case Reason::NoStation:
      return ImportText::tr("There is no station “%1”.").arg(text);
    case Reason::RepeatedStation:
      return ImportText::tr("“%1” stands in an earlier line, too.").arg(text);
    case Reason::NoButton:
      return ImportText::tr("There is no button “%1”: a station has %2.")
          .arg(text, QString::number(fault.expected));
    case Reason::NotAChoice:
      return ImportText::tr("“%1” is neither No nor Yes.").arg(text);
    case Reason::LabelText:
      return ProblemText(fault.label, fault.check);
    case Reason::Unreadable:
      return ImportText::tr("What is stored there cannot be read.");
    case Reason::UnknownOperation:
      return ImportText::tr("“%1” is no operation.").arg(text);
    case Reason::UnknownTarget:
      return ImportText::tr("No target of this operation is called “%1”.").arg(text);
    case Reason::AmbiguousTarget:
      return ImportText::tr("Several targets are called “%1”: write its number, as in #12.")
          .arg(text);
  }
  return {};
}

}  // namespace

QString FaultWords(const rules::ImportFault& fault) {
  const QString why = WhyWords(fault);
  if (fault.line == 0) return why;
  if (fault.column == 0) {
    return ImportText::tr("Line %1: %2").arg(QString::number(fault.line), why);
  }
  return ImportText::tr("Line %1, column %2 (%3): %4")
      .arg(QString::number(fault.line), QString::number(fault.column), CellWords(fault.caption),
           why);
}

QString ReadOnlyWords(const rules::ImportPlan& plan) {
  if (plan.readOnlyCount == 0) return {};
  const QString place =
      ImportText::tr("line %1 (%2): “%3”")
          .arg(QString::number(plan.readOnly.line), QString::fromStdString(plan.readOnly.caption),
               CellWords(plan.readOnly.text));
  return plan.readOnlyCount == 1
             ? ImportText::tr("Only to be read, and not imported: %1.").arg(place)
             : ImportText::tr("Only to be read, and not imported: %1, and %2 more.")
                   .arg(place, QString::number(plan.readOnlyCount - 1));
}

}  // namespace views
