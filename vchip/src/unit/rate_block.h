// SPDX-License-Identifier: MIT
// Rates and storm control.
#ifndef VCHIP_UNIT_RATE_BLOCK_H
#define VCHIP_UNIT_RATE_BLOCK_H

#include <array>
#include <cstdint>

namespace vchip {

class Dump;

inline constexpr uint32_t kStormTypes = 5;
inline constexpr uint32_t kMaxStormBurst = 0xffff;

class RateBlock {
 public:
  static constexpr uint32_t kLayout = 1;
  void reset();
  void repair() {}  // single words, each valid on its own
  void dump(const char *name, Dump &unit) const;

  uint32_t storm_mode() const { return storm_mode_; }
  void set_storm_mode(uint32_t mode) { storm_mode_ = mode; }
  const std::array<uint32_t, kStormTypes> &storm_burst() const { return storm_burst_; }
  void set_storm_burst(uint32_t type, uint32_t size) { storm_burst_[type] = size; }

 private:
  uint32_t storm_mode_;
  std::array<uint32_t, kStormTypes> storm_burst_;
};

}  // namespace vchip

#endif
