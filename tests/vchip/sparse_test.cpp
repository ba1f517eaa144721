// SPDX-License-Identifier: MIT
// An image takes what it holds, on disk and in memory.
#include <swctl-vchip/image.h>
#include <swctl-vchip/vchip.h>
#include <swctl-vchip/view.h>
#include <swctl/platform/sdk.h>

#include <algorithm>
#include <fcntl.h>
#include <string>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

#include "child.h"

namespace {

using vchip_test::Outcome;
using vchip_test::run;

constexpr size_t kFresh = 256 * 1024;

// Bytes of a file that the system has in memory.
size_t resident(const std::string &path, size_t size) {
  const int descriptor = open(path.c_str(), O_RDONLY);
  void *memory = mmap(nullptr, size, PROT_READ, MAP_SHARED, descriptor, 0);
  const auto page = static_cast<size_t>(sysconf(_SC_PAGESIZE));
  std::vector<unsigned char> pages(size / page + 1);
  EXPECT_EQ(mincore(memory, size, pages.data()), 0);
  munmap(memory, size);
  close(descriptor);
  const auto present = [](unsigned char flags) { return (flags & 1) != 0; };
  return static_cast<size_t>(std::count_if(pages.begin(), pages.end(), present)) * page;
}

class Sparse : public vchip_test::ImageTest {
 protected:
  uint64_t on_disk() const { return vchip::image_status(image_).size_on_disk; }

  // Of the image, with what was read ahead although nobody asked for it.
  size_t in_memory() const {
    return resident(image_, static_cast<size_t>(vchip::image_status(image_).size));
  }
  // An emulator may not hand on that nothing is to be read ahead.
  bool reads_ahead() const {
    const std::string other = file("holes");
    const int descriptor = open(other.c_str(), O_RDWR | O_CREAT, 0600);
    EXPECT_EQ(ftruncate(descriptor, kFresh), 0);
    void *memory = mmap(nullptr, kFresh, PROT_READ, MAP_SHARED, descriptor, 0);
    madvise(memory, kFresh, MADV_RANDOM);
    EXPECT_EQ(*static_cast<volatile char *>(memory), 0);
    munmap(memory, kFresh);
    close(descriptor);
    return resident(other, kFresh) > static_cast<size_t>(sysconf(_SC_PAGESIZE));
  }
  void expect_small() const {
    EXPECT_LE(on_disk(), kFresh);
    if (!reads_ahead()) {
      EXPECT_LE(in_memory(), kFresh);
    }
  }
};

// A table of addresses, VLANs and rules.
int fill() {
  for (uint32_t number = 0; number < 4000; ++number) {
    chip_l2_ucast_entry entry = {};
    entry.vid = 1;
    entry.mac[0] = 2;
    entry.mac[4] = static_cast<uint8_t>(number >> 8);
    entry.mac[5] = static_cast<uint8_t>(number);
    if (rtk_l2_addr_add(number % 2, &entry) != 0) return 1;
    if (number >= 2) rtk_vlan_create(1, number);
  }
  const chip_acl_action action = {{1, 2, 3}};
  for (int32_t rule = 0; rule < 1536; ++rule)
    if (rtk_acl_ruleAction_set(0, 0, rule, &action) != 0) return 2;
  return 0;
}

TEST_F(Sparse, AFreshImageIsSmall) {
  make_image();
  expect_small();
}

TEST_F(Sparse, LookingMakesNothing) {
  make_image();
  const uint64_t before = on_disk();
  const Outcome outcome = run(image(), [] {
    if (vchip_open() != nullptr || vchip::dump_json(-1).empty()) return 1;
    for (int32_t port = 0; port < VCHIP_PORTS; ++port) vchip::port(0, port);
    uint32_t link = 0;
    return rtk_port_link_get(0, 3, &link);
  });
  EXPECT_EQ(outcome.status, 0) << outcome.output;
  EXPECT_EQ(on_disk(), before);
  expect_small();
}

TEST_F(Sparse, AResetGivesBackWhatWasTaken) {
  make_image();
  const Outcome fresh = run(image(), [] {
    puts(vchip::dump_json(1).c_str());
    return 0;
  });
  ASSERT_EQ(run(image(), fill).status, 0);
  EXPECT_GT(on_disk(), 2 * kFresh);
  ASSERT_EQ(run(image(), [] { return vchip_reset(); }).status, 0);
  expect_small();
  const Outcome reset = run(image(), [] {
    puts(vchip::dump_json(1).c_str());
    return 0;
  });
  EXPECT_EQ(reset.output, fresh.output);
}

// A board with ten VLANs, a hundred addresses and what a daemon asks of it.
int be_board(uint32_t number) {
  const uint32_t members = 0xffffff, untagged = 0;
  for (uint32_t vid = 10; vid < 20; ++vid)
    if (rtk_vlan_create(0, vid) != 0 || rtk_vlan_port_set(0, vid, &members, &untagged) != 0)
      return 1;
  for (uint32_t count = 0; count < 100; ++count) {
    chip_l2_ucast_entry entry = {};
    entry.vid = 10;
    entry.mac[0] = 2;
    entry.mac[3] = static_cast<uint8_t>(number);
    entry.mac[5] = static_cast<uint8_t>(count);
    if (rtk_l2_addr_add(0, &entry) != 0) return 2;
  }
  for (int32_t call = 0; call < 280; ++call) {
    uint32_t word = 0;
    const int32_t port = call % 28;
    if (rtk_vlan_portPvid_set(0, port, 10) != 0 || rtk_vlan_portPvid_get(0, port, &word) != 0)
      return 3;
  }
  return 0;
}

// Whether the chip holds what that board got, and no other's.
int is_board(uint32_t number) {
  size_t addresses = 0;
  chip_l2_ucast_entry entry = {};
  for (int32_t index = -1; rtk_l2_nextValidAddr_get(0, &index, 1, &entry) == 0; ++addresses)
    if (entry.mac[3] != number) return 4;
  return addresses == 100 ? 0 : 5;
}

TEST_F(Sparse, ManyBoardsAtOnce) {
  constexpr uint32_t kBoards = 60;
  constexpr uint64_t kBoardBytes = 512 * 1024;
  vchip_test::Gate gate;
  std::vector<pid_t> boards;
  const auto environment = [&](uint32_t number) {
    return vchip_test::Environment{{"VCHIP_IMAGE", file("board" + std::to_string(number))}};
  };
  for (uint32_t number = 0; number < kBoards; ++number)
    boards.push_back(vchip_test::start(environment(number), [&, number] {
      const int made = be_board(number);
      gate.wait();
      return made != 0 ? made : is_board(number);
    }));
  gate.open();
  for (const pid_t board : boards) EXPECT_EQ(vchip_test::wait_for(board), 0);
  EXPECT_EQ(files().size(), kBoards);
  for (uint32_t number = 0; number < kBoards; ++number) {
    const std::string path = file("board" + std::to_string(number));
    EXPECT_LE(vchip::image_status(path).size_on_disk, kBoardBytes);
    EXPECT_TRUE(vchip::image_faults(path).empty());
  }
}

// What is not given back, because the system cannot, is 0 all the same.
TEST_F(Sparse, AResetIsSeenByWhoHasTheImageOpen) {
  make_image();
  const Outcome outcome = run(image(), [this] {
    if (fill() != 0) return 1;
    if (run(image(), [] { return vchip_reset(); }).status != 0) return 2;
    chip_l2_ucast_entry entry = {};
    int32_t index = -1;
    if (rtk_l2_nextValidAddr_get(0, &index, 1, &entry) != VCHIP_E_L2_ENTRY) return 3;
    return rtk_vlan_destroy(1, 7) == VCHIP_E_VLAN && fill() == 0 ? 0 : 4;
  });
  EXPECT_EQ(outcome.status, 0);
}

}  // namespace
