// SPDX-License-Identifier: MIT

#ifndef STATIONS_JOURNAL_JOURNAL_H_
#define STATIONS_JOURNAL_JOURNAL_H_

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

#include "files/line_file.h"
#include "files/whole_file.h"
#include "stations/journal/contents.h"
#include "stations/journal/line.h"

namespace stations {

// The file of changes, `Tesk.journal`: what it held when this run of the program began, and the
// lines that this run adds.
//
// Lines are kept as files::LineFile keeps them; the disk has one after a Sync() of File(), which
// may take its time and is the caller's to put where nobody waits.  A journal that could not be
// read is not added to: what it holds would be lost.
class Journal {
 public:
  // No journal is larger; one that is, is not read.
  static constexpr std::uint64_t kMostBytes = 256 << 20;

  // `path` need not be there.
  explicit Journal(std::filesystem::path path) : file_(std::move(path)) {}

  // Reads what is there.  Nothing is written yet, and nothing is made.
  files::Outcome Read();

  // What Read() found.
  const JournalContents& Contents() const { return *contents_; }

  // Replaces the file by this text, whole, and reads it as Read() does.  This run begins anew with
  // the next change.
  files::Outcome Replace(std::string_view text);

  // Says how this run begins: a JSON object, written before its first act.  A run that changes
  // nothing leaves no line.
  void SetBeginning(std::string object) { beginning_ = std::move(object); }

  // Adds an act of this run, as a JSON object.  In a file that is new, since the one before was
  // deleted, this run begins anew.
  files::Outcome AddAct(std::string_view object);

  // Adds how a run ended; `kind` is Saved, Restored or Discarded.  What is changed after the end of
  // this run begins another.
  files::Outcome EndRun(std::int64_t run, JournalLine::Kind kind, std::string_view object);

  // The number of this run; 0 before its first act.
  std::int64_t ThisRun() const { return run_; }

  // The open file; null before the first line of this run.
  const std::shared_ptr<files::File>& File() const { return file_.Opened(); }

 private:
  files::Outcome Open();
  files::Outcome Append(const std::string& lines);

  std::unique_ptr<JournalContents> contents_ = std::make_unique<JournalContents>();
  std::string beginning_;
  files::LineFile file_;
  bool wasRead_ = false;
  std::int64_t next_ = 1;
  std::int64_t run_ = 0;
};

}  // namespace stations

#endif  // STATIONS_JOURNAL_JOURNAL_H_
