// SPDX-License-Identifier: MIT
// What a batch answers in JSON.
#ifndef SWCTL_SHELL_RUN_ELEMENTS_H
#define SWCTL_SHELL_RUN_ELEMENTS_H

#include <cstdint>
#include <optional>
#include <string>

#include "output/writer.h"
#include "run/array_end.h"
#include "run/command.h"
#include "run/data_output.h"

namespace swsh {

// An element for each command: of one array, which is whole however early the
// batch ends, or each a text of its own. Every element is written at once.
class Elements {
 public:
  Elements(Format format, bool in_array, DataOutput &output);

  void add(int64_t line, const std::string &command, const Outcome &outcome);
  void end();

 private:
  void write(const std::string &text);
  std::string in_array_text(const std::string &element) const;

  Format format_;
  DataOutput &output_;
  std::optional<ArrayEnd> array_;  // none if each element is by itself
  bool any_ = false;
};

}  // namespace swsh

#endif
