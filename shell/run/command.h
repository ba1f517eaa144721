// SPDX-License-Identifier: MIT
// Runs one command and shows what came of it.
#ifndef SWCTL_SHELL_RUN_COMMAND_H
#define SWCTL_SHELL_RUN_COMMAND_H

#include <optional>
#include <string>
#include <vector>

#include "command/table.h"
#include "fault.h"
#include "output/writer.h"
#include "run/data_output.h"

namespace swsh {

struct Outcome {
  Answer answer;
  std::optional<Fault> fault;
  // What was done otherwise than a word says: "ingress is 96 kbit, ...".
  std::vector<std::string> notes = {};

  Status status() const { return fault ? fault->status : kDone; }
};

Outcome run_command(const Node &root, const std::vector<std::string> &words,
                    const Context &context);

// What JSON shows of an outcome: the answer, or {"error": ...}.
Value outcome_value(const Outcome &outcome);

// How outcomes are shown.
struct Style {
  Format format = Format::human;
  bool echo_status = false;  // a line "status N" after every outcome
  std::string pager = {};    // shows what is longer than the terminal; empty: nothing does
};

// One line on standard error, wrapped if that is a terminal: `place`, a colon and
// the fault.
void complain(const std::string &place, const Fault &fault);
// The fault of an outcome, or its notes.
void complain(const std::string &place, const Outcome &outcome);

// Shows the answer on the output, or the fault: on standard error after
// `place` and, where the format is JSON, on the output too. Returns the status.
Status report(const Outcome &outcome, const std::string &place, const Style &style,
              DataOutput &output);

}  // namespace swsh

#endif
