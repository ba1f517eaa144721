// SPDX-License-Identifier: MIT
// From the priority that a frame comes with to the queue that it waits in.
#include <swctl/platform/sdk.h>
#include <swctl/qos.h>

namespace {

constexpr uint32_t kQueues = USER_QOS_QUEUES;

}  // namespace

int32_t user_qos_pri_remap_set(uint32_t unit, uint32_t priority, uint32_t internal) {
  for (uint32_t drop_eligible = 0; drop_eligible <= 1; ++drop_eligible) {
    const int32_t result = rtk_qos_outer1pPriRemap_set(unit, priority, drop_eligible, internal);
    if (result < 0) return result;
  }
  return rtk_qos_1pPriRemap_set(unit, priority, internal);
}

int32_t user_qos_pri_queue_map_get(uint32_t priority, uint32_t *queue) {
  if (priority >= USER_QOS_PRIORITIES) return -1;
  uint32_t map[USER_QOS_PRIORITIES] = {};
  const int32_t result = rtk_qos_priMap_get(0, kQueues, map);
  *queue = map[priority];
  return result;
}

int32_t user_qos_pri_queue_map_set(const uint8_t *queues) {
  uint32_t map[USER_QOS_PRIORITIES];
  for (uint32_t priority = 0; priority < USER_QOS_PRIORITIES; ++priority)
    map[priority] = queues[priority];
  return rtk_qos_priMap_set(0, kQueues, map);
}

int32_t user_qos_dscp_map_get(uint32_t dscp, uint32_t *priority) {
  uint32_t value = 0;
  const int32_t result = rtk_qos_dscpPriRemap_get(0, dscp, &value);
  *priority = value;
  return result;
}

int32_t user_qos_dscp_map_set(uint32_t dscp, uint32_t priority) {
  return rtk_qos_dscpPriRemap_set(0, dscp, priority);
}

int32_t user_qos_port_cos_get(int32_t port, uint32_t *priority) {
  return rtk_qos_portOuterPri_get(0, port, priority);
}

int32_t user_qos_port_cos_set(int32_t port, uint32_t priority) {
  const int32_t result = rtk_qos_portOuterPri_set(0, port, priority);
  if (result < 0) return result;
  return rtk_qos_portInnerPri_set(0, port, priority);
}
