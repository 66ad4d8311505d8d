// SPDX-License-Identifier: MIT
//
// One line of the journal:
//
//   17 8f3a21c4 act 12 {"title":"Label of station 17",...}
//
// Its running number, the checksum of everything else, what it is, the run that it belongs to, and
// a JSON object on one line.  All that deciding about runs takes stands before the object, so that
// a start need not parse a history of megabytes.

#ifndef STATIONS_JOURNAL_LINE_H_
#define STATIONS_JOURNAL_LINE_H_

#include <cstdint>
#include <string>
#include <string_view>

namespace stations {

struct JournalLine {
  enum class Kind {
    Run,        // a run of the program begins
    Act,        // something was changed
    Saved,      // the run's changes are in Tesk.mdb
    Restored,   // the run's changes were carried out again in another run
    Discarded,  // the operator does not want them
  };

  std::int64_t number = 0;  // from 1, rising
  Kind kind = Kind::Act;
  std::int64_t run = 0;      // the number of the line that began the run
  std::string_view content;  // the JSON object; not looked at here
};

// The line as it is written, with its line end.  REQUIRES: no line end in the content.
std::string WriteLine(const JournalLine& line);

// Reads a line, given without its line end; *line refers to `text`.  False for one that is not
// whole: the checksum tells.
bool ReadLine(std::string_view text, JournalLine* line);

}  // namespace stations

#endif  // STATIONS_JOURNAL_LINE_H_
