// SPDX-License-Identifier: MIT
// Holds the calls of a program against a recording, as they are made.
#ifndef SWCTL_PROBE_EXPECTATION_H
#define SWCTL_PROBE_EXPECTATION_H

#include <list>
#include <optional>
#include <string>

#include "comparison.h"
#include "filter.h"

namespace swprobe {

class Expectation {
 public:
  // Calls that the filter leaves out are not compared. `path` is the
  // recording's name in what is told.
  Expectation(std::string path, Recording recording, Comparison comparison, Filter filter,
              bool stop);

  // Whether the program ends where it differs.
  bool stops() const { return stop_; }

  // For a call that is about to be made: what to tell, if it is the first that
  // is not as recorded. Otherwise the call is the made()th that was compared.
  std::optional<std::string> compare(const Call &call);
  uint64_t made() const { return made_; }
  // What such a call was answered. If it is not what was recorded, it is told
  // with the first difference, whose cause it may be.
  void answered(uint64_t which, const Call &call);
  // For a program that has ended: what to tell, if calls are missing.
  std::optional<std::string> end();

 private:
  struct Expected {
    uint64_t line;
    Call call;
    uint64_t made = 0;          // which call it was
    std::string answered = {};  // the line of that, if its answer was another
  };

  std::optional<std::string> compare_ordered(const Call &made);
  std::optional<std::string> compare_unordered(const Call &made);
  std::string told(const std::string &what, const Expected *recorded, const Call *made);
  std::string place(const Expected *recorded) const;
  void pass(std::list<Expected> &from, std::list<Expected>::iterator which);

  std::string path_;
  Comparison comparison_;
  Filter filter_;
  bool stop_;
  std::list<Expected> ordered_;    // still to come
  std::list<Expected> unordered_;  // likewise, at any place
  std::list<Expected> passed_;     // the last few
  uint64_t made_ = 0;              // calls that were compared
  bool over_ = false;              // a difference was told
};

}  // namespace swprobe

#endif
