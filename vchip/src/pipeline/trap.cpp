// SPDX-License-Identifier: MIT
#include "pipeline/trap.h"

#include "pipeline/steps.h"
#include "pipeline/words.h"
#include "unit/state.h"

namespace vchip {
namespace {

constexpr uint32_t kTypeBpdu = 19;       // per port
constexpr uint32_t kTypeLldpFrame = 21;  // per port
constexpr uint32_t kTypeMld = 4;
constexpr uint32_t kTypeIgmp = 5;
constexpr uint32_t kTypeOwnAddress = 24;
constexpr uint32_t kGroupOam = 0;
constexpr uint32_t kGroupLacp = 1;
constexpr uint32_t kGroupBridge = 2;  // 01-80-C2-00-00-02 to -0F
constexpr uint32_t kGroupGarp = 3;    // 01-80-C2-00-00-20 to -2F
constexpr uint32_t kBypassSlow = 6;

constexpr uint32_t kOffsetBridge = 0x00;
constexpr uint32_t kOffsetSlow = 0x02;
constexpr uint32_t kOffsetPae = 0x03;
constexpr uint32_t kOffsetProvider = 0x08;
constexpr uint32_t kOffsetNearest = 0x0e;
constexpr uint32_t kLastBridgeOffset = 0x0f;
constexpr uint32_t kFirstGarpOffset = 0x20;
constexpr uint32_t kLastGarpOffset = 0x2f;
constexpr uint32_t kOffsets = 0x30;

constexpr uint32_t kSubtypeLacp = 1;
constexpr uint32_t kSubtypeMarker = 2;
constexpr uint32_t kSubtypeOam = 3;

constexpr const char *kPerPort = "rtk_trap_portMgmtFrameAction_set";
constexpr const char *kPerType = "rtk_trap_mgmtFrameAction_set";
constexpr const char *kPerGroup = "rtk_trap_rmaGroupAction_set";

bool is_untagged(const Way &way) {
  return !way.tag.there && !way.inner.there && !way.outer_removed;
}

// Frames that are such a kind only without a tag.
uint32_t untagged_type(const Way &way) {
  return is_untagged(way) ? way.layers.type : 0;
}

bool is_lldp(const Way &way, uint32_t offset) {
  const bool address = offset == kOffsetNearest || offset == kOffsetPae || offset == kOffsetBridge;
  return address && untagged_type(way) == kTypeLldp;
}

uint32_t slow_subtype(const Way &way) {
  return way.layers.at < way.frame.length ? way.frame.bytes[way.layers.at] : 0;
}

Trap group_trap(const Way &way, uint32_t group, Asked asked, uint32_t reason, const char *name) {
  return {asked, way.unit.trap.rma_groups()[group], reason, false, name, kPerGroup};
}

Trap slow_trap(const Way &way) {
  const uint32_t subtype = slow_subtype(way);
  const bool bypass = way.unit.trap.bypass()[kBypassSlow] != 0;
  const Asked asked = bypass ? Asked::before_state : Asked::after_state;
  Trap trap;
  if (subtype == kSubtypeLacp || subtype == kSubtypeMarker)
    trap = group_trap(way, kGroupLacp, asked, VCHIP_TO_CPU_LACP, "LACP");
  else if (subtype == kSubtypeOam)
    trap = group_trap(way, kGroupOam, asked, VCHIP_TO_CPU_OAM, "OAM");
  else
    trap =
        group_trap(way, kGroupBridge, Asked::after_state, VCHIP_TO_CPU_RESERVED, "a slow protocol");
  trap.past_filter = true;
  return trap;
}

Trap bridge_trap(const Way &way, uint32_t offset) {
  if (offset == kOffsetSlow && untagged_type(way) == kTypeSlow) return slow_trap(way);
  if (offset == kOffsetPae && untagged_type(way) == kTypeEapol) {
    Trap trap = group_trap(way, kGroupBridge, Asked::before_state, VCHIP_TO_CPU_EAPOL, "EAPOL");
    trap.past_filter = true;
    return trap;
  }
  return group_trap(way, kGroupBridge, Asked::after_state, VCHIP_TO_CPU_RESERVED,
                    "a reserved address");
}

constexpr Trap kNoTrap = {Asked::never, FrameAction::forward, 0, false, "", nullptr};

std::string why(const Trap &trap) {
  return std::string(trap.name) + ", to be " + action_text(trap.action);
}

// What ends here is not learned.
Verdict act(Way &way, const Trap &trap) {
  switch (trap.action) {
    case FrameAction::drop:
      return way.drop("trap", Fate::trap, trap.setting, [&] { return why(trap); });
    case FrameAction::to_cpu:
      return way.to_cpu("trap", trap.reason, trap.setting, [&] { return why(trap); });
    case FrameAction::copy: way.copy_to_cpu(trap.reason); break;
    default: break;
  }
  if (way.told())
    way.tell("trap", trap.action == FrameAction::copy ? "copy" : "pass", why(trap), trap.setting);
  return Verdict::go_on;
}

bool is_igmp(const Way &way) {
  return way.layers.ip4 && way.layers.protocol == kProtocolIgmp;
}

// Query, report, done, and the report of version 2 (RFC 2710, RFC 3810).
bool is_mld(const Way &way) {
  if (!way.layers.ip6 || !way.layers.is(kProtocolIcmp6, 1)) return false;
  const uint32_t type = way.frame.bytes[way.layers.transport_at];
  return (type >= 130 && type <= 132) || type == 143;
}

bool is_own_address(const Way &way) {
  if (is_group(way.destination)) return false;
  const AddressTable &table = way.unit.l2.table();
  const int32_t index = table.find(way.vid, way.frame.bytes);
  return index != kNoIndex && table.entry(index).port == VCHIP_CPU_PORT &&
         table.entry(index).trunk == 0;
}

Trap type_trap(const Way &way, uint32_t type, uint32_t reason, const char *name) {
  return {Asked::after_state, way.unit.trap.actions()[type], reason, false, name, kPerType};
}

Trap protocol_trap(const Way &way) {
  if (is_igmp(way)) return type_trap(way, kTypeIgmp, VCHIP_TO_CPU_IGMP, "IGMP");
  if (is_mld(way)) return type_trap(way, kTypeMld, VCHIP_TO_CPU_MLD, "MLD");
  if (is_own_address(way))
    return type_trap(way, kTypeOwnAddress, VCHIP_TO_CPU_OWN_ADDRESS, "the processor's own address");
  return kNoTrap;
}

}  // namespace

Trap reserved_trap(const Way &way) {
  const uint64_t offset = way.destination - kReservedAddress;
  if (way.from_cpu || offset >= kOffsets) return kNoTrap;
  const auto &actions = way.unit.trap.port_actions(way.port);
  const auto place = static_cast<uint32_t>(offset);
  if (is_lldp(way, place))
    return {
        Asked::before_state, actions[kTypeLldpFrame], VCHIP_TO_CPU_LLDP, true, "LLDP", kPerPort};
  if (place == kOffsetBridge || place == kOffsetProvider)
    return {Asked::before_state, actions[kTypeBpdu], VCHIP_TO_CPU_BPDU, true, "a BPDU", kPerPort};
  if (place >= kOffsetSlow && place <= kLastBridgeOffset) return bridge_trap(way, place);
  if (place >= kFirstGarpOffset && place <= kLastGarpOffset)
    return group_trap(way, kGroupGarp, Asked::after_state, VCHIP_TO_CPU_RESERVED,
                      "a reserved address");
  return kNoTrap;
}

bool ends_at_trap(const Way &way) {
  const Trap trap = reserved_trap(way);
  return trap.past_filter &&
         (trap.action == FrameAction::drop || trap.action == FrameAction::to_cpu);
}

Verdict trap_step(Way &way) {
  if (way.destination - kReservedAddress >= kOffsets) return Verdict::go_on;
  const Trap trap = reserved_trap(way);
  return trap.asked == Asked::before_state ? act(way, trap) : Verdict::go_on;
}

Verdict trap_after_state(Way &way) {
  if (way.destination - kReservedAddress >= kOffsets) return Verdict::go_on;
  const Trap trap = reserved_trap(way);
  return trap.asked == Asked::after_state ? act(way, trap) : Verdict::go_on;
}

Verdict trap_protocols(Way &way) {
  if (way.from_cpu) return Verdict::go_on;
  const Trap trap = protocol_trap(way);
  return trap.asked == Asked::never ? Verdict::go_on : act(way, trap);
}

}  // namespace vchip
