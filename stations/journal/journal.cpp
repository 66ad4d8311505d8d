// SPDX-License-Identifier: MIT

#include "stations/journal/journal.h"

#include <array>
#include <span>
#include <utility>

namespace stations {
namespace {

std::span<const std::uint8_t> BytesOf(const std::string& text) {
  return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

}  // namespace

files::Outcome Journal::Read() {
  std::string text;
  files::Outcome outcome = files::ReadWhole(path_, kMostBytes, &text);
  if (outcome.error == std::errc::no_such_file_or_directory) outcome = {};
  wasRead_ = outcome.ok();
  if (!wasRead_) return outcome;
  contents_ = std::make_unique<JournalContents>(std::move(text));
  next_ = contents_->NextNumber();
  return outcome;
}

files::Outcome Journal::Replace(std::string_view text) {
  if (files::Outcome outcome = files::Replace(path_, text); !outcome.ok()) return outcome;
  file_.reset();
  run_ = 0;
  return Read();
}

files::Outcome Journal::AddAct(std::string_view object) {
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
  files::File opened;
  std::error_code error = files::File::OpenToEdit(path_, &opened);
  if (error == std::errc::no_such_file_or_directory) {
    error = files::File::Create(path_, files::Rights::OfFolder, &opened);
  }
  if (!error) error = opened.Size(&end_);
  std::array<std::uint8_t, 1> last{'\n'};
  if (!error && end_ > 0) error = opened.Read(end_ - 1, last);
  if (error) return files::Failure("open", path_, error);
  hasTornEnd_ = last[0] != '\n';
  file_ = std::make_shared<files::File>(std::move(opened));
  return {};
}

files::Outcome Journal::Append(const std::string& lines) {
  if (!wasRead_) {
    return files::Failure("write", path_, std::make_error_code(std::errc::operation_not_permitted));
  }
  if (file_ == nullptr) {
    if (files::Outcome outcome = Open(); !outcome.ok()) return outcome;
  }
  // The torn end of a run that was killed becomes a line of its own, which is passed over.
  const std::string written = hasTornEnd_ ? '\n' + lines : lines;
  if (const std::error_code error = file_->Write(end_, BytesOf(written))) {
    // What was written of it would be a torn line in the middle.
    (void)file_->Truncate(end_);
    return files::Failure("write", path_, error);
  }
  end_ += written.size();
  hasTornEnd_ = false;
  return {};
}

}  // namespace stations
