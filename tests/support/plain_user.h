// A user without the rights of an administrator, for the length of a scope.
#pragma once

#include <unistd.h>

#include <cstdlib>
#include <stdexcept>

namespace zelmar::testing_support {

// Gives up the rights of an administrator for its lifetime: a user who may not write what is protected.
class PlainUser {
 public:
  PlainUser() : privileged_(geteuid() == 0) {
    // The real user counts too: it is the one that a look at the rights may go by.
    if (privileged_ && setresuid(kNobody, kNobody, 0) != 0)
      throw std::runtime_error("cannot become a plain user");
  }
  ~PlainUser() {
    if (privileged_ && setresuid(0, 0, 0) != 0) std::abort();
  }
  PlainUser(const PlainUser&) = delete;
  PlainUser& operator=(const PlainUser&) = delete;

 private:
  static constexpr uid_t kNobody = 65534;

  bool privileged_;
};

}  // namespace zelmar::testing_support
