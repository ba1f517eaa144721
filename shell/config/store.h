// SPDX-License-Identifier: MIT
// Files that are written whole or not at all, and the directory that keeps checkpoints.
#ifndef SWCTL_SHELL_CONFIG_STORE_H
#define SWCTL_SHELL_CONFIG_STORE_H

#include <cstdint>
#include <string>
#include <vector>

namespace swsh {

// Throws the CommandError that names the file and says why it is as before.
void write_whole(const std::string &path, const std::string &text);

// Where a unit has what is kept: below SWCTL_STATE_DIRECTORY, or /var/lib/swctl.
std::string unit_path(uint32_t unit);
// The same, which is there afterwards. Throws a CommandError of
// status kRefused if it cannot be made.
std::string unit_directory(uint32_t unit);

struct Checkpoint {
  std::string name;
  int64_t time;  // since 1970, in seconds
};
inline constexpr size_t kMostCheckpoints = 50;

// By name.
std::vector<Checkpoint> checkpoints(uint32_t unit);
// Both throw a CommandError of wrong usage: for a name that is none, one more than
// kMostCheckpoints, or one that is not there.
void keep_checkpoint(uint32_t unit, const std::string &name, const std::string &text);
std::string checkpoint_file(uint32_t unit, const std::string &name);
void forget_checkpoint(uint32_t unit, const std::string &name);

}  // namespace swsh

#endif
