// SPDX-License-Identifier: MIT
//
// salvage_trial [FILES [SEED [FOLDER]]]: damages and salvages so many databases, 360 without a
// number, and prints how much of what is still in them was found.  Those of which something was not
// are left in FOLDER.

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <string>
#include <vector>

#include "tests/db/salvage_trial.h"

namespace {

void PrintLine(const test::TrialFigures& line) {
  std::printf("%-26s %5d %8d %8d %9d %9d %6zu %8d %7d %6d\n", line.damage.c_str(), line.files,
              line.rowsThere, line.rowsSalvaged, line.valuesThere, line.valuesSalvaged,
              line.wrong.size(), line.invented, line.unsound, line.silent);
}

void Tell(const char* what, const test::TrialFigures& line, const std::vector<std::string>& all) {
  for (const std::string& one : all) {
    std::fprintf(stderr, "%s: %s, %s\n", what, line.damage.c_str(), one.c_str());
  }
}

}  // namespace

int main(int argc, char** argv) {
  const int files = argc > 1 ? std::atoi(argv[1]) : 360;
  const auto seed = static_cast<std::uint32_t>(argc > 2 ? std::atoi(argv[2]) : 1);
  const std::string kept = argc > 3 ? argv[3] : "";
  if (files <= 0 || argc > 4) {
    std::fprintf(stderr, "usage: salvage_trial [FILES [SEED [FOLDER]]]\n");
    return 2;
  }
  try {
    test::TrialFigures sum;
    sum.damage = "together";
    std::printf("%-26s %5s %8s %8s %9s %9s %6s %8s %7s %6s\n", "damage", "files", "records",
                "saved", "values", "saved", "wrong", "invented", "unsound", "silent");
    for (const test::TrialFigures& line : test::RunSalvageTrial(files, seed, kept)) {
      PrintLine(line);
      Tell("overlooked", line, line.overlooked);
      Tell("wrong", line, line.wrong);
      sum.files += line.files;
      sum.rowsThere += line.rowsThere;
      sum.rowsSalvaged += line.rowsSalvaged;
      sum.valuesThere += line.valuesThere;
      sum.valuesSalvaged += line.valuesSalvaged;
      sum.wrong.insert(sum.wrong.end(), line.wrong.begin(), line.wrong.end());
      sum.invented += line.invented;
      sum.unsound += line.unsound;
      sum.silent += line.silent;
    }
    PrintLine(sum);
    std::printf("saved: %.3f %% of the records, %.3f %% of the long values\n",
                100.0 * sum.rowsSalvaged / sum.rowsThere,
                100.0 * sum.valuesSalvaged / sum.valuesThere);
    return 0;
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "salvage_trial: %s\n", failure.what());
    return 2;
  }
}
