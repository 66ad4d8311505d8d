// SPDX-License-Identifier: MIT

#include "views/change_words.h"

#include <QCoreApplication>
#include <QStringList>
#include <algorithm>
#include <array>
#include <iterator>
#include <limits>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>

#include "db/station_fields.h"
#include "model/flag_string.h"
#include "stations/label_texts.h"
#include "stations/operations.h"

namespace views {
namespace {

using stations::Change;
using stations::FieldChange;

struct ChangeText {
  Q_DECLARE_TR_FUNCTIONS(ChangeWords)
};

QString Text(const std::string& text) { return QString::fromStdString(text); }

// What a row can be about, in the order in which rows stand.
struct Subject {
  enum Kind {
    Label,
    InLabel,
    Hidden,
    SysInput,
    SysOutput,
    Notes,
    Inhibits,
    Relays,
    Opto,
    Button,
    Other
  };
  Kind kind = Other;
  int button = 0;
  std::string field = {};  // of Other

  auto operator<=>(const Subject&) const = default;
};

Subject SubjectOf(std::string_view field) {
  static constexpr std::pair<std::string_view, Subject::Kind> kFields[] = {
      {db::kLabelField, Subject::Label},         {db::kInLabelField, Subject::InLabel},
      {db::kHiddenField, Subject::Hidden},       {db::kSysInputField, Subject::SysInput},
      {db::kSysOutputField, Subject::SysOutput}, {db::kNotesField, Subject::Notes},
      {db::kInhibitsField, Subject::Inhibits},   {db::kRelaysField, Subject::Relays},
      {db::kOptoTypeField, Subject::Opto},       {db::kOptoChannelField, Subject::Opto},
      {db::kOptoFirstField, Subject::Opto},      {db::kOptoStationsField, Subject::Opto},
  };
  for (const auto& [name, kind] : kFields) {
    if (name == field) return {.kind = kind};
  }
  if (const int button = db::ButtonOfField(field); button != 0) {
    return {.kind = Subject::Button, .button = button};
  }
  return {.kind = Subject::Other, .field = std::string(field)};
}

// Whether it is spoken of by output, and not by station.
bool IsOfOutput(const Subject& subject) {
  return subject.kind == Subject::Inhibits || subject.kind == Subject::Relays;
}

QString SubjectWords(const Subject& subject) {
  switch (subject.kind) {
    case Subject::Label:
      return ChangeText::tr("Label");
    case Subject::InLabel:
      return ChangeText::tr("Input label");
    case Subject::Hidden:
      return ChangeText::tr("Hidden");
    case Subject::SysInput:
      return ChangeText::tr("System input");
    case Subject::SysOutput:
      return ChangeText::tr("System output");
    case Subject::Notes:
      return ChangeText::tr("Notes");
    case Subject::Inhibits:
      return ChangeText::tr("Inhibits");
    case Subject::Relays:
      return ChangeText::tr("Relays");
    case Subject::Opto:
      return ChangeText::tr("Opto");
    case Subject::Button:
      return ChangeText::tr("Button %1").arg(subject.button);
    case Subject::Other:
      break;
  }
  return Text(subject.field);
}

void AppendNumber(std::size_t number, std::u16string* text) {
  std::array<char16_t, std::numeric_limits<std::size_t>::digits10 + 1> digits;
  auto first = digits.end();
  do {
    *--first = static_cast<char16_t>(u'0' + number % 10);
    number /= 10;
  } while (number != 0);
  text->append(first, digits.end());
}

// The members of a flag string: "3, 7–12".  A list of thousands of rows has two of them in each.
QString Members(const jet::Value& flags) {
  const std::vector<std::uint8_t> members = model::FlagMembers(flags.Text());
  std::u16string text;
  text.reserve(2 * members.size());
  for (std::size_t i = 0; i < members.size(); ++i) {
    if (members[i] == 0) continue;
    const std::size_t first = i;
    while (i + 1 < members.size() && members[i + 1] != 0) ++i;
    if (!text.empty()) text += u", ";
    AppendNumber(first + 1, &text);
    if (i == first) continue;
    text += i == first + 1 ? u", " : u"–";
    AppendNumber(i + 1, &text);
  }
  return QString::fromStdU16String(text);
}

QString MembersOr(const jet::Value& flags, const QString& none) {
  const QString members = Members(flags);
  return members.isEmpty() ? none : members;
}

// Of a program whose operation is not known: "target 5", "targets 2, 7–12".
QString TargetWords(const jet::Value& flags) {
  const QString members = Members(flags);
  if (members.isEmpty()) return ChangeText::tr("without a target");
  const bool isOne = std::ranges::all_of(members, [](QChar c) { return c.isDigit(); });
  return (isOne ? ChangeText::tr("target %1") : ChangeText::tr("targets %1")).arg(members);
}

QString OperationWords(const jet::Value& type) {
  const int code = type.Int();
  const QString label = QString::fromLatin1(stations::OperationOf(code).label);
  return stations::IsOperation(code) ? label : QStringLiteral("%1 (%2)").arg(label).arg(code);
}

QString PlainWords(const jet::Value& value) {
  const QString text =
      value.GetKind() == jet::Value::Kind::Int ? QString::number(value.Int()) : Text(value.Text());
  return text.isEmpty() ? ChangeText::tr("(empty)") : text;
}

// The fields of one row, on one side of the change.
class Side {
 public:
  Side(const Change& change, std::vector<const FieldChange*> fields, jet::Value FieldChange::*side,
       const FieldLookup& lookup)
      : station_(change.station), fields_(std::move(fields)), side_(side), lookup_(lookup) {}

  // The value of a field: changed, or found; nothing when it is neither.
  std::optional<jet::Value> Find(const std::string& name) const {
    const auto field =
        std::ranges::find(fields_, name, [](const FieldChange* one) { return one->field; });
    if (field != fields_.end()) return (*field)->*side_;
    if (lookup_) return lookup_(station_, name);
    return std::nullopt;
  }

  QString Words(const Subject& subject) const {
    switch (subject.kind) {
      case Subject::Hidden: {
        const QString hidden = Text(stations::HiddenText(First()));
        return hidden.isEmpty() ? PlainWords({}) : hidden;
      }
      case Subject::Inhibits:
      case Subject::Relays:
        return MembersOr(First(), ChangeText::tr("none"));
      case Subject::Opto:
        return Opto();
      case Subject::Button:
        return Program(db::ButtonField(subject.button, db::kButtonType),
                       db::ButtonField(subject.button, db::kButtonTargets));
      default:
        return PlainWords(First());
    }
  }

  // Where the rest of the programming is the same on both sides.
  QString FirstTarget(const Subject& subject) const {
    const auto first =
        Find(subject.kind == Subject::Opto ? std::string(db::kOptoFirstField)
                                           : db::ButtonField(subject.button, db::kButtonFirst));
    return ChangeText::tr("first target %1").arg(first ? first->Int() : 0);
  }

 private:
  const jet::Value& First() const { return fields_.front()->*side_; }

  QString Program(const std::string& typeField, const std::string& targetsField) const {
    const auto type = Find(typeField);
    const auto targets = Find(targetsField);
    if (!targets) return type ? OperationWords(*type) : QString();
    if (!type) return TargetWords(*targets);
    return OperationWords(*type) + u' ' + MembersOr(*targets, ChangeText::tr("without a target"));
  }

  QString Opto() const {
    const QString program = Program(db::kOptoTypeField, db::kOptoStationsField);
    const auto channel = Find(db::kOptoChannelField);
    if (!channel) return program;
    const QString words = ChangeText::tr("channel %1").arg(channel->Int());
    return program.isEmpty() ? words : program + QStringLiteral(", ") + words;
  }

  const int station_;
  const std::vector<const FieldChange*> fields_;
  jet::Value FieldChange::*const side_;
  const FieldLookup& lookup_;
};

void SayBothSides(const Change& change, const Subject& subject,
                  const std::vector<const FieldChange*>& fields, const FieldLookup& lookup,
                  ChangeRow* row) {
  const Side before(change, fields, &FieldChange::before, lookup);
  const Side after(change, fields, &FieldChange::after, lookup);
  row->before = before.Words(subject);
  row->after = after.Words(subject);
  const bool isProgram = subject.kind == Subject::Button || subject.kind == Subject::Opto;
  if (isProgram && row->before == row->after) {
    row->before = before.FirstTarget(subject);
    row->after = after.FirstTarget(subject);
  }
}

// The rows of one change, each with what it is about.
template <typename Take>
void ForEachRow(std::span<const Change> changes, std::size_t number, Take take) {
  const Change& change = changes[number];
  std::map<Subject, std::vector<const FieldChange*>> subjects;
  for (const FieldChange& field : change.fields) {
    subjects[SubjectOf(field.field)].push_back(&field);
  }
  const QString station = ChangeText::tr("Station %1").arg(change.station);
  for (const auto& [subject, fields] : subjects) {
    ChangeRow row{
        .station = change.station,
        .fields = {},
        .where = IsOfOutput(subject) ? ChangeText::tr("Output %1").arg(change.station) : station,
        .what = SubjectWords(subject),
        .before = {},
        .after = {},
        .change = number,
        .firstField = static_cast<std::size_t>(fields.front() - change.fields.data()),
        .endField = static_cast<std::size_t>(fields.back() - change.fields.data()) + 1};
    row.fields.reserve(fields.size());
    for (const FieldChange* const field : fields) row.fields.push_back(field->field);
    take(subject, fields, std::move(row));
  }
}

// What rows of one station, or of several, are about, in a few words.
QString SubjectsWords(const std::set<Subject>& subjects) {
  constexpr std::size_t kMost = 3;
  const auto isButton = [](const Subject& subject) { return subject.kind == Subject::Button; };
  if (subjects.size() > 1 && std::ranges::all_of(subjects, isButton))
    return ChangeText::tr("Buttons");
  if (subjects.size() > kMost) return ChangeText::tr("%1 settings").arg(subjects.size());
  QStringList words;
  for (const Subject& subject : subjects) {
    const QString one = SubjectWords(subject);
    words.append(words.isEmpty() ? one : one.toLower());
  }
  return words.join(QStringLiteral(", "));
}

std::set<Subject> SubjectsOf(std::span<const Change> changes) {
  std::set<Subject> subjects;
  for (const Change& change : changes) {
    for (const FieldChange& field : change.fields) subjects.insert(SubjectOf(field.field));
  }
  return subjects;
}

QString Title(std::span<const Change> changes) {
  const std::set<Subject> subjects = SubjectsOf(changes);
  std::set<int> stations;
  for (const Change& change : changes) stations.insert(change.station);
  const bool ofOutputs = std::ranges::all_of(subjects, IsOfOutput);
  const QString what = SubjectsWords(subjects);
  if (stations.size() == 1) {
    return (ofOutputs ? ChangeText::tr("%1 of output %2") : ChangeText::tr("%1 of station %2"))
        .arg(what)
        .arg(*stations.begin());
  }
  return (ofOutputs ? ChangeText::tr("%1 of %2 outputs") : ChangeText::tr("%1 of %2 stations"))
      .arg(what)
      .arg(stations.size());
}

// Of many settings that somebody ticked in a list: how many they are says more than which.
QString ChosenTitle(std::span<const Change> changes) {
  return SubjectsOf(changes).size() == 1 ? Title(changes)
                                         : ChangeText::tr("%1 changes").arg(CountRows(changes));
}

bool IsAbout(const ChangeRow& row, const stations::Conflict& conflict) {
  if (row.station != conflict.station) return false;
  return conflict.field.empty() ||
         std::ranges::find(row.fields, conflict.field) != row.fields.end();
}

}  // namespace

std::vector<ChangeRow> ChangeRows(std::span<const Change> changes, const FieldLookup& lookup) {
  std::vector<ChangeRow> rows;
  for (std::size_t number = 0; number < changes.size(); ++number) {
    ForEachRow(changes, number, [&](const Subject& subject, const auto& fields, ChangeRow row) {
      SayBothSides(changes[number], subject, fields, lookup, &row);
      rows.push_back(std::move(row));
    });
  }
  return rows;
}

std::vector<ChangeRow> ChangeOutline(std::span<const Change> changes) {
  std::vector<ChangeRow> rows;
  for (std::size_t number = 0; number < changes.size(); ++number) {
    ForEachRow(changes, number, [&rows](const Subject&, const auto&, ChangeRow row) {
      rows.push_back(std::move(row));
    });
  }
  return rows;
}

void SayValues(std::span<const Change> changes, const FieldLookup& lookup, ChangeRow* row) {
  const Change& change = changes[row->change];
  std::vector<const FieldChange*> fields;
  for (std::size_t i = row->firstField; i < row->endField; ++i) {
    const FieldChange& field = change.fields[i];
    if (std::ranges::count(row->fields, field.field) > 0) fields.push_back(&field);
  }
  SayBothSides(change, SubjectOf(row->fields.front()), fields, lookup, row);
}

std::size_t CountRows(std::span<const Change> changes) {
  std::size_t rows = 0;
  for (const Change& change : changes) rows += SubjectsOf({&change, 1}).size();
  return rows;
}

std::vector<Change> Chosen(std::span<const Change> changes, std::span<const ChangeRow> rows) {
  std::set<std::pair<int, std::string_view>> fields;
  for (const ChangeRow& row : rows) {
    for (const std::string& field : row.fields) fields.emplace(row.station, field);
  }
  std::vector<Change> chosen;
  for (const Change& change : changes) {
    Change part{change.origin, change.station, {}};
    for (const FieldChange& field : change.fields) {
      if (fields.contains({change.station, field.field})) part.fields.push_back(field);
    }
    if (!part.fields.empty()) chosen.push_back(std::move(part));
  }
  return chosen;
}

std::vector<ChangeRow> TakeOut(std::span<const stations::Conflict> conflicts,
                               std::vector<ChangeRow>* rows) {
  const auto first = std::stable_partition(rows->begin(), rows->end(), [&](const ChangeRow& row) {
    return std::ranges::none_of(conflicts,
                                [&](const stations::Conflict& each) { return IsAbout(row, each); });
  });
  std::vector<ChangeRow> taken(std::make_move_iterator(first),
                               std::make_move_iterator(rows->end()));
  rows->erase(first, rows->end());
  return taken;
}

QString RowNames(std::span<const ChangeRow> rows) {
  constexpr std::size_t kMost = 6;
  QStringList names;
  for (const ChangeRow& row : rows.first(std::min(rows.size(), kMost))) {
    names.append(row.where + u' ' + row.what);
  }
  const QString named = names.join(QStringLiteral(", "));
  return rows.size() <= kMost
             ? named
             : ChangeText::tr("%1 and %2 more").arg(named).arg(rows.size() - kMost);
}

QString OriginWords(stations::Origin origin) {
  using stations::Origin;
  switch (origin) {
    case Origin::Operator:
      return ChangeText::tr("operator");
    case Origin::Navigation:
      return ChangeText::tr("navigation");
    case Origin::Switcher:
      return ChangeText::tr("switcher");
    case Origin::Undo:
      return ChangeText::tr("undo");
    case Origin::Redo:
      return ChangeText::tr("redo");
    case Origin::Restore:
      return ChangeText::tr("restored");
    case Origin::Comparison:
      return ChangeText::tr("comparison");
    case Origin::Backup:
      return ChangeText::tr("copy");
    case Origin::File:
      return ChangeText::tr("file");
  }
  return {};
}

QString ActTitle(std::span<const Change> changes) {
  using stations::Origin;
  switch (changes.front().origin) {
    case Origin::Undo:
      return ChangeText::tr("Undo: %1").arg(Title(changes));
    case Origin::Redo:
      return ChangeText::tr("Redo: %1").arg(Title(changes));
    case Origin::Restore:
      return ChangeText::tr("Restored: %1").arg(ChosenTitle(changes));
    case Origin::Comparison:
      return ChangeText::tr("From the switcher: %1").arg(ChosenTitle(changes));
    case Origin::Backup:
      return ChangeText::tr("From a copy: %1").arg(ChosenTitle(changes));
    case Origin::File:
      return ChangeText::tr("From a file: %1").arg(ChosenTitle(changes));
    case Origin::Operator:
    case Origin::Navigation:
    case Origin::Switcher:
      break;
  }
  return Title(changes);
}

}  // namespace views
