// SPDX-License-Identifier: MIT
#include "platform/platform_block.h"

#include <algorithm>
#include <atomic>
#include <cstring>

#include "platform/environment.h"

namespace vchip {
namespace {

void copy_text(char (&to)[kTraceText], const char *from) {
  const size_t length = strnlen(from, kTraceText - 1);
  memcpy(to, from, length);
  memset(to + length, 0, kTraceText - length);
}

}  // namespace

void PlatformBlock::power_on() {
  if (trace_at_power_on()) trace_ = 1;
}

// Only the slot that comes next can be half-written: add_record() moves on
// when all else is in place.
void PlatformBlock::repair() {
  records_[next_].whole = 0;
}

bool PlatformBlock::sound() const {
  constexpr size_t kEnd = kTraceText - 1;
  return next_ < kTraceRecords && std::ranges::all_of(records_, [](const Record &record) {
           return record.location[kEnd] == 0 && record.message[kEnd] == 0;
         });
}

void PlatformBlock::add_record(const char *location, const char *message) {
  Record &record = records_[next_];
  copy_text(record.location, location);
  copy_text(record.message, message);
  record.whole = 1;
  std::atomic_ref<uint32_t>(next_).store((next_ + 1) % kTraceRecords, std::memory_order_release);
}

void PlatformBlock::each_record(
    const std::function<void(const char *, const char *)> &visit) const {
  for (uint32_t step = 0; step < kTraceRecords; ++step) {
    const Record &record = records_[(next_ + step) % kTraceRecords];
    if (record.whole != 0) visit(record.location, record.message);
  }
}

}  // namespace vchip
