// SPDX-License-Identifier: MIT
// A token bucket, exact in whole numbers: nothing is rounded, so the result
// does not depend on how often it is looked at.
#ifndef VCHIP_COMMON_BUCKET_H
#define VCHIP_COMMON_BUCKET_H

#include <cstdint>

namespace vchip {

// Tokens are parts of what is counted, chosen so that a nanosecond brings a
// whole number of them.
struct Fill {
  uint64_t per_nanosecond;
  uint64_t size;  // tokens of a full bucket
};

// Bytes at a rate in units of 16 kbit/s: 2,000 bytes a second, so two millionths
// of a byte a nanosecond.
inline constexpr uint64_t kTokensPerByte = 1000000;
constexpr Fill fill_of_bytes(uint32_t rate, uint64_t size) {
  return {uint64_t{rate} * 2, size * kTokensPerByte};
}
// Frames at a rate of frames a second.
inline constexpr uint64_t kTokensPerFrame = 1000000000;
constexpr Fill fill_of_frames(uint32_t rate, uint64_t size) {
  return {rate, size * kTokensPerFrame};
}

inline constexpr uint64_t kNever = UINT64_MAX;
inline constexpr uint64_t kFull = UINT64_MAX;

struct Bucket {
  uint64_t level;  // tokens at that time
  uint64_t time;   // nanoseconds of the chip's clock

  // A full one stays full whatever its size becomes.
  constexpr void fill_up(uint64_t now) { *this = {kFull, now}; }

  constexpr uint64_t level_at(const Fill &fill, uint64_t now) const {
    if (level >= fill.size) return fill.size;
    const uint64_t passed = now > time ? now - time : 0;
    const uint64_t missing = fill.size - level;
    if (fill.per_nanosecond == 0) return level;
    if (passed > missing / fill.per_nanosecond) return fill.size;
    const uint64_t gained = passed * fill.per_nanosecond;
    return gained < missing ? level + gained : fill.size;
  }

  // When it holds `tokens`, at the earliest now; kNever if it never will.
  constexpr uint64_t time_of(const Fill &fill, uint64_t tokens, uint64_t now) const {
    const uint64_t held = level_at(fill, now);
    if (held >= tokens) return now;
    if (tokens > fill.size || fill.per_nanosecond == 0) return kNever;
    const uint64_t wait = (tokens - held + fill.per_nanosecond - 1) / fill.per_nanosecond;
    return wait < kNever - now ? now + wait : kNever;
  }

  // The bucket holds them.
  constexpr void take(const Fill &fill, uint64_t tokens, uint64_t now) {
    *this = {level_at(fill, now) - tokens, now};
  }

  // Another rate or size from now on: what came until now came at the old rate.
  // A larger bucket gets the difference, a smaller one spills.
  constexpr void change(const Fill &before, const Fill &after, uint64_t now) {
    const uint64_t held = level_at(before, now);
    if (held == before.size) return fill_up(now);
    const uint64_t grown = after.size > before.size ? held + (after.size - before.size) : held;
    *this = {grown < after.size ? grown : after.size, now};
  }
};

}  // namespace vchip

#endif
