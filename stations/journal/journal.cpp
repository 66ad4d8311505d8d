// SPDX-License-Identifier: MIT

#include "stations/journal/journal.h"

#include <system_error>
#include <utility>

namespace stations {

files::Outcome Journal::Read() {
  std::string text;
  files::Outcome outcome = files::ReadWhole(file_.Path(), kMostBytes, &text);
  if (outcome.error == std::errc::no_such_file_or_directory) outcome = {};
  wasRead_ = outcome.ok();
  if (!wasRead_) return outcome;
  contents_ = std::make_unique<JournalContents>(std::move(text));
  next_ = contents_->NextNumber();
  return outcome;
}

files::Outcome Journal::Replace(std::string_view text) {
  if (files::Outcome outcome = files::Replace(file_.Path(), text); !outcome.ok()) return outcome;
  file_.Close();
  run_ = 0;
  return Read();
}

files::Outcome Journal::AddAct(std::string_view object) {
  if (files::Outcome opened = Open(); !opened.ok()) return opened;
  const std::int64_t run = run_ != 0 ? run_ : next_;
  std::int64_t number = next_;
  std::string lines;
  if (run_ == 0) {
    lines = WriteLine(
        {.number = number++, .kind = JournalLine::Kind::Run, .run = run, .content = beginning_});
  }
  lines += WriteLine(
      {.number = number++, .kind = JournalLine::Kind::Act, .run = run, .content = object});
  files::Outcome outcome = Append(lines);
  if (!outcome.ok()) return outcome;
  run_ = run;
  next_ = number;
  return outcome;
}

files::Outcome Journal::EndRun(std::int64_t run, JournalLine::Kind kind, std::string_view object) {
  files::Outcome outcome =
      Append(WriteLine({.number = next_, .kind = kind, .run = run, .content = object}));
  if (!outcome.ok()) return outcome;
  ++next_;
  if (run == run_) run_ = 0;
  return outcome;
}

files::Outcome Journal::Open() {
  if (!wasRead_) {
    return files::Failure("write", file_.Path(),
                          std::make_error_code(std::errc::operation_not_permitted));
  }
  files::Outcome outcome = file_.Open();
  // The file with the beginning was deleted: what is in this one must be readable by itself.
  if (outcome.ok() && file_.Size() == 0) run_ = 0;
  return outcome;
}

files::Outcome Journal::Append(const std::string& lines) {
  if (files::Outcome opened = Open(); !opened.ok()) return opened;
  return file_.Append(lines);
}

}  // namespace stations
