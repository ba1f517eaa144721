// SPDX-License-Identifier: MIT
// What surrounds a command: a chip with something in every table, a clock
// that need not be waited for, and a place for files.
#ifndef SWCTL_TESTS_SHELL_SWEEP_WORLD_H
#define SWCTL_TESTS_SHELL_SWEEP_WORLD_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace shell_sweep {

// The lines of the file of commands: those that prepare the chip, and those
// that are swept.
struct Commands {
  std::vector<std::string> preparing;
  std::vector<std::string> swept;
};
// Throws std::runtime_error if the file cannot be read.
Commands read_commands(const std::string &path);

// What others do to the ports of a unit: cables, stations, traffic, storms.
void let_things_happen(uint32_t unit);

// A new directory for this process and its children, which becomes the working
// directory; also where the library's own dump file goes.
void enter_new_directory();

// Whether the library's own dump file can be opened.
void allow_dump_file(bool allowed);

// The bytes of a file, or nothing if there is none.
std::string content_of(const std::string &path);

}  // namespace shell_sweep

#endif
