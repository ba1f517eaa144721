// SPDX-License-Identifier: MIT
#include "l2/remove.h"

#include <swctl/platform/adapter.h>
#include <swctl/platform/sdk.h>

#include <cstring>

#include "frame/static_mac.h"

namespace swctl {
namespace {

// What adp_phy_2_intf_id() answers for ports whose entries stay.
constexpr int32_t kNoInterface = 0;
constexpr int32_t kProtectedInterface = 28;

bool same_vlan(VlanMatch test, uint32_t vid, uint32_t match) {
  switch (test) {
    case VlanMatch::any: return true;
    case VlanMatch::equal: return vid == match;
    case VlanMatch::equal_unless_0: return match == 0 || vid == match;
    case VlanMatch::equal_16_bits:
      return static_cast<uint16_t>(vid) == static_cast<uint16_t>(match);
  }
  return false;
}

bool is_of(EntryKind kind, uint32_t flags) {
  switch (kind) {
    case EntryKind::all: return true;
    case EntryKind::dynamic_only: return (flags & USER_L2_FLAG_STATIC) == 0;
    case EntryKind::static_only: return STATIC_ENTRY_TEST(flags);
  }
  return false;
}

bool is_on_interface(int32_t port) {
  const int32_t interface = adp_phy_2_intf_id(port);
  return interface != kNoInterface && interface != kProtectedInterface;
}

}  // namespace

bool keys_match(const Keys &keys, const chip_l2_ucast_entry &entry,
                const chip_l2_ucast_entry &match) {
  return same_vlan(keys.vlan, entry.vid, match.vid) && (!keys.port || entry.port == match.port) &&
         (!keys.trunk || entry.trunk == match.trunk) &&
         (!keys.mac || memcmp(entry.mac, match.mac, sizeof entry.mac) == 0);
}

void remove_entry(const DeleteRule &rule, const chip_l2_ucast_entry &entry) {
  if (!is_of(rule.removal.kind, entry.flags)) return;
  if (rule.removal.on_interface_only && !is_on_interface(entry.port)) return;
  rtk_l2_addr_del(0, entry.vid, entry.mac);
  if (rule.removal.logged && STATIC_ENTRY_TEST(entry.flags))
    note_static_mac(StaticMac::removed, rule.callback, rule.line, entry.mac);
}

}  // namespace swctl
