// SPDX-License-Identifier: MIT
// What vchipctl does, once the command line is split into words. All throw
// UsageError before anything is changed, or Refused.
#ifndef VCHIPCTL_COMMANDS_H
#define VCHIPCTL_COMMANDS_H

#include <string>

namespace vchipctl {

struct LinkWords {
  std::string unit = "0";
  std::string ports;
  std::string partner;  // empty: not given
  std::string forced;
};

struct MediumWords {
  std::string unit = "0";
  std::string ports;
  std::string medium;
};

struct DumpWords {
  std::string unit;  // empty: all
  std::string block;
  bool compact = false;
};

void reset();
void link_up(const LinkWords &words);
void link_down(const LinkWords &words);
void medium(const MediumWords &words);
void trace(const std::string &word);
void dump(const DumpWords &words);

}  // namespace vchipctl

#endif
