// SPDX-License-Identifier: MIT
#ifndef SWCTL_SHELL_FAULT_H
#define SWCTL_SHELL_FAULT_H

#include <cstdint>
#include <exception>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace swsh {

enum Status : int { kDone = 0, kWrongUsage = 1, kRefused = 2 };

// What a chip call that refused has to say.
struct Refusal {
  std::string function;
  int64_t interface = 0;
  int32_t result = 0;
  std::optional<std::string> sentence;
};

// Why a command failed, ready to be shown to a person or as JSON.
struct Fault {
  Status status = kWrongUsage;
  std::string context;                 // the words that were right
  std::string message;                 // what is wrong with the next one
  std::optional<std::string> culprit;  // that word itself; none if one is missing
  std::vector<std::string> expected;
  std::vector<std::string> suggestions;  // those expected words that may be meant
  std::optional<Refusal> refusal;
  std::vector<std::string> details = {};  // lines that are said before it
};

// A fault of the caller's making. Without a culprit, something is missing. What
// is expected is suggested if it is one slip of the fingers away.
Fault wrong_usage(std::string message, std::optional<std::string> culprit,
                  std::vector<std::string> expected = {});

// One line without its prefix and line end:
// port set 3: unknown word "sped", expected one of: speed, duplex, loopback
std::string fault_line(const Fault &fault);

// How a command's handler reports a fault. It may leave the context empty;
// what runs the command fills in its words.
class CommandError : public std::exception {
 public:
  explicit CommandError(Fault fault) : fault_(std::move(fault)) {}
  const Fault &fault() const { return fault_; }
  const char *what() const noexcept override { return fault_.message.c_str(); }

 private:
  Fault fault_;
};

// The same error with more to say at the end of its message.
CommandError with_note(const CommandError &error, const std::string &note);

}  // namespace swsh

#endif
