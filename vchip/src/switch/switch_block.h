// SPDX-License-Identifier: MIT
// What holds for a whole unit.
#ifndef VCHIP_SWITCH_SWITCH_BLOCK_H
#define VCHIP_SWITCH_SWITCH_BLOCK_H

#include <array>
#include <cstdint>

namespace vchip {

class Dump;
class Findings;

// Link speeds below 1 Gbit/s, and from there on.
inline constexpr uint32_t kSpeedClasses = 2;
inline constexpr uint32_t kMinFrameLength = 64;
inline constexpr uint32_t kMaxFrameLength = 0x3fff;
inline constexpr uint32_t kCpuFrameKinds = 8;
inline constexpr uint32_t kMaxCpuFormat = 3;

class SwitchBlock {
 public:
  static constexpr uint32_t kLayout = 2;
  void power_on();
  void repair() {}  // single words, each valid on its own
  bool sound() const;
  void dump(const char *name, Dump &unit) const;
  void check(Findings &findings) const;

  bool tag_counts() const { return tag_counts_ != 0; }
  void set_tag_counts(bool counts) { tag_counts_ = counts; }
  const std::array<uint32_t, kSpeedClasses> &max_length() const { return max_length_; }
  void set_max_length(uint32_t speed_class, uint32_t length) { max_length_[speed_class] = length; }
  const std::array<uint32_t, kCpuFrameKinds> &cpu_format() const { return cpu_format_; }
  void set_cpu_format(uint32_t kind, uint32_t format) { cpu_format_[kind] = format; }

 private:
  uint32_t tag_counts_;
  std::array<uint32_t, kSpeedClasses> max_length_;
  std::array<uint32_t, kCpuFrameKinds> cpu_format_;
};

}  // namespace vchip

#endif
