// SPDX-License-Identifier: MIT
// What a function does about a call of its own that fails: the table, by
// function and call.
#ifndef SWCTL_TESTS_SWEEP_RULES_H
#define SWCTL_TESTS_SWEEP_RULES_H

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace sweep {

// Every call that leaves the library, numbered.
const std::vector<std::string> &call_names();

enum class Rule {
  none,  // the table knows of no such call
  // "Fails" is any negative result where nothing else is said.
  result,          // goes on; the last such result is the function's
  stop,            // a failure ends the function and is its result; otherwise like result
  stop_quietly,    // a failure ends the function and is its result; otherwise like ignored
  stop_nonzero,    // the same as stop, and a positive result fails too
  refuse_nonzero,  // the same as stop_quietly, and a positive result fails too
  created,         // the same as stop_nonzero, but that the VLAN exists is no failure
  leave,           // a failure ends the function, which answers what it had
  end,             // any result but 0 ends the function, which answers its end value
  purge,           // a failure removes the walk's entry and goes on to the next one
  skip,            // a failure leaves out the next call
  sum,             // running sum from -1; ends unless it is 0
  join,            // results are joined bit by bit
  ignored,         // nothing
  zero,            // nothing: a failure is the same as an answer of zeros
  carried,         // nothing, but later calls may carry what it did not write
  port,            // the answer is the port of the calls that follow, unchecked
  kept,            // 0 and 28 keep the walk's entry, any other answer removes it
  kept_silently,   // the same, and the removal is not recorded
  mask,            // the answer is a bit in a mask of a later call, unchecked
  anything,        // the answer is used for all that follows, none of it checked
  trace,           // an answer other than 0 adds a call that records the change
};

// The rules of one function for each call that it makes.
class Rules {
 public:
  // A list like "rtk_a:stop rtk_b_*:ignored": the first name that fits counts.
  explicit Rules(const std::string &text);
  Rule operator[](size_t call) const { return by_call_[call]; }

 private:
  std::vector<Rule> by_call_;
};

struct FunctionRules {
  Rules rules;
  bool passes_on = false;      // one call, whose result is handed on
  std::optional<int32_t> end;  // the answer where Rule::end has ended it; else that of success
};
// By the name of a function, or function@variant where that has a line of its
// own. A function that is not in the table passes a single call on.
const FunctionRules &rules_of(const std::string &function, const std::string &variant);
// What a function may leave in the caller's memory beside what was there and what is
// right: nothing, zeros, or a count of what its calls have answered.
enum class Outputs { usual, zeros, counted };
// To be asked where there is something else, for a line that is not asked for is unused.
Outputs outputs_rule_of(const std::string &function);
// The table's lines that nobody has asked for.
std::vector<std::string> unused_lines();

}  // namespace sweep

#endif
