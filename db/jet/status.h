// SPDX-License-Identifier: MIT

#ifndef DB_JET_STATUS_H_
#define DB_JET_STATUS_H_

#include <cassert>
#include <cstdint>
#include <memory>
#include <string>
#include <utility>

namespace jet {

// The engine's error numbers.  They are the ones that users of Jet databases know from the
// engine's published error list, each with the meaning it has there.
enum class ErrorNumber : int {
  None = 0,
  ObjectExists = 3010,       // a table or index of that name is there already
  UpdateWithoutEdit = 3020,  // Set or Update without AddNew or Edit before
  NoCurrentRecord = 3021,    // before the first, past the last, deleted, or no match
  DuplicateKey = 3022,       // a unique index would get the same key twice
  FileNotFound = 3024,
  DiskFull = 3026,    // the disk, the quota or the format's own size limit is reached
  ReadOnly = 3027,    // the database was opened, or can only be opened, for reading
  Password = 3031,    // the database has one
  DiskError = 3043,   // the operating system failed a read or a write
  Damaged = 3049,     // the file contradicts itself; the status names the page
  CannotOpen = 3051,  // no permission, or another program has the file
  NullKey = 3058,     // a required index field is null
  NoSuchTable = 3078,
  FileExists = 3204,    // a database to create would replace a file
  InvalidName = 3125,   // a table, field or index to create has a name it cannot have
  ValueTooLong = 3163,  // the text has more characters than the field
  RecordTooLarge = 3047,
  TooManyFields = 3190,  // a table to create has none or more than 255
  RequiredField = 3314,  // the field's definition does not allow null
  ZeroLength = 3315,     // the field's definition does not allow ""
  NoSuchItem = 3265,     // a field or index of that name is not there
  Unsupported = 3251,    // a healthy file that asks for what this engine does not do
  UnknownFormat = 3343,  // not a Jet database, or of another version
  TypeMismatch = 3421,   // the value does not fit the field's type
};

inline constexpr std::uint32_t kNoPage = 0xFFFFFFFF;

// The outcome of an operation of this library.  It must be looked at.
//
// Success is a null pointer: nearly every call returns it, and what went wrong is only looked at.
class [[nodiscard]] Status {
 public:
  // Success.
  Status() = default;

  // A failure: `number` is not None.  `text` is one sentence without its full stop, in UTF-8;
  // `page` is the page of the file where it went wrong, when it has one.
  Status(ErrorNumber number, std::string text, std::uint32_t page = kNoPage)
      : failure_(std::make_shared<const Failure>(number, std::move(text), page)) {
    assert(number != ErrorNumber::None);
  }

  bool ok() const { return failure_ == nullptr; }
  ErrorNumber Error() const { return ok() ? ErrorNumber::None : failure_->number; }

  // 0 on success.
  int Number() const { return static_cast<int>(Error()); }

  // The sentence alone, and the page or kNoPage.
  std::string Text() const { return ok() ? std::string() : failure_->text; }
  std::uint32_t Page() const { return ok() ? kNoPage : failure_->page; }

  // The sentence and, where it has one, " (page 17)".
  std::string Description() const {
    return Page() == kNoPage ? Text() : Text() + " (page " + std::to_string(Page()) + ")";
  }

 private:
  struct Failure {
    Failure(ErrorNumber theNumber, std::string theText, std::uint32_t thePage)
        : number(theNumber), text(std::move(theText)), page(thePage) {}

    ErrorNumber number;
    std::string text;
    std::uint32_t page;
  };

  std::shared_ptr<const Failure> failure_;
};

}  // namespace jet

#endif  // DB_JET_STATUS_H_
