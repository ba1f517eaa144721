// SPDX-License-Identifier: MIT
#ifndef SWCTL_TESTS_SUPPORT_FRONT_PORTS_H
#define SWCTL_TESTS_SUPPORT_FRONT_PORTS_H

#include <swctl-probe/probe.h>

#include <cstdint>
#include <string>
#include <vector>

namespace swctl_test {

// The chip ports of the interfaces 1 to 26 on the virtual chip's board.
inline std::vector<int32_t> front_ports() {
  std::vector<int32_t> ports;
  for (int32_t port = 0; port < 24; ++port) ports.push_back(port);
  ports.push_back(24);
  ports.push_back(26);
  return ports;
}

// What was asked of the adapter and of the SDK since the last look, apart.
struct Asked {
  std::vector<int64_t> interfaces;  // of adp_intf_2_phy_id, in order
  std::vector<std::string> sdk;     // lines of all other calls
};

inline Asked take_asked() {
  Asked asked;
  for (const swprobe::Call &call : swprobe::take()) {
    if (call.name == "adp_intf_2_phy_id") {
      asked.interfaces.push_back(call.in("interface"));
    } else {
      asked.sdk.push_back(call.line());
    }
  }
  return asked;
}

// 1 to 26.
inline std::vector<int64_t> front_interfaces() {
  std::vector<int64_t> interfaces;
  for (int64_t interface = 1; interface <= 26; ++interface) interfaces.push_back(interface);
  return interfaces;
}

}  // namespace swctl_test

#endif
