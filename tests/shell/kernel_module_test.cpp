// SPDX-License-Identifier: MIT
// Reading the kernel's list of netlink sockets.
#include "chip/kernel_module.h"

#include <gtest/gtest.h>
#include <sstream>

namespace swsh {
namespace {

constexpr char kHead[] =
    "sk               Eth Pid        Groups   Rmem     Wmem     Dump  Locks    Drops    Inode\n";

ChannelState state_of(const std::string &sockets) {
  std::istringstream list(kHead + sockets);
  return channel_state(list);
}

TEST(KernelModule, IsTheSocketWithoutAPort) {
  EXPECT_TRUE(state_of("0000000000000000 30  0          00000000 0 0 0 2 0 100\n").module);
  EXPECT_FALSE(state_of("0000000000000000 0   0          00000000 0 0 0 2 0 100\n").module);
}

TEST(KernelModule, ItsAbsenceIsNoError) {
  EXPECT_FALSE(state_of("").module);
  EXPECT_EQ(state_of("").sockets, 0);
}

TEST(KernelModule, SocketsOfProgramsHavePorts) {
  const ChannelState state = state_of(
      "0000000000000000 30  0          00000000 0 0 0 2 0 100\n"
      "0000000000000000 30  504992795  00000000 0 0 0 2 0 101\n"
      "0000000000000000 30  4294967295 00000000 0 0 0 2 0 102\n"
      "0000000000000000 15  4711       00000000 0 0 0 2 0 103\n");
  EXPECT_TRUE(state.module);
  EXPECT_EQ(state.sockets, 2);
}

}  // namespace
}  // namespace swsh
