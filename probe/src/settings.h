// SPDX-License-Identifier: MIT
// What the environment asks of the probe.
#ifndef SWCTL_PROBE_SETTINGS_H
#define SWCTL_PROBE_SETTINGS_H

#include <memory>
#include <vector>

#include "answers.h"
#include "expectation.h"
#include "filter.h"
#include "line_file.h"
#include "rule.h"
#include "writers.h"

namespace swprobe {

struct Settings {
  std::vector<Destination> traces;
  std::vector<Destination> recordings;
  std::vector<Rule> rules;
  Filter filter;
  std::unique_ptr<Expectation> expectation;  // null without one
  std::unique_ptr<Answers> answers;          // null if the platform answers
};

// `words` is the value of SWPROBE, `inline_plan` that of SWPROBE_FAIL; either
// may be null. Throws std::runtime_error naming the wrong word; no file has
// been touched then, unless it is a later file that cannot be created.
Settings read_settings(const char *words, const char *inline_plan);

}  // namespace swprobe

#endif
