// SPDX-License-Identifier: MIT
#include <swctl/platform/sdk.h>
#include <swctl/port.h>

namespace {

// What the SDK does about a new source address.
enum LearningMode : uint32_t { learn_at_once, learn_by_software, learn_nothing };
enum NewAddressAction : uint32_t { forward, drop, trap_to_cpu, copy_to_cpu };

struct NewAddress {
  uint32_t mode;
  uint32_t action;
};

// What the port of the last change had before it. One for all ports.
NewAddress saved;

constexpr uint32_t saved_mode(uint32_t mode) {
  return uint32_t{1} << mode;
}

struct GenericMode {
  uint32_t mode;
  NewAddress written;
  // Nothing is written over one of these, a bit per LearningMode.
  uint32_t kept;
};
constexpr GenericMode kGenericModes[] = {
    {USER_LEARN_DISCARD, {learn_nothing, drop}, 0},
    {USER_LEARN_FORWARD, {learn_nothing, forward}, 0},
    {USER_LEARN_TO_CPU, {learn_by_software, trap_to_cpu}, saved_mode(learn_nothing)},
    {USER_LEARN_COPY_CPU,
     {learn_at_once, copy_to_cpu},
     saved_mode(learn_by_software) | saved_mode(learn_nothing)},
};
constexpr GenericMode kAnyOtherMode = {USER_LEARN_ON, {learn_at_once, forward}, 0};

const GenericMode &generic_mode(uint32_t mode) {
  for (const GenericMode &each : kGenericModes) {
    if (each.mode == mode) return each;
  }
  return kAnyOtherMode;
}

bool keeps(const GenericMode &generic, uint32_t mode) {
  return mode <= learn_nothing && (generic.kept & saved_mode(mode)) != 0;
}

// Unit 0 for every caller: programs have come to depend on it.
int32_t write(int32_t port, const NewAddress &pair) {
  return rtk_l2_newMacOp_set(0, port, pair.mode, pair.action);
}

}  // namespace

int32_t user_port_learn_set(uint32_t, uint32_t unit, int32_t port, uint32_t mode) {
  if (mode == USER_LEARN_RESTORE) return write(port, saved);
  rtk_l2_newMacOp_get(unit, port, &saved.mode, &saved.action);
  const GenericMode &generic = generic_mode(mode);
  return keeps(generic, saved.mode) ? 0 : write(port, generic.written);
}

int32_t user_port_learn_get(uint32_t, uint32_t unit, int32_t port, uint32_t *mode) {
  NewAddress pair = {};
  const int32_t result = rtk_l2_newMacOp_get(unit, port, &pair.mode, &pair.action);
  switch (pair.mode) {
    case learn_nothing: *mode = USER_LEARN_DISCARD; break;
    case learn_by_software: *mode = USER_LEARN_TO_CPU; break;
    default: *mode = USER_LEARN_ON; break;
  }
  return result;
}
