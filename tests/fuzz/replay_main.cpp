// SPDX-License-Identifier: MIT
//
// Runs a fuzz target once over every file below the folders and files named on the command
// line.  Fails when there is none: a replay that replays nothing proves nothing.

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

int Replay(const std::filesystem::path& path) {
  if (std::filesystem::is_directory(path)) {
    int count = 0;
    for (const auto& entry : std::filesystem::directory_iterator(path)) {
      count += Replay(entry.path());
    }
    return count;
  }
  std::ifstream file(path, std::ios::binary);
  if (!file) return 0;
  const std::vector<char> bytes{std::istreambuf_iterator<char>(file), {}};
  LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
  return 1;
}

}  // namespace

int main(int argc, char** argv) {
  int count = 0;
  for (int i = 1; i < argc; ++i) count += Replay(argv[i]);
  std::printf("%d inputs replayed\n", count);
  return count > 0 ? 0 : 1;
}
