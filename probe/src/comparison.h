// SPDX-License-Identifier: MIT
// Whether a call that is made now is one that was recorded, and what may be
// otherwise: rules from a file.
#ifndef SWCTL_PROBE_COMPARISON_H
#define SWCTL_PROBE_COMPARISON_H

#include <string>
#include <vector>

#include "site.h"

namespace swprobe {

class Comparison {
 public:
  // Adds the rules of a file:
  //
  //     differ CALL ARGUMENT...    the arguments may be others
  //     unordered CALL...          the calls may come at another place
  //     ignore CALL...             the calls are not looked at
  //
  // A name of a call may have the wildcards of fnmatch(3). Throws
  // std::runtime_error naming file and line.
  void read(const std::string &path);
  // One line, without a comment. Throws std::invalid_argument.
  void add_rule(const std::string &line);

  bool is_ignored(const std::string &call) const { return is_in(ignored_, call); }
  bool is_unordered(const std::string &call) const { return is_in(unordered_, call); }

  // The names of the arguments that went into the two calls and that differ
  // although they must not; both calls have the same name.
  std::vector<std::string> differences(const Call &recorded, const Call &made) const;
  bool same(const Call &recorded, const Call &made) const;
  // The same text for calls that are the same.
  std::string key(const Call &call) const;

 private:
  struct Free {
    std::string call;
    std::vector<std::string> arguments;
  };

  void add_free(const std::vector<std::string> &words);
  bool is_free(const std::string &call, const std::string &argument) const;
  static bool is_in(const std::vector<std::string> &patterns, const std::string &call);

  std::vector<Free> free_;
  std::vector<std::string> unordered_;
  std::vector<std::string> ignored_;
};

}  // namespace swprobe

#endif
