// SPDX-License-Identifier: MIT
// Which ports are in which VLAN. Each function has its own rule for how far it
// looks and what it answers; callers depend on every one of them.
#include <swctl/platform/adapter.h>
#include <swctl/platform/sdk.h>
#include <swctl/vlan.h>

#include <bit>

#include "frame/port_mask.h"
#include "frame/ports.h"
#include "vlan/vid.h"

namespace {

using swctl::each_port;
using swctl::unchecked_bit_in_mask;
using swctl::vid_of;

constexpr int32_t kWordPorts = 32;

// The walk of the single-VLAN functions. The results are summed up from -1 and
// the walk ends when the sum is not 0: at interface 0, unless its call answers 1.
// The caller's word is read once: the calls may change what it lies in.
template <typename Call>
int32_t walk_sum(const user_pbmp_t *ports, Call call) {
  const uint32_t interfaces = ports->word[0];
  uint32_t sum = UINT32_MAX;
  for (int32_t interface = 0; interface < kWordPorts; ++interface) {
    if ((interfaces >> interface & 1u) != 0)
      sum += static_cast<uint32_t>(call(adp_intf_2_phy_id(interface)));
    if (sum != 0) break;
  }
  return static_cast<int32_t>(sum);
}

// The interfaces of a bitmap, found once for all VLANs of a range.
class Interfaces {
 public:
  explicit Interfaces(const user_pbmp_t &ports) {
    each_port(ports,
              [this](int32_t interface) { number_[count_++] = static_cast<uint8_t>(interface); });
  }
  // The mask of their chip ports; the adapter is asked for each.
  uint32_t chip_ports() const {
    uint32_t mask = 0;
    for (uint32_t place = 0; place < count_; ++place)
      mask |= unchecked_bit_in_mask(adp_intf_2_phy_id(number_[place]));
    return mask;
  }

 private:
  uint32_t count_ = 0;
  uint8_t number_[USER_PBMP_WORDS * kWordPorts];
};

// Adds the ports to what the VLAN has; the untagged ones come last and win.
int32_t add_ports(uint32_t unit, uint32_t vid, const Interfaces &tagged,
                  const Interfaces &untagged) {
  uint32_t member = 0;
  uint32_t untag = 0;
  rtk_vlan_port_get(unit, vid, &member, &untag);
  const uint32_t with_tag = tagged.chip_ports();
  const uint32_t without_tag = untagged.chip_ports();
  member |= with_tag | without_tag;
  untag = (untag & ~with_tag) | without_tag;
  return rtk_vlan_port_set(unit, vid, &member, &untag);
}

int32_t remove_ports(uint32_t unit, uint32_t vid, uint32_t interfaces) {
  int32_t result = 0;
  for (uint32_t rest = interfaces; rest != 0 && result == 0; rest &= rest - 1)
    result = rtk_vlan_port_del(unit, vid, adp_intf_2_phy_id(std::countr_zero(rest)));
  return result;
}

constexpr user_pbmp_t one_word(uint32_t mask) {
  return {{mask}};
}

}  // namespace

int32_t user_vlan_port_add(uint32_t, uint32_t unit, uint32_t vid, const user_pbmp_t *ports,
                           uint32_t untagged) {
  return walk_sum(
      ports, [=](int32_t port) { return rtk_vlan_port_add(unit, vid_of(vid), port, untagged); });
}

int32_t user_vlan_port_addEx(uint32_t, uint32_t unit, uint32_t first, uint32_t last,
                             const user_pbmp_t *tagged, const user_pbmp_t *untagged) {
  const Interfaces with_tag(*tagged);
  const Interfaces without_tag(*untagged);
  int32_t result = -1;
  for (uint32_t vid = vid_of(first); vid <= vid_of(last); ++vid) {
    result = add_ports(unit, vid, with_tag, without_tag);
  }
  return result;
}

int32_t user_vlan_port_remove(uint32_t, uint32_t unit, uint32_t vid, const user_pbmp_t *ports) {
  return walk_sum(ports, [=](int32_t port) { return rtk_vlan_port_del(unit, vid_of(vid), port); });
}

int32_t user_vlan_port_removeEx(uint32_t, uint32_t unit, uint32_t first, uint32_t last,
                                const user_pbmp_t *ports) {
  const uint32_t interfaces = ports->word[0];
  int32_t result = 0;
  for (uint32_t vid = vid_of(first); vid <= vid_of(last) && result == 0; ++vid) {
    result = remove_ports(unit, vid, interfaces);
  }
  return result;
}

int32_t user_vlan_port_set(uint32_t, uint32_t unit, uint32_t vid, const user_pbmp_t *member,
                           const user_pbmp_t *untagged) {
  const uint32_t members = member->word[0];
  const uint32_t untag = untagged->word[0];
  return rtk_vlan_port_set(unit, vid_of(vid), &members, &untag);
}

int32_t user_vlan_port_get(uint32_t, uint32_t unit, uint32_t vid, user_pbmp_t *member,
                           user_pbmp_t *untagged) {
  uint32_t members = 0;
  uint32_t untag = 0;
  const int32_t result = rtk_vlan_port_get(unit, vid_of(vid), &members, &untag);
  *member = one_word(members);
  *untagged = one_word(untag);
  return result;
}
