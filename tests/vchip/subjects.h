// SPDX-License-Identifier: MIT
// Every SDK call with arguments that the chip takes, so that one test can spoil
// them one by one. Each family of calls has a file with a list of its own.
#ifndef SWCTL_TESTS_VCHIP_SUBJECTS_H
#define SWCTL_TESTS_VCHIP_SUBJECTS_H

#include <cstdint>
#include <functional>
#include <vector>

#include "private_chip.h"

namespace vchip_test {

// Outputs that a call may write; `null` is the one to leave out, if any.
struct Outputs {
  uint32_t words[3] = {kUntouched, kUntouched, kUntouched};
  int null = -1;
  uint32_t *at(int index) { return index == null ? nullptr : &words[index]; }
  bool untouched() const {
    for (const uint32_t word : words)
      if (word != kUntouched) return false;
    return true;
  }
};

using Invoke = std::function<int32_t(uint32_t, int32_t, Outputs &)>;

struct Subject {
  const char *name;
  bool has_port;
  int32_t on_cpu_port;  // what the call answers there
  int pointers;
  Invoke invoke;  // with values that the chip takes
};

using Subjects = std::vector<Subject>;

const Subjects &acl_subjects();
const Subjects &frame_subjects();
const Subjects &l2_subjects();
const Subjects &mcast_ip_subjects();
const Subjects &mirror_trunk_subjects();
const Subjects &port_subjects();
const Subjects &port_more_subjects();
const Subjects &port_rate_subjects();
const Subjects &port_tag_subjects();
const Subjects &qos_subjects();
const Subjects &stp_subjects();
const Subjects &vlan_subjects();

}  // namespace vchip_test

#endif
