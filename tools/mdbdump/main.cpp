// SPDX-License-Identifier: MIT
//
// mdbdump: shows what is in a Jet database file, whether it is sound, and saves what can be saved
// of a damaged one.

#include <cstdio>
#include <map>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "db/jet/audit.h"
#include "db/jet/database.h"
#include "db/salvage.h"
#include "tools/mdbdump/json_dump.h"
#include "tools/mdbdump/salvage_report.h"

namespace {

constexpr int kClean = 0;
constexpr int kProblems = 1;
constexpr int kUnreadable = 2;

constexpr char kHelp[] =
    "Usage: mdbdump [--check] FILE\n"
    "       mdbdump --salvage FILE NEW [--defaults]\n"
    "\n"
    "Prints the user tables of a Jet 3 or Jet 4 database (.mdb) as JSON: columns, rows and\n"
    "indexes.  The file is only read.\n"
    "\n"
    "  --check   print nothing of that, but inspect the whole file: pages, usage maps, rows,\n"
    "            long values, indexes, catalogue.  Problems go to the standard output, one a\n"
    "            line, with page and row; notes are harmless oddities\n"
    "  --salvage write every record of the intercom database FILE that survives, however\n"
    "            damaged FILE is, into the file NEW, which must not be there, and print what\n"
    "            is missing.  What is missing stays empty, and stations of which nothing\n"
    "            survives have no record in NEW\n"
    "  --defaults with --salvage: what is missing gets what a new database has instead\n"
    "  --help    print this\n"
    "\n"
    "Exit code: 0 all is well, 1 the file has problems (what can be read is printed or saved),\n"
    "2 it cannot be read at all, or NEW cannot be written.\n";

int Fail(const std::string& file, const model::Status& status) {
  std::fprintf(stderr, "mdbdump: %s: %s\n", file.c_str(), status.Description().c_str());
  return kUnreadable;
}

int Check(const jet::Database& database, const std::string& file) {
  jet::Findings findings;
  const jet::Status status = jet::Audit(database.GetStore(), &findings);
  if (!status.ok()) return Fail(file, status);
  int problems = 0;
  for (const jet::Finding& finding : findings) {
    if (finding.IsProblem()) ++problems;
    std::printf("%s: %s\n", finding.IsProblem() ? "problem" : "note",
                finding.Description().c_str());
  }
  std::printf("%s: %d problems, %d notes\n", file.c_str(), problems,
              static_cast<int>(findings.size()) - problems);
  return problems == 0 ? kClean : kProblems;
}

int Dump(const jet::Database& database, const std::string& file) {
  std::string json;
  std::vector<std::string> problems;
  const jet::Status status = mdbdump::AppendJson(database, &json, &problems);
  if (!status.ok()) return Fail(file, status);
  const bool written =
      std::fwrite(json.data(), 1, json.size(), stdout) == json.size() && std::fflush(stdout) == 0;
  if (!written) {
    std::fprintf(stderr, "mdbdump: the output cannot be written\n");
    return kUnreadable;
  }
  for (const std::string& problem : problems) {
    std::fprintf(stderr, "mdbdump: %s: %s\n", file.c_str(), problem.c_str());
  }
  return problems.empty() ? kClean : kProblems;
}

int Salvage(const std::string& damaged, const std::string& salvaged, db::Fill fill) {
  db::SalvageReport report;
  const model::Status status = db::Salvage(damaged, salvaged, fill, &report);
  if (!status.ok()) return Fail(damaged, status);
  std::fputs(mdbdump::Describe(report, fill).c_str(), stdout);
  return report.IsWhole() ? kClean : kProblems;
}

struct CommandLine {
  bool help = false;
  bool check = false;
  bool salvage = false;
  bool defaults = false;
  std::vector<std::string> files;

  // Whether the options and files fit together.
  bool IsComplete() const {
    if (salvage) return !check && files.size() == 2;
    return !defaults && files.size() == 1;
  }
};

// False for an unknown option.
bool Parse(std::span<char*> words, CommandLine* line) {
  const std::map<std::string_view, bool*> options = {{"--help", &line->help},
                                                     {"--check", &line->check},
                                                     {"--salvage", &line->salvage},
                                                     {"--defaults", &line->defaults}};
  for (const std::string_view word : words) {
    if (const auto option = options.find(word); option != options.end()) {
      *option->second = true;
    } else if (word.starts_with('-')) {
      return false;
    } else {
      line->files.emplace_back(word);
    }
  }
  return true;
}

}  // namespace

int main(int argc, char** argv) {
  CommandLine line;
  const bool isKnown = Parse({argv + 1, argv + argc}, &line);
  if (line.help) {
    std::fputs(kHelp, stdout);
    return kClean;
  }
  if (!isKnown || !line.IsComplete()) {
    std::fputs(kHelp, stderr);
    return kUnreadable;
  }
  const std::string& file = line.files[0];
  if (line.salvage) {
    return Salvage(file, line.files[1], line.defaults ? db::Fill::Defaults : db::Fill::Nothing);
  }
  std::unique_ptr<jet::Database> database;
  const jet::Status status = jet::Database::Open(file, jet::Access::ReadOnly, &database);
  if (!status.ok()) return Fail(file, status);
  return line.check ? Check(*database, file) : Dump(*database, file);
}
