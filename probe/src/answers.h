// SPDX-License-Identifier: MIT
// A recording in the place of the platform.
#ifndef SWCTL_PROBE_ANSWERS_H
#define SWCTL_PROBE_ANSWERS_H

#include <set>
#include <string>
#include <unordered_map>
#include <vector>

#include "comparison.h"
#include "plan.h"

namespace swprobe {

class Answers {
 public:
  Answers(std::string path, Recording recording, Comparison comparison);

  // What the call was answered when it was recorded; the first time it is made
  // the first answer, and so on, and the last one from then on. A call that was
  // not recorded is refused with -1. `complaint` becomes what to tell of that,
  // once for calls that are the same, and is empty otherwise.
  Verdict answer(const Call &made, std::string &complaint);

 private:
  struct Given {
    std::vector<Verdict> answers;
    size_t next = 0;
  };

  std::string path_;
  Comparison comparison_;
  std::unordered_map<std::string, Given> given_;
  std::set<std::string> refused_;
};

}  // namespace swprobe

#endif
