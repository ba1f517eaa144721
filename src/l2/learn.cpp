// SPDX-License-Identifier: MIT
#include <swctl/l2.h>
#include <swctl/platform/sdk.h>

int32_t user_mac_age_time_set(uint32_t, uint32_t time) {
  return rtk_l2_aging_set(0, time);
}

int32_t user_mac_age_time_get(uint32_t, uint32_t *time) {
  return rtk_l2_aging_get(0, time);
}

int32_t user_mac_learn_limit_set(uint32_t, user_l2_learn_limit_t limit) {
  if (limit.port < 0 || limit.port == USER_LEARN_UNLIMITED_PORT) return 0;
  rtk_l2_portLimitLearningCntEnable_set(0, limit.port, 1);
  return rtk_l2_portLimitLearningCnt_set(0, limit.port, limit.limit);
}

int32_t user_mac_learn_limit_get(uint32_t, user_l2_learn_limit_t *limit) {
  if (limit->port < 0) return -1;
  if (limit->port == USER_LEARN_UNLIMITED_PORT) {
    limit->limit = USER_LEARN_LIMIT_MAX;
    return 0;
  }
  int32_t value = 0;
  const int32_t result = rtk_l2_portLimitLearningCnt_get(0, limit->port, &value);
  limit->limit = value;
  return result;
}

int32_t user_mac_learn_count_get_by_port(int32_t port, uint32_t *count) {
  return rtk_l2_portLearningCnt_get(0, port, count);
}
