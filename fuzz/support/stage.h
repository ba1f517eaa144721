// SPDX-License-Identifier: MIT
// Where a target plays: what it prints goes nowhere, what it writes stays in
// memory, and nobody waits.
#ifndef SWCTL_FUZZ_SUPPORT_STAGE_H
#define SWCTL_FUZZ_SUPPORT_STAGE_H

#include <string>
#include <string_view>

namespace swfuzz {

// A file without a name in any directory.
class MemoryFile {
 public:
  MemoryFile();
  ~MemoryFile();
  MemoryFile(const MemoryFile &) = delete;
  MemoryFile &operator=(const MemoryFile &) = delete;

  int descriptor() const { return descriptor_; }
  // A name that opens it.
  const std::string &path() const { return path_; }
  void set(std::string_view content);
  std::string content() const;

 private:
  int descriptor_;
  std::string path_;
};

// While one lives, fopen() opens files in memory: `kInputName` is the input,
// every other name one and the same file. A name that is empty or ends in '/'
// cannot be opened.
inline constexpr char kInputName[] = "input";
class Stage {
 public:
  explicit Stage(std::string_view input = {});
  ~Stage();
  Stage(const Stage &) = delete;
  Stage &operator=(const Stage &) = delete;
};

// What the other file holds.
void set_other_file(std::string_view content);

// Thrown out of a command that goes on and on, when it has slept often.
struct SleptEnough {};

// What the target answered is wrong: says so and ends the process as a crash.
[[noreturn]] void wrong(const std::string &what);

}  // namespace swfuzz

#endif
