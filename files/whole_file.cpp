// SPDX-License-Identifier: MIT

#include "files/whole_file.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace files {

namespace {

namespace fs = std::filesystem;

constexpr std::size_t kBlock = std::size_t{1} << 16;

std::string NameOf(const fs::path& path) {
  const std::u8string name = path.filename().u8string();
  return {name.begin(), name.end()};
}

std::error_code CheckSize(const File& file, std::uint64_t most, std::uint64_t* size) {
  if (const auto error = file.Size(size)) return error;
  return *size > most ? std::error_code(Error::TooLarge) : std::error_code();
}

// Which of the two files failed.
enum class Side { None, From, To };

std::error_code CopyBytes(const File& from, const File& to, std::uint64_t size, Side* failed) {
  std::vector<std::uint8_t> block(kBlock);
  for (std::uint64_t at = 0; at < size; at += kBlock) {
    const std::span<std::uint8_t> part(block.data(), std::min<std::uint64_t>(kBlock, size - at));
    *failed = Side::From;
    if (const auto error = from.Read(at, part)) return error;
    *failed = Side::To;
    if (const auto error = to.Write(at, part)) return error;
  }
  *failed = Side::None;
  return {};
}

Outcome FailureOfCopy(Side failed, const fs::path& from, const fs::path& to,
                      std::error_code error) {
  return failed == Side::From ? Failure("read", from, error) : Failure("write", to, error);
}

// What a link leads to, over several links if need be.  The last one need not be there: a drive
// that is away is no reason to put a file in the link's place.
fs::path TargetOf(fs::path path) {
  constexpr int kMostLinks = 40;  // as the system follows
  std::error_code error;
  for (int links = 0; links < kMostLinks && fs::is_symlink(path, error); ++links) {
    const fs::path next = fs::read_symlink(path, error);
    if (error) break;
    path = path.parent_path() / next;
  }
  return path;
}

fs::path BesideTarget(fs::path target) { return target += ".new"; }

}  // namespace

Outcome Failure(const char* what, const fs::path& path, std::error_code error) {
  return {error, std::string("Cannot ") + what + " " + NameOf(path) + ": " + error.message()};
}

Outcome ReadWhole(const fs::path& path, std::uint64_t most, std::string* bytes) {
  bytes->clear();
  File file;
  std::uint64_t size = 0;
  if (const auto error = File::OpenToRead(path, &file)) return Failure("read", path, error);
  if (const auto error = CheckSize(file, most, &size)) return Failure("read", path, error);
  bytes->resize(size);
  if (const auto error = file.Read(0, {reinterpret_cast<std::uint8_t*>(bytes->data()), size})) {
    bytes->clear();
    return Failure("read", path, error);
  }
  return {};
}

Outcome Copy(const fs::path& from, const fs::path& to, std::uint64_t most) {
  File source;
  File copy;
  std::uint64_t size = 0;
  if (const auto error = File::OpenToRead(from, &source)) return Failure("copy", from, error);
  if (const auto error = CheckSize(source, most, &size)) return Failure("copy", from, error);
  if (const auto error = File::Create(to, Rights::Private, &copy)) {
    return Failure("write", to, error);
  }
  Side failed = Side::To;
  std::error_code error = CopyBytes(source, copy, size, &failed);
  if (!error) error = copy.TakeRightsOf(from);
  if (!error) error = copy.LetOwnerWrite();
  if (!error) return {};
  std::error_code ignored;
  fs::remove(to, ignored);
  return FailureOfCopy(failed, from, to, error);
}

Outcome Compare(const fs::path& one, const fs::path& other, bool* same) {
  File first;
  File second;
  std::uint64_t size = 0;
  std::uint64_t otherSize = 0;
  *same = false;
  if (const auto error = File::OpenToRead(one, &first)) return Failure("read", one, error);
  if (const auto error = File::OpenToRead(other, &second)) return Failure("read", other, error);
  if (const auto error = first.Size(&size)) return Failure("read", one, error);
  if (const auto error = second.Size(&otherSize)) return Failure("read", other, error);
  if (size != otherSize) return {};
  std::vector<std::uint8_t> firstBlock(kBlock);
  std::vector<std::uint8_t> secondBlock(kBlock);
  for (std::uint64_t at = 0; at < size; at += kBlock) {
    const std::uint64_t count = std::min<std::uint64_t>(kBlock, size - at);
    if (const auto error = first.Read(at, {firstBlock.data(), count})) {
      return Failure("read", one, error);
    }
    if (const auto error = second.Read(at, {secondBlock.data(), count})) {
      return Failure("read", other, error);
    }
    if (firstBlock != secondBlock) return {};
  }
  *same = true;
  return {};
}

Outcome Remove(const fs::path& path) {
  Kind kind = Kind::Nothing;
  std::error_code error = KindOf(path, &kind);
  if (!error && kind == Kind::Other) error = Error::NotAFile;
  if (!error && kind != Kind::Nothing) fs::remove(path, error);
  return error ? Failure("delete", path, error) : Outcome();
}

fs::path Beside(const fs::path& name) { return BesideTarget(TargetOf(name)); }

Replacement::~Replacement() {
  if (file_ == nullptr) return;
  file_.reset();
  std::error_code ignored;  // what cannot be deleted is overwritten next time
  fs::remove(beside_, ignored);
}

Outcome Replacement::Begin(const fs::path& name) {
  name_ = name;
  target_ = TargetOf(name);
  beside_ = BesideTarget(target_);
  std::error_code error;
  const fs::file_status old = fs::status(target_, error);
  if (old.type() == fs::file_type::none) return Failure("replace", name_, error);
  replaces_ = fs::exists(old);
  if (replaces_ && !fs::is_regular_file(old)) return Failure("replace", name_, Error::NotAFile);
  if (IsWriteProtected(target_)) return Failure("replace", name_, Error::WriteProtected);
  if (Outcome removed = Remove(beside_); !removed.ok()) return removed;
  File file;
  const Rights rights = replaces_ ? Rights::Private : Rights::OfFolder;
  error = File::Create(beside_, rights, &file);
  if (error) return Failure("write", beside_, error);
  file_ = std::make_shared<File>(std::move(file));
  return {};
}

Outcome Replacement::Fill(const fs::path& from, std::uint64_t most) {
  File source;
  std::uint64_t size = 0;
  if (const auto error = File::OpenToRead(from, &source)) return Failure("read", from, error);
  if (const auto error = CheckSize(source, most, &size)) return Failure("read", from, error);
  Side failed = Side::None;
  if (const auto error = CopyBytes(source, *file_, size, &failed)) {
    return FailureOfCopy(failed, from, beside_, error);
  }
  return {};
}

Outcome Replacement::PutInPlace() {
  if (replaces_) {
    if (const auto error = file_->TakeRightsOf(target_)) return Failure("write", beside_, error);
  }
  if (const auto error = file_->Sync()) return Failure("write", beside_, error);
  std::error_code error;
  fs::rename(beside_, target_, error);
  if (error) return Failure("replace", name_, error);
  file_.reset();
  SyncFolder(target_.parent_path());
  return {};
}

Outcome Replace(const fs::path& name, std::string_view bytes) {
  Replacement replacement;
  if (Outcome begun = replacement.Begin(name); !begun.ok()) return begun;
  const std::span<const std::uint8_t> all(reinterpret_cast<const std::uint8_t*>(bytes.data()),
                                          bytes.size());
  if (const auto error = replacement.NewFile()->Write(0, all)) {
    return Failure("write", Beside(name), error);
  }
  return replacement.PutInPlace();
}

Outcome ReplaceByCopy(const fs::path& name, const fs::path& from, std::uint64_t most) {
  Replacement replacement;
  if (Outcome begun = replacement.Begin(name); !begun.ok()) return begun;
  if (Outcome filled = replacement.Fill(from, most); !filled.ok()) return filled;
  return replacement.PutInPlace();
}

}  // namespace files
