// SPDX-License-Identifier: MIT
// Which bits of a narrow argument count, whatever the caller leaves above them
// in the register or on the stack.
#include <swctl-vchip/vchip.h>
#include <swctl/platform/sdk.h>

#include <cstring>

#include "callers.h"
#include "support/library_test.h"

namespace {

using swctl_test::Lines;

struct Seen {
  Lines calls;
  int32_t result;
  std::vector<uint8_t> output;
  bool operator==(const Seen &) const = default;
};

chip_l2_ucast_entry entry(const uint8_t *mac, uint32_t flags) {
  chip_l2_ucast_entry entry = {};
  entry.vid = 10;
  memcpy(entry.mac, mac, sizeof entry.mac);
  entry.port = 3;
  entry.flags = flags;
  return entry;
}

class Narrow : public swctl_test::LibraryTest {
 protected:
  Narrow() { setenv("VCHIP_LOG", "none", 1); }

  // A chip that has VLAN 10, a static and a learned address and a group in it.
  static void make_chip() {
    ASSERT_EQ(vchip_reset(), 0);
    rtk_vlan_create(0, 10);
    const chip_l2_ucast_entry stays = entry(static_mac, 0x08);
    const chip_l2_ucast_entry learned = entry(dynamic_mac, 0);
    rtk_l2_addr_add(0, &stays);
    rtk_l2_addr_add(0, &learned);
    chip_l2_mcast_entry group = {};
    group.vid = 10;
    memcpy(group.mac, group_mac, sizeof group.mac);
    rtk_l2_mcastAddr_add(0, &group);
  }
  static Seen see(const narrow_argument &argument, uint32_t word) {
    memset(output, 0, sizeof output);
    swprobe::forget();
    const int32_t result = argument.call(word);
    return {swprobe::take_lines(), result, {output, output + sizeof output}};
  }
};

TEST_F(Narrow, BitsCountOnlyIfTheyAreAmongTheLowOnes) {
  for (const narrow_argument *each = narrow_arguments; each->function != nullptr; ++each) {
    SCOPED_TRACE(std::string(each->function) + ", " + each->parameter);
    make_chip();
    const Seen usual = see(*each, each->base);
    bool any = false;
    for (uint32_t bit = 0; bit < 32; ++bit) {
      make_chip();
      const bool differs = see(*each, each->base ^ (uint32_t{1} << bit)) != usual;
      any = any || differs;
      if (each->every_bit != 0 || bit >= each->bits) {
        EXPECT_EQ(differs, bit < each->bits) << "bit " << bit;
      }
    }
    EXPECT_EQ(any, each->bits != 0);
  }
}

// Among the values are those that a function has cases for. What these
// functions do does not depend on what the chip holds.
TEST_F(Narrow, NothingAboveAByteMattersWhateverTheByte) {
  for (const narrow_argument *each = narrow_arguments; each->function != nullptr; ++each) {
    if (each->bits == 0 || each->bits > 8) continue;
    SCOPED_TRACE(std::string(each->function) + ", " + each->parameter);
    for (uint32_t value = 0; value < 256; ++value) {
      const Seen usual = see(*each, value);
      for (const uint32_t above : {0xFFFFFF00u, 0x100u, 0xA5A5A500u})
        EXPECT_EQ(see(*each, above | value), usual) << above << " above " << value;
    }
  }
}

}  // namespace
