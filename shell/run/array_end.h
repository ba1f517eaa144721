// SPDX-License-Identifier: MIT
// An array that is whole although a signal ends the program.
#ifndef SWCTL_SHELL_RUN_ARRAY_END_H
#define SWCTL_SHELL_RUN_ARRAY_END_H

#include <csignal>
#include <map>

namespace swsh {

// While there is one, INT, TERM and HUP close the array that is being written
// to a descriptor and end the program then. Signals that are ignored stay so.
class ArrayEnd {
 public:
  explicit ArrayEnd(int descriptor);
  ~ArrayEnd();
  ArrayEnd(const ArrayEnd &) = delete;
  ArrayEnd &operator=(const ArrayEnd &) = delete;

  // While something is written to the array a signal waits for its end; a
  // second one of its kind does not, for the reader may have gone to sleep.
  class Hold {
   public:
    Hold();
    ~Hold();
    Hold(const Hold &) = delete;
    Hold &operator=(const Hold &) = delete;
  };

 private:
  std::map<int, struct sigaction> before_;
};

}  // namespace swsh

#endif
