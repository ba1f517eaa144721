// SPDX-License-Identifier: MIT
// How the egress queues of a port are scheduled.
#include <swctl/platform/adapter.h>
#include <swctl/platform/sdk.h>
#include <swctl/qos.h>

namespace {

constexpr int32_t kCpuInterface = 0;
constexpr int32_t kFirstInterface = 1;
constexpr uint32_t kQueues = USER_QOS_QUEUES;

// The SDK's scheduling algorithms.
constexpr uint32_t kAlgorithm0 = 0;
constexpr uint32_t kAlgorithm1 = 1;

struct Schedule {
  uint32_t weights[kQueues];
  uint32_t strict[kQueues];
  uint32_t algorithm;
};

// False if there is no such mode. A queue of weight 0 is strict.
bool plan(uint32_t mode, const uint32_t *weights, Schedule &schedule) {
  if (mode < USER_QOS_SCHEDULE_STRICT || mode > USER_QOS_SCHEDULE_WEIGHTED_0) return false;
  for (uint32_t queue = 0; queue < kQueues; ++queue) {
    uint32_t weight = 0;
    if (mode == USER_QOS_SCHEDULE_EQUAL) weight = 1;
    if (mode > USER_QOS_SCHEDULE_EQUAL) weight = weights[queue];
    schedule.weights[queue] = weight;
    schedule.strict[queue] = weight == 0;
  }
  schedule.algorithm = mode == USER_QOS_SCHEDULE_WEIGHTED_0 ? kAlgorithm0 : kAlgorithm1;
  return true;
}

// The interface is translated for every call.
int32_t write(int32_t interface, const Schedule &schedule) {
  for (uint32_t queue = 0; queue < kQueues; ++queue) {
    const int32_t result = rtk_qos_queueStrictEnable_set(0, adp_intf_2_phy_id(interface), queue,
                                                         schedule.strict[queue]);
    if (result < 0) return result;
  }
  rtk_qos_schedulingAlgorithm_set(0, adp_intf_2_phy_id(interface), schedule.algorithm);
  return rtk_qos_schedulingQueue_set(0, adp_intf_2_phy_id(interface), schedule.weights);
}

bool all_strict(int32_t port) {
  for (uint32_t queue = 0; queue < kQueues; ++queue) {
    uint32_t strict = 0;
    rtk_qos_queueStrictEnable_get(0, port, queue, &strict);
    if (strict == 0) return false;
  }
  return true;
}

bool all_equal(const uint32_t *weights) {
  for (uint32_t queue = 0; queue < kQueues; ++queue)
    if (weights[queue] != 1) return false;
  return true;
}

uint32_t mode_of(uint32_t algorithm, const uint32_t *weights) {
  if (algorithm == kAlgorithm0) return USER_QOS_SCHEDULE_WEIGHTED_0;
  if (algorithm == kAlgorithm1 && !all_equal(weights)) return USER_QOS_SCHEDULE_WEIGHTED;
  return USER_QOS_SCHEDULE_EQUAL;
}

}  // namespace

int32_t user_qos_schedule_set(uint32_t mode, const uint32_t *weights) {
  Schedule schedule;
  if (!plan(mode, weights, schedule)) return -1;
  int32_t result = 0;
  for (int32_t interface = kFirstInterface; interface <= USER_FRONT_INTERFACES; ++interface) {
    result = write(interface, schedule);
    if (result < 0) return result;
  }
  return result;
}

int32_t user_qos_schedule_get(uint32_t *mode, uint32_t *weights) {
  const int32_t port = adp_intf_2_phy_id(kFirstInterface);
  if (all_strict(port)) {
    *mode = USER_QOS_SCHEDULE_STRICT;
    return 0;
  }
  uint32_t table[kQueues] = {};
  uint32_t algorithm = 0;
  rtk_qos_schedulingQueue_get(0, port, table);
  rtk_qos_schedulingAlgorithm_get(0, port, &algorithm);
  for (uint32_t queue = 0; queue < kQueues; ++queue) weights[queue] = table[queue];
  *mode = mode_of(algorithm, table);
  return 0;
}

int32_t user_qos_cpu_weight_init(void) {
  constexpr uint32_t kWeights[kQueues] = {1, 2, 3, 4, 5, 6, 7, 8};
  return rtk_qos_schedulingQueue_set(0, adp_intf_2_phy_id(kCpuInterface), kWeights);
}
