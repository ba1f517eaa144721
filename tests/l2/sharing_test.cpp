// SPDX-License-Identifier: MIT
// Several processes walk and change one table at the same time.
#include <swctl-vchip/vchip.h>
#include <swctl-vchip/view.h>
#include <swctl/l2.h>
#include <swctl/platform/sdk.h>

#include <cstring>
#include <set>

#include "vchip/child.h"

namespace {

using vchip_test::Environment;
using vchip_test::start;
using vchip_test::wait_for;

constexpr uint32_t kVlan = 10;
constexpr uint32_t kKept = 400;  // entries that nobody deletes
constexpr uint32_t kRounds = 30;
constexpr uint32_t kPerRound = 20;  // entries that come and go

user_l2_addr_t address(uint32_t number, int32_t port) {
  user_l2_addr_t record = {};
  record.vid = kVlan;
  record.port = port;
  record.flags = USER_L2_FLAG_STATIC;
  const uint8_t mac[SWCTL_MAC_BYTES] = {2,
                                        0,
                                        0,
                                        static_cast<uint8_t>(number >> 16),
                                        static_cast<uint8_t>(number >> 8),
                                        static_cast<uint8_t>(number)};
  memcpy(record.mac, mac, sizeof record.mac);
  return record;
}

int32_t count_port_1(uint32_t, chip_l2_ucast_entry *entry, void *data) {
  *static_cast<uint32_t *>(data) += entry->port == 1;
  return 0;
}

// Adds entries of its own and deletes them again by a walk over the port.
int come_and_go(int32_t port) {
  for (uint32_t round = 0; round < kRounds; ++round) {
    for (uint32_t i = 0; i < kPerRound; ++i)
      if (user_mac_addr_add(0, address(1000 * static_cast<uint32_t>(port) + i, port)) != 0)
        return 1;
    if (user_l2_addr_delete_static_by_port(0, 0, 0, port) != 0) return 2;
  }
  return 0;
}

class L2Sharing : public vchip_test::ImageTest {
 protected:
  void SetUp() override {
    ImageTest::SetUp();
    make_image();
    ASSERT_EQ(in_child([] { return rtk_vlan_create(0, kVlan); }), 0);
  }
  Environment silent() const {
    Environment environment = image();
    environment["VCHIP_LOG"] = "none";
    return environment;
  }
  int in_child(const vchip_test::Work &work) const { return wait_for(start(silent(), work)); }
};

TEST_F(L2Sharing, NoEntryIsLost) {
  std::vector<pid_t> children;
  // Entries that stay.
  children.push_back(start(silent(), [] {
    for (uint32_t number = 0; number < kKept; ++number)
      if (user_mac_addr_add(0, address(number, 1)) != 0) return 1;
    return 0;
  }));
  for (const int32_t port : {2, 3})
    children.push_back(start(silent(), [=] { return come_and_go(port); }));
  // A walk never sees fewer of those that stay than before.
  children.push_back(start(silent(), [] {
    uint32_t before = 0;
    for (uint32_t round = 0; round < kRounds; ++round) {
      uint32_t seen = 0;
      rtk_l2_traverse(0, count_port_1, &seen);
      if (seen < before) return 1;
      before = seen;
    }
    return 0;
  }));
  for (const pid_t child : children) EXPECT_EQ(wait_for(child), 0);
  EXPECT_EQ(in_child([] {
              std::set<std::string> held;
              for (const vchip::AddressView &view : vchip::addresses(0)) {
                if (view.port != 1) return 1;
                held.insert(view.mac);
              }
              return held.size() == kKept ? 0 : 2;
            }),
            0);
}

TEST_F(L2Sharing, TheCountsAreThoseOfTheTable) {
  std::vector<pid_t> children;
  for (const int32_t port : {1, 2, 3, 4})
    children.push_back(start(silent(), [=] {
      for (uint32_t i = 0; i < 200; ++i) {
        const vchip_station_t station = {kVlan, {2, 0, 0, 0, 0, static_cast<uint8_t>(i % 50)}, 0};
        if (vchip_station_learn(0, port, &station) != 0) return 1;
      }
      return 0;
    }));
  for (const pid_t child : children) EXPECT_EQ(wait_for(child), 0);
  EXPECT_EQ(in_child([] {
              uint32_t learned = 0;
              for (const int32_t port : {1, 2, 3, 4}) learned += vchip::learning(0, port).learned;
              return learned == 50 && vchip::addresses(0).size() == 50 ? 0 : 1;
            }),
            0);
}

}  // namespace
