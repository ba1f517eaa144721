// SPDX-License-Identifier: MIT
// Runs commands of the shell, each in a process and on a chip of its own.
#ifndef SWCTL_TESTS_SHELL_SWEEP_RUN_H
#define SWCTL_TESTS_SHELL_SWEEP_RUN_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace shell_sweep {

// A copy of the chip that this process and its children see.
class SharedChip {
 public:
  SharedChip();
  SharedChip(const SharedChip &) = delete;
  SharedChip &operator=(const SharedChip &) = delete;

  // From the chip of this process, and into it.
  void take();
  void put_back() const;
  bool is_as_now() const;

 private:
  void *copy_;
  size_t size_;
};

struct Request {
  std::string line;
  uint32_t unit = 0;
  std::string plan = {};           // of the probe; empty: nothing fails
  SharedChip *keep_in = nullptr;   // gets what the chip is afterwards
  const SharedChip *as = nullptr;  // what it is held against
  bool with_dump = false;          // of the chip, as JSON
};

struct Run {
  int status = 0;
  std::string answer;    // as JSON
  std::string message;   // of what went wrong
  std::string function;  // that refused, by the answer
  int64_t result = 0;    // of that function
  std::string file;      // what is in the file "dump"
  bool is_as = false;    // the chip is as Request::as
  uint64_t failed = 0;   // calls that the plan answered
  std::vector<std::string> calls;
  std::string chip;  // Request::with_dump
};

// Runs the line in a child, on the chip as it is in this process. Throws
// std::runtime_error if the child dies.
Run run(const Request &request);

// The words of a command, and which of its places and keywords it was given.
struct Given {
  std::string command;  // "port set"
  std::vector<std::string> names;
};
Given given_in(const std::string &line);

// Every command of the table, with all of its places and keywords.
std::vector<Given> all_commands();

}  // namespace shell_sweep

#endif
