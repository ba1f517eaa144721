// SPDX-License-Identifier: MIT
// This program has walks, a dump and callbacks of its own. The library reaches
// them by their exported names, so it is these that are called.
#include "l2/table.h"

namespace {

struct Walk {
  uint32_t unit;
  user_l2_walk_callback_t callback;
  std::vector<uint8_t> data;
};
std::vector<Walk> walks;
size_t data_size;  // how much of the data to keep
std::vector<void *> mcast_walks;
std::vector<const chip_l2_ucast_entry *> printed;

}  // namespace

int32_t rtk_l2_traverse(uint32_t unit, user_l2_walk_callback_t callback, void *data) {
  const auto *bytes = static_cast<const uint8_t *>(data);
  walks.push_back({unit, callback, {bytes, bytes + data_size}});
  return 42;
}

int32_t rtk_l2_mcast_traverse(uint32_t unit, user_l2_mcast_walk_callback_t callback, void *) {
  EXPECT_EQ(unit, 0u);
  mcast_walks.push_back(reinterpret_cast<void *>(callback));
  return 43;
}

int32_t user_bcm_l2_addr_dumptest(const chip_l2_ucast_entry *entry) {
  printed.push_back(entry);
  return 7;
}

namespace {

using l2_test::mac;

class L2Interpose : public l2_test::L2Test {
 protected:
  void SetUp() override {
    L2Test::SetUp();
    walks.clear();
    mcast_walks.clear();
    printed.clear();
    data_size = 0;
  }
};

struct Case {
  user_l2_walk_callback_t callback;
  std::function<int32_t(uint32_t unit)> run;
  size_t size;  // of the data
};

template <typename T>
T data_as() {
  T value;
  memcpy(&value, walks.back().data.data(), sizeof value);
  return value;
}

#define MAC_PORT_VLAN(name, callback)                                                 \
  {                                                                                   \
    callback, [](uint32_t unit) { return name(9, unit, mac(1).data(), 3, 0x1000A); }, \
        sizeof(chip_l2_ucast_entry)                                                   \
  }

TEST_F(L2Interpose, DeletesWithARecordHandItOn) {
  const std::vector<Case> cases = {
      MAC_PORT_VLAN(user_l2_addr_delete_static_by_mac_port, del_static_mac_by_mac_port_callback),
      MAC_PORT_VLAN(user_l2_addr_delete_trunk_static_by_port_mac_vlan,
                    del_static_trunk_mac_by_mac_port_vid_callback),
      MAC_PORT_VLAN(user_l2_addr_delete_trunk_dynamic_by_port_mac_vlan,
                    del_dynamic_trunk_mac_by_mac_port_vid_callback),
      MAC_PORT_VLAN(user_l2_addr_delete_all_dynamic_by_port_mac_vlan,
                    del_all_trunk_mac_by_mac_port_vid_callback),
      MAC_PORT_VLAN(user_l2_addr_delete_dynaic_by_mac_port, del_dynaic_mac_by_mac_port_callback),
  };
  for (const Case &test : cases) {
    data_size = test.size;
    test.run(77);
    ASSERT_EQ(walks.back().unit, 77u);
    EXPECT_EQ(walks.back().callback, test.callback);
    const auto match = data_as<chip_l2_ucast_entry>();
    EXPECT_EQ(match.vid, 0x1000Au);
    EXPECT_EQ(match.port, 3);
    EXPECT_EQ(memcmp(match.mac, mac(1).data(), sizeof match.mac), 0);
  }
  EXPECT_EQ(walks.size(), cases.size());
}

TEST_F(L2Interpose, DeletesWithPartOfARecord) {
  data_size = sizeof(chip_l2_ucast_entry);
  user_l2_addr_delete_all_by_mac_port(9, 77, mac(1).data(), 3);
  EXPECT_EQ(walks.back().callback, &del_all_mac_by_mac_port_callback);
  EXPECT_EQ(data_as<chip_l2_ucast_entry>().port, 3);
  EXPECT_EQ(data_as<chip_l2_ucast_entry>().mac[5], 1);
  user_l2_addr_delete_static_by_vlan_port(9, 77, 10, 3);
  EXPECT_EQ(walks.back().callback, &del_static_mac_by_vlan_port_callback);
  EXPECT_EQ(data_as<chip_l2_ucast_entry>().vid, 10u);
  EXPECT_EQ(data_as<chip_l2_ucast_entry>().port, 3);
  user_l2_addr_delete_static_by_vlan_trunk(9, 77, 10, 5);
  EXPECT_EQ(walks.back().callback, &del_static_mac_by_vlan_trunk_callback);
  EXPECT_EQ(data_as<chip_l2_ucast_entry>().vid, 10u);
  EXPECT_EQ(data_as<chip_l2_ucast_entry>().trunk, 5);
  user_l2_addr_delete_static_by_mac(9, 77, mac(4).data());
  EXPECT_EQ(walks.back().callback, &del_static_mac_by_mac_callback);
  EXPECT_EQ(data_as<chip_l2_ucast_entry>().mac[5], 4);
  EXPECT_EQ(walks.size(), 4u);
  for (const Walk &walk : walks) EXPECT_EQ(walk.unit, 77u);
}

TEST_F(L2Interpose, DeletesWithASingleValue) {
  data_size = sizeof(int32_t);
  user_l2_addr_delete_static_by_port(9, 77, 1, -3);
  EXPECT_EQ(walks.back().callback, &del_static_mac_by_port_callback);
  EXPECT_EQ(data_as<int32_t>(), -3);
  user_l2_addr_delete_static_by_trunk(9, 77, -5);
  EXPECT_EQ(walks.back().callback, &del_static_mac_by_trunk_callback);
  EXPECT_EQ(data_as<int32_t>(), -5);
  user_l2_addr_del_all_addr_by_lrntype(9, 77, 0xFFFFFFF0);
  EXPECT_EQ(walks.back().callback, &del_all__mac_bytype_callback);
  EXPECT_EQ(data_as<uint32_t>(), 0xFFFFFFF0u);
  data_size = sizeof(uint16_t);
  user_l2_addr_delete_static_by_vlan(9, 77, 0x1000A);
  EXPECT_EQ(walks.back().callback, &del_static_mac_by_vlan_callback);
  EXPECT_EQ(data_as<uint16_t>(), 10);
  for (const Walk &walk : walks) EXPECT_EQ(walk.unit, 77u);
}

TEST_F(L2Interpose, PrintingWalk) {
  data_size = 1;
  EXPECT_EQ(user_mac_table_traverse(9, 0xABCD), 0);
  ASSERT_EQ(walks.size(), 1u);
  EXPECT_EQ(walks[0].unit, 0u);
  EXPECT_EQ(walks[0].callback, &test_fun_callback);
  EXPECT_EQ(walks[0].data[0], 0xCD);
  chip_l2_ucast_entry entry = {};
  EXPECT_EQ(test_fun_callback(0, &entry, nullptr), 0);
  EXPECT_EQ(printed, std::vector<const chip_l2_ucast_entry *>{&entry});
}

TEST_F(L2Interpose, DumpsReturnWhatTheWalkAnswers) {
  const std::string path = testing::TempDir() + "l2-interpose-" + std::to_string(getpid());
  EXPECT_EQ(user_mac_table_show(9, path.c_str()), 42);
  ASSERT_EQ(walks.size(), 1u);
  EXPECT_EQ(walks[0].unit, 0u);
  EXPECT_EQ(walks[0].callback, &test_fun3_callback);
  EXPECT_EQ(user_mac_mcast_table_show(9, path.c_str()), 43);
  EXPECT_EQ(mcast_walks, std::vector<void *>{reinterpret_cast<void *>(&test_fun4_callback)});
  unlink(path.c_str());
}

}  // namespace
