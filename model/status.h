// SPDX-License-Identifier: MIT

#ifndef MODEL_STATUS_H_
#define MODEL_STATUS_H_

#include <concepts>
#include <string>
#include <string_view>
#include <utility>

namespace model {

// The number of the failure that a file or a folder cannot be used.
inline constexpr int kFileAccess = 75;

// The outcome of an operation that can fail: success, or the number and the description that
// the operator is shown.  It must be looked at; ignoring one takes a (void) and a reason.
class [[nodiscard]] Status {
 public:
  // Success.
  Status() = default;

  // A failure.  `description` is a sentence in UTF-8 without the final full stop.
  Status(int number, std::string description)
      : failed_(true), number_(number), description_(std::move(description)) {}

  // Takes over another library's status that has the same three questions, so that a library
  // which must not know this one can still report through it.
  template <typename Other>
  requires requires(const Other& other) {
    { other.ok() } -> std::same_as<bool>;
    { other.Number() } -> std::convertible_to<int>;
    { other.Description() } -> std::convertible_to<std::string>;
  } &&(!std::same_as<Other, Status>)
      Status(const Other& other)  // NOLINT(google-explicit-constructor): meant to convert
      : failed_(!other.ok()),
        number_(other.ok() ? 0 : other.Number()),
        description_(other.ok() ? std::string() : std::string(other.Description())) {
  }

  bool ok() const { return !failed_; }

  // 0 and empty on success.
  int Number() const { return number_; }
  const std::string& Description() const { return description_; }

 private:
  bool failed_ = false;
  int number_ = 0;
  std::string description_;
};

}  // namespace model

#endif  // MODEL_STATUS_H_
