// SPDX-License-Identifier: MIT
// The platform's log counter and operation trace. They belong to the board,
// not to a unit.
#ifndef VCHIP_PLATFORM_PLATFORM_BLOCK_H
#define VCHIP_PLATFORM_PLATFORM_BLOCK_H

#include <cstdint>
#include <functional>

namespace vchip {

class Dump;
class Findings;

inline constexpr uint32_t kTraceRecords = 256;
inline constexpr uint32_t kTraceText = 256;  // bytes, the terminating 0 included

class PlatformBlock {
 public:
  static constexpr uint32_t kLayout = 1;
  void power_on();
  void repair();
  bool sound() const;
  void dump(const char *name, Dump &chip) const;
  void check(Findings &findings) const;

  int32_t trace() const { return trace_; }
  void set_trace(int32_t answer) { trace_ = answer; }
  // Texts longer than the record are cut.
  void add_record(const char *location, const char *message);
  // Oldest first.
  void each_record(const std::function<void(const char *, const char *)> &visit) const;

  uint64_t log_lines() const { return log_lines_; }
  void count_line() { ++log_lines_; }

 private:
  struct Record {
    uint32_t whole;
    char location[kTraceText];
    char message[kTraceText];
  };

  uint64_t log_lines_;
  int32_t trace_;
  uint32_t next_;  // the slot that the next record goes to
  Record records_[kTraceRecords];
};

}  // namespace vchip

#endif
