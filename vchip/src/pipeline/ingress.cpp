// SPDX-License-Identifier: MIT
// The port and what its MAC does: before the chip looks into the frame.
#include "pipeline/steps.h"
#include "pipeline/words.h"
#include "unit/state.h"

namespace vchip {
namespace {

constexpr uint64_t kMacControlAddress = 0x0180c2000001;
constexpr uint32_t kPauseOpcode = 1;
constexpr uint32_t kMaxTagsUncounted = 2;

bool is_tag_type(const TagBlock &tags, uint32_t type) {
  for (uint32_t entry = 0; entry < kTpids; ++entry)
    if (tags.inner()[entry] == type || tags.outer()[entry] == type) return true;
  return false;
}

// Bytes of tags at the front that the length does not count.
uint32_t uncounted_tags(const Way &way) {
  if (way.unit.switch_wide.tag_counts()) return 0;
  uint32_t tags = 0;
  while (tags < kMaxTagsUncounted &&
         is_tag_type(way.unit.tag, way.frame.type_at(kAddressBytes + tags * kTagBytes)))
    ++tags;
  return tags * kTagBytes;
}

bool is_mac_control(const Way &way) {
  return way.destination == kMacControlAddress ||
         way.frame.type_at(kAddressBytes) == kTypeMacControl;
}

// IEEE 802.3 annex 31B. To another address the frame is taken and holds nothing.
void obey_pause(Way &way) {
  const uint8_t *control = way.frame.bytes + kAddressBytes;
  const bool pause = way.destination == kMacControlAddress && half_at(control) == kTypeMacControl &&
                     half_at(control + 2) == kPauseOpcode;
  if (!pause || (way.tables.obeys_pause & port_bit(way.port)) == 0) return;
  const uint64_t quanta = half_at(control + 4);
  way.effects.pause = true;
  way.effects.pause_until = way.now + quanta * way.tables.quantum[static_cast<size_t>(way.port)];
}

}  // namespace

Verdict port_step(Way &way) {
  const uint32_t bit = port_bit(way.port);
  if ((way.tables.enabled & bit) == 0)
    return way.drop("port", Fate::port, "rtk_port_adminEnable_set",
                    [&] { return port_text(way.port) + " is disabled"; });
  if ((way.tables.linked & bit) == 0)
    return way.drop("port", Fate::port, nullptr,
                    [&] { return port_text(way.port) + " has no link"; });
  if ((way.tables.looped & bit) != 0 && !way.turned)
    return way.drop("port", Fate::port, "rtk_diag_portMacLocalLoopbackEnable_set",
                    [&] { return port_text(way.port) + " is in loopback and hears no cable"; });
  return way.pass("port", nullptr, [&] {
    return (way.turned ? "turned around at " : "arrived at ") + port_text(way.port);
  });
}

Verdict length_step(Way &way) {
  const uint32_t speed_class = (way.tables.gigabit & port_bit(way.port)) != 0 ? 1 : 0;
  const uint32_t limit = way.unit.switch_wide.max_length()[speed_class];
  if (way.frame.wire() <= limit) return Verdict::go_on;
  const uint32_t counted = way.frame.wire() - uncounted_tags(way);
  if (counted <= limit) return Verdict::go_on;
  way.effects.oversize = true;
  return way.drop("length", Fate::length, "rtk_switch_maxPktLenLinkSpeed_set", [&] {
    return number_text(counted) + " bytes, more than the " + number_text(limit) + " of " +
           port_text(way.port);
  });
}

Verdict received_step(Way &way) {
  way.effects.received = true;
  return Verdict::go_on;
}

Verdict mirror_in_step(Way &way) {
  const uint32_t bit = port_bit(way.port);
  if ((way.tables.mirrored_in & bit) == 0) return Verdict::go_on;
  for (uint32_t group = 0; group < kMirrorGroups; ++group) {
    const chip_mirror_entry &entry = way.unit.mirror.group(group);
    if (entry.enable == 0 || (entry.ingress & bit) == 0) continue;
    way.mirror_groups |= 1u << group;
    if (way.told())
      way.tell("mirror-in", "copy",
               "group " + number_text(group) + " mirrors what " + port_text(way.port) +
                   " receives to " + port_text(static_cast<int32_t>(entry.mirroring_port)),
               "rtk_mirror_group_set");
  }
  return Verdict::go_on;
}

Verdict mac_control_step(Way &way) {
  if (!is_mac_control(way)) return Verdict::go_on;
  obey_pause(way);
  return way.end("mac-control", "taken", Fate::taken, nullptr, [&] {
    if (!way.effects.pause) return std::string("MAC control, which no bridge forwards");
    return "a pause frame: " + port_text(way.port) + " sends nothing until " +
           number_text(way.effects.pause_until) + " ns";
  });
}

Verdict ingress_rate_step(Way &way) {
  const RateBlock &rate = way.unit.rate;
  if (rate.ingress(way.port).limited == 0) return Verdict::go_on;
  const Fill fill = rate.ingress_fill(way.port);
  const uint64_t tokens = way.frame.wire() * kTokensPerByte;
  const uint64_t held = rate.ingress(way.port).bucket.level_at(fill, way.now);
  const auto why = [&] {
    return "a frame of " + number_text(way.frame.wire()) + " bytes, " +
           number_text(held / kTokensPerByte) + " in the bucket of the ingress limit";
  };
  if (held < tokens)
    return way.drop("ingress-rate", Fate::ingress_rate, "rtk_rate_igrBandwidthCtrlRate_set", why);
  way.effects.charge_ingress = true;
  return way.pass("ingress-rate", "rtk_rate_igrBandwidthCtrlRate_set", why);
}

}  // namespace vchip
