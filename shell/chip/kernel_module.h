// SPDX-License-Identifier: MIT
// The kernel's switch module, at the far end of the message channel.
#ifndef SWCTL_SHELL_CHIP_KERNEL_MODULE_H
#define SWCTL_SHELL_CHIP_KERNEL_MODULE_H

#include <cstdint>
#include <istream>
#include <vector>

namespace swsh {

// Sends a data request and returns the word that the module answers. Throws a
// CommandError if there is none within `seconds`.
uint32_t ask_kernel(uint16_t id, const std::vector<uint8_t> &data, int32_t seconds);

struct ChannelState {
  bool module = false;  // the kernel has its own end of the channel
  int64_t sockets = 0;  // of programs, in the whole system
};

// What the kernel's list of netlink sockets says.
ChannelState channel_state(std::istream &list);

}  // namespace swsh

#endif
