// SPDX-License-Identifier: MIT

#include "db/backups.h"

#include <algorithm>
#include <array>
#include <iomanip>
#include <sstream>
#include <string_view>
#include <system_error>
#include <utility>

#include "db/file_status.h"
#include "db/jet/format.h"
#include "files/whole_file.h"

namespace db {
namespace {

namespace fs = std::filesystem;

using Cause = Backups::Cause;

constexpr std::string_view kBegin = "Tesk-";
constexpr std::string_view kEnd = ".mdb";
constexpr char kTime[] = "%Y-%m-%d-%H%M%S";
constexpr std::size_t kTimeLength = 17;

constexpr std::array kCauses = {
    std::pair{Cause::BeforeRetrieval, std::string_view("before-retrieval")},
    std::pair{Cause::Daily, std::string_view("daily")},
    std::pair{Cause::BeforeSaving, std::string_view("before-saving")},
    std::pair{Cause::BeforeRestoring, std::string_view("before-restoring")},
};

std::string NameOf(Cause cause, std::time_t now) {
  std::array<char, kTimeLength + 1> time{};
  // One thread: nobody else asks for the time meanwhile.
  if (const std::tm* const local = std::localtime(&now); local != nullptr) {
    (void)std::strftime(time.data(), time.size(), kTime, local);
  }
  const auto* const word = std::ranges::find(kCauses, cause, &decltype(kCauses)::value_type::first);
  return std::string(kBegin) + time.data() + '-' + std::string(word->second) + std::string(kEnd);
}

// False for a name that is none of ours.
bool ReadName(const fs::path& path, Backups::Copy* copy) {
  const std::string name = path.filename().string();
  std::string_view rest = name;
  if (!rest.starts_with(kBegin) || !rest.ends_with(kEnd)) return false;
  rest.remove_prefix(kBegin.size());
  rest.remove_suffix(kEnd.size());
  if (rest.size() < kTimeLength + 1 || rest[kTimeLength] != '-') return false;
  std::istringstream time{std::string(rest.substr(0, kTimeLength))};
  time >> std::get_time(&copy->time, kTime);
  const auto* const word = std::ranges::find(kCauses, rest.substr(kTimeLength + 1),
                                             &decltype(kCauses)::value_type::second);
  if (!time || word == kCauses.end()) return false;
  copy->cause = word->first;
  copy->path = path;
  return true;
}

}  // namespace

model::Status Backups::Keep(const fs::path& file, Cause cause, std::time_t now) {
  std::error_code error;
  fs::create_directories(folder_, error);
  if (error) return StatusOf(files::Failure("make", folder_, error));
  const fs::path made = folder_ / NameOf(cause, now);
  if (const auto outcome = files::ReplaceByCopy(made, file, jet::kJet4.maxFileSize);
      !outcome.ok()) {
    return StatusOf(outcome);
  }
  std::vector<Copy> copies = List();
  std::erase_if(copies, [&](const Copy& copy) { return copy.path == made; });
  for (std::size_t i = kKept - 1; i < copies.size(); ++i) {
    if (const auto outcome = files::Remove(copies[i].path); !outcome.ok()) return StatusOf(outcome);
  }
  return {};
}

std::vector<Backups::Copy> Backups::List() const {
  std::vector<Copy> copies;
  std::error_code error;
  for (fs::directory_iterator at(folder_, error), end; !error && at != end; at.increment(error)) {
    Copy copy;
    if (at->is_regular_file(error) && ReadName(at->path(), &copy)) copies.push_back(copy);
  }
  std::ranges::sort(copies, std::ranges::greater(), &Copy::path);
  return copies;
}

}  // namespace db
