// SPDX-License-Identifier: MIT
// One call of a function of the library on its way through the probe, which
// looks at it and hands it on.
#ifndef SWCTL_PROBE_LIBRARY_CALL_H
#define SWCTL_PROBE_LIBRARY_CALL_H

#include <type_traits>

#include "capture.h"
#include "site.h"

namespace swprobe {

class LibraryCall {
 public:
  LibraryCall(Site &site, std::span<const Address> addresses);
  ~LibraryCall();
  LibraryCall(const LibraryCall &) = delete;
  LibraryCall &operator=(const LibraryCall &) = delete;

  // Where to hand the call on to; null if no library has the function.
  template <class Function>
  Function next() const {
    return reinterpret_cast<Function>(next_);
  }

  // Looks at what the function wrote, and gives its result back.
  template <class Result>
  Result finish(Result result) {
    if (!watched_) return result;
    if constexpr (std::is_pointer_v<Result>) {
      returned(static_cast<int64_t>(reinterpret_cast<uintptr_t>(result)));
    } else {
      returned(static_cast<int64_t>(result));
    }
    return result;
  }

 private:
  void returned(int64_t result);

  Site &site_;
  bool watched_;
  void *next_;
  std::vector<Part> parts_;
  Call call_{};
};

}  // namespace swprobe

#endif
