// SPDX-License-Identifier: MIT
//
// Databases damaged by chance, salvaged, and held against a search for every record's bytes in the
// damaged file, which knows nothing of pages.

#ifndef TESTS_DB_SALVAGE_TRIAL_H_
#define TESTS_DB_SALVAGE_TRIAL_H_

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace test {

// What came of the files that were damaged in one way.
struct TrialFigures {
  std::string damage;  // "a page of zeros"
  int files = 0;

  // Records whose row is found somewhere in the damaged file, byte by byte, and those of them that
  // are in the new file, all their fields but the long values equal.
  int rowsThere = 0;
  int rowsSalvaged = 0;
  // The same of the long values of these records.
  int valuesThere = 0;
  int valuesSalvaged = 0;

  // Records in the new file that the sound file did not have.
  int invented = 0;
  // New files that are not sound.
  int unsound = 0;
  // Damaged files that are found sound although a field cannot be read or a record is missing.
  int silent = 0;

  // What is there and was not salvaged, and fields in the new file that are other than they were
  // without a word in the report, a line each: "product 7: station 12 Relays".
  std::vector<std::string> overlooked;
  std::vector<std::string> wrong;
};

// Damages `files` copies of three databases in every way in turn: as the program makes it, one of
// Jet 3, and one of 600 stations; behind these as many as of each way whose counts are damaged.
// The same seed damages the same bytes.  Those of which something was overlooked are left in the
// folder `kept`, if one is named.  A failure of the salvage itself throws std::runtime_error.
std::vector<TrialFigures> RunSalvageTrial(int files, std::uint32_t seed,
                                          const std::filesystem::path& kept = {});

}  // namespace test

#endif  // TESTS_DB_SALVAGE_TRIAL_H_
