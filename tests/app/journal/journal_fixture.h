// SPDX-License-Identifier: MIT

#ifndef TESTS_APP_JOURNAL_JOURNAL_FIXTURE_H_
#define TESTS_APP_JOURNAL_JOURNAL_FIXTURE_H_

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "app/journal/journal_keeper.h"
#include "stations/journal/contents.h"
#include "tests/support/small_database.h"
#include "tests/support/temporary_folder.h"

namespace app {

// A folder with a journal and a file of the database, which holds "database".
class JournalFixture : public testing::Test {
 protected:
  JournalFixture() { test::WriteFile(DatabasePath(), "database"); }

  // Of its bytes: SHA-256.
  static constexpr char kDigest[] =
      "3549b0028b75d981cdda2e573e9cb49dedc200185876df299f912b79f69dabd8";

  std::filesystem::path Path() const { return folder_ / "Tesk.journal"; }
  std::filesystem::path DatabasePath() const { return folder_ / "Tesk.mdb"; }
  std::string Text() const { return test::ReadFile(Path()); }

  static stations::Change LabelOf(int station, const char* before, const char* after,
                                  stations::Origin origin = stations::Origin::Operator) {
    return {origin, station, {{"Label", before, after}}};
  }

  // A run of the console that made these changes, each an act, and was killed.
  void RunAndCrash(const std::vector<stations::Change>& changes) {
    stations::Changes stream;
    JournalKeeper keeper(stream, Path(), DatabasePath());
    keeper.Begin();
    keeper.Finish();
    for (const stations::Change& change : changes) stream.Announce(change);
  }

  // What the journal says of its runs: "1 operator 17; saved".
  std::vector<std::string> Runs() const {
    static constexpr const char* kEnds[] = {"", "; saved", "; restored", "; discarded"};
    const stations::JournalContents contents(Text() == "(none)" ? "" : Text());
    std::vector<std::string> runs;
    for (const stations::JournalRun& run : contents.Runs()) {
      std::string& words = runs.emplace_back(std::to_string(run.id));
      for (const stations::JournalLine* const line : run.acts) {
        stations::Act act;
        EXPECT_TRUE(stations::ReadAct(line->content, &act));
        words += " " + act.title;
      }
      words += kEnds[static_cast<int>(run.end)];
    }
    return runs;
  }

  test::TemporaryFolder folder_;
};

}  // namespace app

#endif  // TESTS_APP_JOURNAL_JOURNAL_FIXTURE_H_
