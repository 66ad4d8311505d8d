// SPDX-License-Identifier: MIT
//
// mdbdump: shows what is in a Jet database file, or whether it is sound.

#include <cstdio>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "db/jet/audit.h"
#include "db/jet/database.h"
#include "tools/mdbdump/json_dump.h"

namespace {

constexpr int kClean = 0;
constexpr int kProblems = 1;
constexpr int kUnreadable = 2;

constexpr char kHelp[] =
    "Usage: mdbdump [--check] FILE\n"
    "\n"
    "Prints the user tables of a Jet 3 or Jet 4 database (.mdb) as JSON: columns, rows and\n"
    "indexes.  The file is only read.\n"
    "\n"
    "  --check   print nothing of that, but inspect the whole file: pages, usage maps, rows,\n"
    "            long values, indexes, catalogue.  Problems go to the standard output, one a\n"
    "            line, with page and row; notes are harmless oddities\n"
    "  --help    print this\n"
    "\n"
    "Exit code: 0 all is well, 1 the file has problems (what can be read is printed),\n"
    "2 it cannot be read at all.\n";

int Fail(const std::string& file, const jet::Status& status) {
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

}  // namespace

int main(int argc, char** argv) {
  bool check = false;
  std::string file;
  for (int i = 1; i < argc; ++i) {
    if (std::strcmp(argv[i], "--help") == 0) {
      std::fputs(kHelp, stdout);
      return kClean;
    }
    if (std::strcmp(argv[i], "--check") == 0) {
      check = true;
    } else if (argv[i][0] != '-' && file.empty()) {
      file = argv[i];
    } else {
      std::fputs(kHelp, stderr);
      return kUnreadable;
    }
  }
  if (file.empty()) {
    std::fputs(kHelp, stderr);
    return kUnreadable;
  }
  std::unique_ptr<jet::Database> database;
  const jet::Status status = jet::Database::Open(file, jet::Access::ReadOnly, &database);
  if (!status.ok()) return Fail(file, status);
  return check ? Check(*database, file) : Dump(*database, file);
}
