// SPDX-License-Identifier: MIT

#include "db/backups.h"

#include <algorithm>
#include <array>
#include <iomanip>
#include <sstream>
#include <string_view>
#include <system_error>

#include "db/file_status.h"
#include "files/local_time.h"
#include "files/whole_file.h"

namespace db {
namespace {

namespace fs = std::filesystem;

using Cause = Backups::Cause;

constexpr std::string_view kBegin = "Tesk-";
constexpr std::string_view kEnd = ".mdb";
constexpr std::string_view kUnfinished = ".new";  // what a replacement is made under
constexpr char kTime[] = "%Y-%m-%d-%H%M%S";
constexpr std::size_t kTimeLength = 17;

constexpr std::array kCauses = {
    std::pair{Cause::BeforeRetrieval, std::string_view("before-retrieval")},
    std::pair{Cause::Daily, std::string_view("daily")},
    std::pair{Cause::BeforeSaving, std::string_view("before-saving")},
    std::pair{Cause::BeforeRestoring, std::string_view("before-restoring")},
};

std::string TimeText(const std::tm& time) {
  std::array<char, kTimeLength + 1> text{};
  (void)std::strftime(text.data(), text.size(), kTime, &time);
  return text.data();
}

std::string NameOf(Cause cause, std::time_t now) {
  const auto* const word = std::ranges::find(kCauses, cause, &decltype(kCauses)::value_type::first);
  return std::string(kBegin) + files::LocalTimeText(now, kTime) + '-' + std::string(word->second) +
         std::string(kEnd);
}

// False for a name that is none of ours.
bool ReadName(const fs::path& path, Backups::Copy* copy) {
  const std::string name = path.filename().string();
  std::string_view rest = name;
  if (!rest.starts_with(kBegin) || !rest.ends_with(kEnd)) return false;
  rest.remove_prefix(kBegin.size());
  rest.remove_suffix(kEnd.size());
  if (rest.size() < kTimeLength + 1 || rest[kTimeLength] != '-') return false;
  const std::string text(rest.substr(0, kTimeLength));
  std::istringstream time{text};
  time >> std::get_time(&copy->time, kTime);
  copy->time.tm_isdst = -1;
  const auto* const word = std::ranges::find(kCauses, rest.substr(kTimeLength + 1),
                                             &decltype(kCauses)::value_type::second);
  // Reading takes what is never written, such as a month of one digit.
  if (!time || TimeText(copy->time) != text || word == kCauses.end()) return false;
  copy->cause = word->first;
  copy->path = path;
  return true;
}

// "2026-11-21".  REQUIRES: a name of ours
std::string DateIn(const fs::path& path) {
  constexpr std::size_t kDateLength = 10;
  return path.filename().string().substr(kBegin.size(), kDateLength);
}

bool Holds(const fs::path& copy, std::string_view bytes) {
  std::string held;
  return files::ReadWhole(copy, bytes.size(), &held).ok() && held == bytes;
}

}  // namespace

void Backups::DeleteUnfinished() const {
  std::error_code error;
  for (fs::directory_iterator at(folder_, error), end; !error && at != end; at.increment(error)) {
    Copy copy;
    const fs::path& path = at->path();
    // What cannot be deleted takes room, no more.
    if (path.extension() == kUnfinished && ReadName(path.parent_path() / path.stem(), &copy)) {
      (void)files::Remove(path);
    }
  }
}

fs::path Backups::PathOf(Cause cause, std::time_t now) const {
  return folder_ / NameOf(cause, now);
}

model::Status Backups::Keep(const fs::path& path, std::string_view bytes, fs::path* holder) const {
  std::error_code error;
  fs::create_directories(folder_, error);
  if (error) return StatusOf(files::Failure("make", folder_, error));
  DeleteUnfinished();
  std::vector<Copy> copies;
  if (model::Status status = List(&copies); !status.ok()) return status;
  // A copy of a later day was named by a clock that went ahead.  It counts as old, or each new copy
  // would be deleted by the next one until that day.
  std::stable_partition(copies.begin(), copies.end(), [date = DateIn(path)](const Copy& copy) {
    return DateIn(copy.path) <= date;
  });
  if (!copies.empty() && Holds(copies.front().path, bytes)) {
    if (holder != nullptr) *holder = copies.front().path;
    return {};
  }
  if (const auto outcome = files::Replace(path, bytes); !outcome.ok()) return StatusOf(outcome);
  std::erase_if(copies, [&](const Copy& copy) { return copy.path == path; });
  for (std::size_t i = kKept - 1; i < copies.size(); ++i) {
    (void)files::Remove(copies[i].path);  // what cannot be deleted takes room, no more
  }
  if (holder != nullptr) *holder = path;
  return {};
}

model::Status Backups::List(std::vector<Copy>* copies) const {
  copies->clear();
  std::error_code error;
  for (fs::directory_iterator at(folder_, error), end; !error && at != end; at.increment(error)) {
    Copy copy;
    std::error_code gone;
    if (at->is_regular_file(gone) && ReadName(at->path(), &copy)) copies->push_back(copy);
  }
  if (error && error != std::errc::no_such_file_or_directory) {
    return StatusOf(files::Failure("read", folder_, error));
  }
  std::ranges::sort(*copies, std::ranges::greater(), &Copy::path);
  return {};
}

}  // namespace db
