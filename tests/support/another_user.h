// SPDX-License-Identifier: MIT

#ifndef TESTS_SUPPORT_ANOTHER_USER_H_
#define TESTS_SUPPORT_ANOTHER_USER_H_

#include <unistd.h>

#include <stdexcept>

namespace test {

// The superuser may do everything: while the object lives, this process may do what anybody may.
class AnotherUser {
 public:
  AnotherUser() : before_(geteuid()) {
    if (before_ == 0 && seteuid(kNobody) != 0) throw std::runtime_error("cannot be another user");
  }
  ~AnotherUser() { (void)!seteuid(before_); }
  AnotherUser(const AnotherUser&) = delete;
  AnotherUser& operator=(const AnotherUser&) = delete;

 private:
  static constexpr uid_t kNobody = 65534;
  const uid_t before_;
};

}  // namespace test

#endif  // TESTS_SUPPORT_ANOTHER_USER_H_
