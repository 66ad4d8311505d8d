// SPDX-License-Identifier: MIT

#include "tools/stage/fake_printers.h"

#include <cstdlib>
#include <fstream>

namespace stage {
namespace {

namespace fs = std::filesystem;

std::string SearchPath() {
  const char* const path = std::getenv("PATH");
  return path == nullptr ? "" : path;
}

}  // namespace

FakePrinters::FakePrinters() : path_(SearchPath()) {
  std::string name = (fs::temp_directory_path() / "printers-XXXXXX").string();
  if (mkdtemp(name.data()) == nullptr) std::abort();
  folder_ = name;
  LetLpstat("printf 'Office\\nStudio\\nsystem default destination: Studio\\n'");
  LetLp("printf '%s\\n' \"$@\" > \"$here/arguments\"\ncat > \"$here/document\"");
  setenv("PATH", (folder_.string() + ":" + path_).c_str(), 1);
}

FakePrinters::~FakePrinters() {
  setenv("PATH", path_.c_str(), 1);
  std::error_code ignored;  // a folder of the system's own that is left does no harm
  fs::remove_all(folder_, ignored);
}

void FakePrinters::Uninstall() {
  fs::remove(folder_ / "lpstat");
  fs::remove(folder_ / "lp");
  setenv("PATH", folder_.c_str(), 1);
}

void FakePrinters::Install(const char* program, std::string_view lines) {
  const fs::path file = folder_ / program;
  std::ofstream(file) << "#!/bin/sh\nhere=${0%/*}\n" << lines << '\n';
  fs::permissions(file, fs::perms::owner_all);
}

}  // namespace stage
