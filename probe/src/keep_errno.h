// SPDX-License-Identifier: MIT
#ifndef SWCTL_PROBE_KEEP_ERRNO_H
#define SWCTL_PROBE_KEEP_ERRNO_H

#include <cerrno>

namespace swprobe {

// The probe's own system calls leave no mark.
class KeepErrno {
 public:
  KeepErrno() = default;
  ~KeepErrno() { errno = saved_; }
  KeepErrno(const KeepErrno &) = delete;
  KeepErrno &operator=(const KeepErrno &) = delete;

 private:
  int saved_ = errno;
};

}  // namespace swprobe

#endif
