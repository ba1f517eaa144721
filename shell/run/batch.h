// SPDX-License-Identifier: MIT
#ifndef SWCTL_SHELL_RUN_BATCH_H
#define SWCTL_SHELL_RUN_BATCH_H

#include <string>

#include "command/table.h"
#include "fault.h"
#include "run/command.h"
#include "run/data_output.h"

namespace swsh {

struct BatchSettings {
  std::string file;  // "-" is standard input
  bool force = false;
  bool atomic = false;  // what a batch has changed is put back if a command fails
  Style style;
  bool in_array = true;  // in JSON: the answers are elements of one array
  Context context;
};

// Runs the commands of a file, one per line, until one fails; with `force` to
// the end. Each command's answer is written before the next one is read, and
// ends with a line end. The
// status is that of the first command that failed.
Status run_batch(const Node &root, const BatchSettings &settings, DataOutput &output);

}  // namespace swsh

#endif
