// SPDX-License-Identifier: MIT
// Where calls are written: traces and recordings, of the platform's calls or
// also of the library's functions that make them.
#ifndef SWCTL_PROBE_WRITERS_H
#define SWCTL_PROBE_WRITERS_H

#include <vector>

#include "filter.h"
#include "line_file.h"

namespace swprobe {

struct Destination {
  LineFile file;
  bool of_library;  // takes the library's functions too
};

// All but enter() and abandon(), which belong to the calling thread alone, by
// one thread at a time.
class Writers {
 public:
  Writers() = default;
  Writers(std::vector<Destination> traces, std::vector<Destination> recordings, Filter filter);

  bool any() const { return !traces_.empty() || !recordings_.empty(); }
  bool any_trace() const { return !traces_.empty(); }
  bool any_library() const;

  // Whether all that is written is a line for each call of the platform in
  // recordings, which record() can write as well as add().
  bool are_plain_recordings() const;
  void record(std::string_view line);

  // A call of the platform that has returned. `sentence` explains its result
  // and may be null.
  void add(Call call, const char *sentence);

  // A function of the library has been called, and what is called from here on
  // is called inside it; has returned; will never return.
  void enter(const Call &call);
  void leave(Call call, const char *sentence);
  static void abandon();

 private:
  bool is_shown(const Call &call) const;
  void open_frames();
  void trace(const std::string &line, int indent);

  std::vector<Destination> traces_;
  std::vector<Destination> recordings_;
  Filter filter_;
};

}  // namespace swprobe

#endif
