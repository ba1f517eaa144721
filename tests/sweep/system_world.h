// SPDX-License-Identifier: MIT
// The system calls, allocations and file operations of the library: the linker
// puts these in place of the real ones (--wrap). Sockets are played, the rest
// is real; each is written down, and fails if it is told to.
#ifndef SWCTL_TESTS_SWEEP_SYSTEM_WORLD_H
#define SWCTL_TESTS_SWEEP_SYSTEM_WORLD_H

#include <cstddef>
#include <cstdint>
#include <set>
#include <string>
#include <vector>

namespace sweep {

inline constexpr int32_t kSocket = 70;
inline constexpr uint32_t kAnswerWord = 42;

struct World {
  bool playing = false;
  // The calls that fail, by their place in the run; what they answer if they
  // answer a number.
  size_t first_failing = SIZE_MAX;
  size_t last_failing = 0;
  int32_t answer = -1;

  std::vector<std::string> calls;
  std::set<void *> blocks;          // not freed
  std::set<const void *> places;    // after the calls in the code
  std::string table = "/dev/null";  // instead of the library's own dump file
};
World &world();

}  // namespace sweep

#endif
