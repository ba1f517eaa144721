// SPDX-License-Identifier: MIT
// The state of the port, and the source address.
#include "pipeline/steps.h"
#include "pipeline/trap.h"
#include "pipeline/words.h"
#include "unit/state.h"

namespace vchip {
namespace {

constexpr uint32_t kLearnAtOnce = 0;

bool learns(const Way &way) {
  return way.unit.learning.port(way.port).mode == kLearnAtOnce;
}

// Whether a source can be in the table at all.
bool is_learnable(const Way &way) {
  if (is_group(way.source)) return false;
  return way.source != 0 || way.unit.defaults.zero_source_learned();
}

bool is_filtered(const Way &way) {
  return way.source_index != kNoIndex &&
         (way.unit.l2.table().entry(way.source_index).flags & kFilterSourceFlag) != 0;
}

// What the entry of the source becomes. One that drops what it sends is seen
// nowhere.
void plan(Way &way) {
  way.source_vid = way.vid;
  way.source_index = way.unit.l2.table().find(way.vid, way.frame.bytes + kMacBytes);
  if (!is_learnable(way) || is_filtered(way)) return;
  const Learn learn = way.unit.l2.plan(way.source_index, source_of(way));
  if (learns(way) || learn == Learn::violation) way.effects.learn = learn;
}

const char *learn_text(Learn learn) {
  switch (learn) {
    case Learn::add: return "learned";
    case Learn::move: return "moved";
    case Learn::refresh: return "seen again";
    case Learn::violation: return "violation";
    case Learn::full: return "no room";
    case Learn::limit: return "limit";
    case Learn::nothing: break;
  }
  return "not learned";
}

void tell_learned(const Way &way) {
  if (!way.told()) return;
  std::string why =
      address_text(way.source) + " in " + vlan_text(way.vid) + " on " + port_text(way.port);
  if (is_group(way.source)) why += ": a group address is no source";
  const char *setting = learns(way) ? nullptr : "rtk_l2_newMacOp_set";
  if (way.source == 0 && !is_learnable(way)) setting = "rtk_l2_zeroSALearningEnable_set";
  if (way.effects.learn == Learn::limit) setting = "rtk_l2_portLimitLearningCnt_set";
  way.tell("learn", learn_text(way.effects.learn), why, setting);
}

// For an address that is in no entry and could be in one.
Verdict new_address(Way &way) {
  if (way.from_cpu || way.source_index != kNoIndex || !is_learnable(way)) return Verdict::go_on;
  constexpr const char *kSetting = "rtk_l2_newMacOp_set";
  const FrameAction action = way.unit.learning.port(way.port).action;
  const auto why = [&] {
    return address_text(way.source) + " is new, to be " + action_text(action);
  };
  switch (action) {
    case FrameAction::drop: return way.drop("learn", Fate::learn, kSetting, why);
    case FrameAction::to_cpu: return way.to_cpu("learn", VCHIP_TO_CPU_NEW_ADDRESS, kSetting, why);
    case FrameAction::copy:
      way.copy_to_cpu(VCHIP_TO_CPU_NEW_ADDRESS);
      if (way.told()) way.tell("learn", "copy", why(), kSetting);
      return Verdict::go_on;
    default: return Verdict::go_on;
  }
}

// Trapped frames come here without a VLAN too.
uint32_t instance_of(const Way &way) {
  const bool exists = way.vid < kVlanIds && way.unit.vlan.exists(way.vid);
  return exists ? way.unit.vlan.vlan(way.vid).stg : kCommonInstance;
}

}  // namespace

Verdict state_step(Way &way) {
  const uint32_t instance = instance_of(way);
  const uint32_t bit = port_bit(way.port);
  constexpr const char *kSetting = "rtk_stp_mstpState_set";
  const bool forwards = (way.tables.forwarding[instance] & bit) != 0;
  if (!forwards) {
    const bool learning = (way.tables.learning[instance] & bit) != 0;
    if (learning) plan(way);
    if (learning) tell_learned(way);
    return way.drop("state", Fate::state, kSetting, [&] {
      return port_text(way.port) + (learning ? " only learns" : " is blocked") + " in instance " +
             number_text(instance);
    });
  }
  if (way.told())
    way.tell("state", "pass",
             port_text(way.port) + " forwards in instance " + number_text(instance), kSetting);
  return trap_after_state(way);
}

Verdict learn_step(Way &way) {
  plan(way);
  if (trap_protocols(way) == Verdict::end) {
    tell_learned(way);
    return Verdict::end;
  }
  if (is_filtered(way))
    return way.drop("learn", Fate::learn, "rtk_l2_addr_add", [&] {
      return "the entry of " + address_text(way.source) + " drops what it sends";
    });
  tell_learned(way);
  return new_address(way);
}

}  // namespace vchip
