// SPDX-License-Identifier: MIT

#include <string>

#include "files/file.h"

namespace files {

namespace {

class Category : public std::error_category {
 public:
  const char* name() const noexcept override { return "files"; }

  std::string message(int value) const override {
    switch (static_cast<Error>(value)) {
      case Error::NotAFile:
        return "It is no ordinary file";
      case Error::TooLarge:
        return "It is too large";
      case Error::WriteProtected:
        return "It is write-protected";
      case Error::Shortened:
        break;
    }
    return "It has become shorter while it was open";
  }
};

}  // namespace

std::error_code make_error_code(Error error) {
  static const Category category;
  return {static_cast<int>(error), category};
}

}  // namespace files
