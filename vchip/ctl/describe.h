// SPDX-License-Identifier: MIT
#ifndef VCHIPCTL_DESCRIBE_H
#define VCHIPCTL_DESCRIBE_H

#include <cstdint>
#include <string>
#include <vector>

namespace vchipctl {

// A frame in one line: addresses, length, tags, and what it carries, such as
// "02:00:00:00:00:01 > ff:ff:ff:ff:ff:ff, length 60, vlan 100 p 3, ARP who-has
// 10.0.0.2 tell 10.0.0.1". What is cut off or unknown is left out.
std::string describe(const std::vector<uint8_t> &frame);

}  // namespace vchipctl

#endif
