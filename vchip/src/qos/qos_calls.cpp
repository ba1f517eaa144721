// SPDX-License-Identifier: MIT
// The SDK's calls on priorities and queues.
#include <swctl/platform/qos_read.h>
#include <swctl/platform/sdk.h>

#include <algorithm>

#include "chip/chip.h"
#include "common/check.h"

using vchip::at_most;
using vchip::below;
using vchip::change;
using vchip::flag;
using vchip::look;
using vchip::not_null;
using vchip::on_port;
using vchip::Unit;

namespace {

constexpr int32_t on_priority(uint32_t priority) {
  return below(priority, vchip::kPriorities);
}

constexpr int32_t a_priority(uint32_t value) {
  return at_most(value, vchip::kPriorities - 1);
}

// The model has eight queues and no map for fewer.
constexpr int32_t all_queues(uint32_t queues) {
  return queues == vchip::kQueues ? 0 : VCHIP_E_VALUE;
}

constexpr int32_t each_at_most(const uint32_t *values, uint32_t count, uint32_t limit) {
  if (values == nullptr) return 0;
  for (uint32_t index = 0; index < count; ++index)
    if (values[index] > limit) return VCHIP_E_VALUE;
  return 0;
}

}  // namespace

int32_t rtk_qos_outer1pPriRemap_set(uint32_t unit, uint32_t priority, uint32_t dei,
                                    uint32_t internal) {
  return change(unit,
                {on_priority(priority), below(dei, vchip::kDropEligibility), a_priority(internal)},
                [=](Unit &chip) { chip.qos.maps().outer[dei][priority] = internal; });
}

int32_t rtk_qos_1pPriRemap_set(uint32_t unit, uint32_t priority, uint32_t internal) {
  return change(unit, {on_priority(priority), a_priority(internal)},
                [=](Unit &chip) { chip.qos.maps().inner[priority] = internal; });
}

int32_t rtk_qos_dscpPriRemap_get(uint32_t unit, uint32_t dscp, uint32_t *priority) {
  return look(unit, {not_null(priority), below(dscp, vchip::kCodePoints)}, [=](const Unit &chip) {
    *priority = chip.qos.maps().dscp[dscp];
    return 0;
  });
}

int32_t rtk_qos_dscpPriRemap_set(uint32_t unit, uint32_t dscp, uint32_t priority) {
  return change(unit, {below(dscp, vchip::kCodePoints), a_priority(priority)},
                [=](Unit &chip) { chip.qos.maps().dscp[dscp] = priority; });
}

int32_t rtk_qos_portOuterPri_get(uint32_t unit, int32_t port, uint32_t *priority) {
  return look(unit, {on_port(port), not_null(priority)}, [=](const Unit &chip) {
    *priority = chip.qos.port(port).outer_priority;
    return 0;
  });
}

int32_t rtk_qos_portOuterPri_set(uint32_t unit, int32_t port, uint32_t priority) {
  return change(unit, {on_port(port), a_priority(priority)},
                [=](Unit &chip) { chip.qos.port(port).outer_priority = priority; });
}

int32_t rtk_qos_portInnerPri_set(uint32_t unit, int32_t port, uint32_t priority) {
  return change(unit, {on_port(port), a_priority(priority)},
                [=](Unit &chip) { chip.qos.port(port).inner_priority = priority; });
}

int32_t rtk_qos_priMap_get(uint32_t unit, uint32_t queues, uint32_t *map) {
  return look(unit, {not_null(map), all_queues(queues)}, [=](const Unit &chip) {
    std::ranges::copy(chip.qos.maps().queue, map);
    return 0;
  });
}

int32_t rtk_qos_priMap_set(uint32_t unit, uint32_t queues, const uint32_t *map) {
  return change(
      unit,
      {not_null(map), all_queues(queues),
       each_at_most(map, vchip::kPriorities, vchip::kQueues - 1)},
      [=](Unit &chip) { std::copy_n(map, vchip::kPriorities, chip.qos.maps().queue.begin()); });
}

int32_t rtk_qos_priSelGroup_set(uint32_t unit, uint32_t group, const uint32_t *weights) {
  return change(unit,
                {not_null(weights), below(group, vchip::kPriorityGroups),
                 each_at_most(weights, vchip::kPrioritySources, vchip::kMaxSourceWeight)},
                [=](Unit &chip) {
                  std::copy_n(weights, vchip::kPrioritySources,
                              chip.qos.maps().groups[group].begin());
                });
}

int32_t rtk_qos_portPriSelGroup_set(uint32_t unit, int32_t port, uint32_t group) {
  return change(unit, {on_port(port), below(group, vchip::kPriorityGroups)},
                [=](Unit &chip) { chip.qos.port(port).group = group; });
}

int32_t rtk_qos_queueStrictEnable_get(uint32_t unit, int32_t port, uint32_t queue,
                                      uint32_t *enable) {
  return look(unit, {on_port(port), not_null(enable), below(queue, vchip::kQueues)},
              [=](const Unit &chip) {
                *enable = chip.qos.port(port).strict[queue];
                return 0;
              });
}

int32_t rtk_qos_queueStrictEnable_set(uint32_t unit, int32_t port, uint32_t queue,
                                      uint32_t enable) {
  return change(unit, {on_port(port), below(queue, vchip::kQueues), flag(enable)},
                [=](Unit &chip) { chip.qos.port(port).strict[queue] = enable; });
}

int32_t rtk_qos_schedulingAlgorithm_get(uint32_t unit, int32_t port, uint32_t *algorithm) {
  return look(unit, {on_port(port), not_null(algorithm)}, [=](const Unit &chip) {
    *algorithm = chip.qos.port(port).algorithm;
    return 0;
  });
}

int32_t rtk_qos_schedulingAlgorithm_set(uint32_t unit, int32_t port, uint32_t algorithm) {
  return change(unit, {on_port(port), at_most(algorithm, vchip::kMaxAlgorithm)},
                [=](Unit &chip) { chip.qos.port(port).algorithm = algorithm; });
}

int32_t rtk_qos_schedulingQueue_get(uint32_t unit, int32_t port, uint32_t *weights) {
  return look(unit, {on_port(port), not_null(weights)}, [=](const Unit &chip) {
    std::ranges::copy(chip.qos.port(port).weights, weights);
    return 0;
  });
}

int32_t rtk_qos_schedulingQueue_set(uint32_t unit, int32_t port, const uint32_t *weights) {
  return change(unit,
                {on_port(port), not_null(weights),
                 each_at_most(weights, vchip::kQueues, vchip::kMaxQueueWeight)},
                [=](Unit &chip) {
                  std::copy_n(weights, vchip::kQueues, chip.qos.port(port).weights.begin());
                });
}

int32_t rtk_qos_1pRemarkSrcSel_set(uint32_t unit, uint32_t source) {
  return change(unit, {at_most(source, vchip::kMaxRemarkSource)},
                [=](Unit &chip) { chip.qos.maps().remark_source = source; });
}

int32_t rtk_qos_1pRemarkEnable_set(uint32_t unit, int32_t port, uint32_t enable) {
  return change(unit, {on_port(port), flag(enable)},
                [=](Unit &chip) { chip.qos.port(port).remarks = enable; });
}

int32_t swctl_platform_qos_port_group_get(uint32_t unit, int32_t port, uint32_t *group) {
  return look(unit, {on_port(port), not_null(group)}, [=](const Unit &chip) {
    *group = chip.qos.port(port).group;
    return 0;
  });
}

int32_t swctl_platform_qos_group_get(uint32_t unit, uint32_t group, uint32_t *weights) {
  static_assert(SWCTL_PLATFORM_QOS_WEIGHTS == vchip::kPrioritySources);
  return look(unit, {not_null(weights), below(group, vchip::kPriorityGroups)},
              [=](const Unit &chip) {
                std::ranges::copy(chip.qos.maps().groups[group], weights);
                return 0;
              });
}

int32_t swctl_platform_qos_tag_get(uint32_t unit, uint32_t priority, uint32_t *internal) {
  return look(unit, {not_null(internal), on_priority(priority)}, [=](const Unit &chip) {
    *internal = chip.qos.maps().inner[priority];
    return 0;
  });
}
