// SPDX-License-Identifier: MIT

#include "tests/support/temporary_folder.h"

#include <stdlib.h>

#include <fstream>
#include <iterator>
#include <stdexcept>
#include <system_error>

namespace test {

TemporaryFolder::TemporaryFolder() {
  std::string name = (std::filesystem::temp_directory_path() / "tesk-test-XXXXXX").string();
  if (mkdtemp(name.data()) == nullptr) throw std::runtime_error("no temporary folder");
  path_ = name;
}

TemporaryFolder::~TemporaryFolder() {
  std::error_code ignored;  // what a test made undeletable stays
  std::filesystem::remove_all(path_, ignored);
}

std::string ReadFile(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  if (!file) return "(none)";
  return {std::istreambuf_iterator<char>(file), {}};
}

void WriteFile(const std::filesystem::path& path, std::string_view bytes) {
  std::ofstream file(path, std::ios::binary);
  file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  if (!file.flush()) throw std::runtime_error("cannot write " + path.string());
}

}  // namespace test
