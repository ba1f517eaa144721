// SPDX-License-Identifier: MIT
// Spanning-tree groups: the chip's instances, their VLANs and port states.
#include <swctl/frame.h>
#include <swctl/platform/sdk.h>
#include <swctl/stp.h>

#include <cstdio>
#include <cstring>

namespace {

constexpr uint32_t kCommonInstance = 0;
constexpr uint32_t kInstances = 16;
constexpr uint32_t kVlanIdBits = 0xFFFF;
constexpr size_t kListBytes = USER_STG_LIST_WORDS * sizeof(uint16_t);
static_assert(kListBytes >= sizeof g_tmpBuffer);

// The chip's port states.
enum State : uint32_t { state_disabled, state_blocking, state_learning, state_forwarding };

// Two generic states are one state of the chip, learning.
constexpr State chip_state(uint32_t generic) {
  switch (generic) {
    case USER_STP_BLOCKING: return state_blocking;
    case USER_STP_LISTENING:
    case USER_STP_LEARNING: return state_learning;
    case USER_STP_FORWARDING: return state_forwarding;
    default: return state_disabled;
  }
}

uint32_t asked_for_last() {
  return stateflag != 0 ? stateflag : USER_STP_LISTENING;
}

}  // namespace

int32_t user_stg_create_id(uint32_t, uint32_t unit, uint32_t stg) {
  return rtk_stp_mstpInstance_create(unit, stg);
}

int32_t user_stg_destroy(uint32_t, uint32_t unit, uint32_t stg) {
  return rtk_stp_mstpInstance_destroy(unit, stg);
}

int32_t user_stg_vlan_add(uint32_t, uint32_t unit, uint32_t stg, uint32_t vid) {
  return rtk_vlan_stg_set(unit, vid & kVlanIdBits, stg);
}

int32_t user_stg_vlan_remove(uint32_t, uint32_t unit, uint32_t, uint32_t vid) {
  return rtk_vlan_stg_set(unit, vid & kVlanIdBits, kCommonInstance);
}

int32_t user_stg_stp_set(uint32_t, uint32_t unit, uint32_t stg, int32_t port, uint32_t state) {
  const State chip = chip_state(state);
  if (chip == state_learning) stateflag = state;
  return rtk_stp_mstpState_set(unit, stg, port, chip);
}

int32_t user_stg_stp_get(uint32_t, uint32_t unit, uint32_t stg, int32_t port, uint32_t *state) {
  uint32_t chip = state_disabled;
  const int32_t result = rtk_stp_mstpState_get(unit, stg, port, &chip);
  switch (chip) {
    case state_disabled: *state = USER_STP_DISABLED; break;
    case state_blocking: *state = USER_STP_BLOCKING; break;
    case state_learning: *state = asked_for_last(); break;
    case state_forwarding: *state = USER_STP_FORWARDING; break;
    default: break;
  }
  return result;
}

int32_t user_stp_isMstpInstanceExist_get(uint32_t, uint32_t unit, uint32_t stg, uint32_t *exists) {
  return rtk_stp_isMstpInstanceExist_get(unit, stg, exists);
}

int32_t user_stg_stg_count_get(uint32_t, uint32_t, uint32_t *count) {
  uint32_t found = 0;
  uint32_t exists = 0;
  // A call that writes nothing leaves the answer for the instance before.
  for (uint32_t instance = 0; instance < kInstances; ++instance) {
    rtk_stp_isMstpInstanceExist_get(0, instance, &exists);
    if (exists != 0) ++found;
  }
  if (found == 0) return -1;
  *count = found;
  return 0;
}

int32_t user_stg_vlan_each_time_list(uint32_t, uint32_t, uint32_t, uint16_t *list) {
  uint8_t *bytes = reinterpret_cast<uint8_t *>(list);
  memcpy(bytes, g_tmpBuffer, sizeof g_tmpBuffer);
  memset(bytes + sizeof g_tmpBuffer, 0, kListBytes - sizeof g_tmpBuffer);
  return 0;
}

// The line numbers are part of the lines: programs read them.
int32_t user_stg_vlan_list(uint32_t, ...) {
  fprintf(stderr, "%s %d: Can not get vlan list int STG in kenerl mode\n", "user_stg_vlan_list",
          649);
  return 0;
}

int32_t user_stg_list(uint32_t, ...) {
  fprintf(stderr, "%s %d: Can not get STG list in kenerl mode\n", "user_stg_list", 677);
  return 0;
}
