// SPDX-License-Identifier: MIT
// Processes that this one starts, and that never outlive it.
#ifndef VCHIPCTL_CHILD_H
#define VCHIPCTL_CHILD_H

#include <functional>
#include <string>
#include <sys/types.h>
#include <utility>
#include <vector>

namespace vchipctl {

class Child {
 public:
  Child() = default;
  // Runs in a process of its own, which ends with what it answers. Throws Refused if
  // there is none.
  explicit Child(const std::function<int()> &run);
  Child(Child &&other) noexcept : process_(std::exchange(other.process_, -1)) {}
  Child &operator=(Child &&other) noexcept {
    std::swap(process_, other.process_);
    return *this;
  }
  // Killed if it is still there.
  ~Child();

  pid_t process() const { return process_; }
  bool has_ended();
  // Its exit status, or 128 and the signal that has ended it.
  int wait();
  // Ends it with SIGTERM; kills it if that has not helped for so long.
  void end(int seconds);

 private:
  pid_t process_ = -1;
  int status_ = 0;
};

// Becomes another program, the one of that name beside this one if there is one. What it
// returns is the status of a process that could not: 127, or 126 for no right to.
int become(const std::vector<std::string> &words);

// The user's shell.
std::string user_shell();

}  // namespace vchipctl

#endif
