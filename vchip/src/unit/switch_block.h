// SPDX-License-Identifier: MIT
// What holds for a whole unit.
#ifndef VCHIP_UNIT_SWITCH_BLOCK_H
#define VCHIP_UNIT_SWITCH_BLOCK_H

#include <cstdint>

namespace vchip {

class Dump;

class SwitchBlock {
 public:
  static constexpr uint32_t kLayout = 1;
  void reset();
  void repair() {}  // single words, each valid on its own
  void dump(const char *name, Dump &unit) const;

  bool tag_counts() const { return tag_counts_ != 0; }
  void set_tag_counts(bool counts) { tag_counts_ = counts; }

 private:
  uint32_t tag_counts_;
};

}  // namespace vchip

#endif
