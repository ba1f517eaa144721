// SPDX-License-Identifier: MIT
#include "chip/settings.h"

#include <atomic>
#include <charconv>

#include "common/standard_error.h"
#include "common/variable.h"
#include "image/patience.h"

namespace vchip {
namespace {

constexpr double kMilliseconds = 1000;        // of a second
constexpr uint64_t kNanoseconds = 1'000'000;  // of a millisecond
constexpr double kLongest = 4e6;              // seconds
// Milliseconds, or one of these.
constexpr uint32_t kForever = UINT32_MAX;
constexpr uint32_t kNotRead = UINT32_MAX - 1;

std::atomic<uint32_t> wait = kNotRead;

// Digits, or digits with a point.
bool parse_seconds(const std::string &text, double &seconds) {
  const char *end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, seconds, std::chars_format::fixed);
  return error == std::errc() && stop == end && seconds >= 0 && seconds <= kLongest &&
         text[0] != '-';
}

uint32_t read_wait() {
  const std::string value = variable("VCHIP_WAIT");
  double seconds = 0;
  if (value.empty()) return kForever;
  if (parse_seconds(value, seconds)) return static_cast<uint32_t>(seconds * kMilliseconds);
  write_error_line("swctl-vchip: VCHIP_WAIT=" + value +
                   ": expected seconds, such as 2 or 0.5; waiting as long as it takes");
  return kForever;
}

// Read by the first thread that waits.
uint32_t known_wait() {
  uint32_t known = wait;
  if (known != kNotRead) return known;
  const uint32_t read = read_wait();
  return wait.compare_exchange_strong(known, read) ? read : known;
}

}  // namespace

std::string image_setting() {
  return variable("VCHIP_IMAGE");
}

uint64_t wait_setting() {
  const uint32_t milliseconds = known_wait();
  return milliseconds == kForever ? Patience::kForever : milliseconds * kNanoseconds;
}

void forget_wait_setting() {
  wait = kNotRead;
}

bool record_lock_setting() {
  const std::string value = variable("VCHIP_LOCK");
  if (value.empty() || value == "record") return !value.empty();
  write_error_line("swctl-vchip: VCHIP_LOCK=" + value +
                   ": expected record; taking what the system has");
  return false;
}

}  // namespace vchip
