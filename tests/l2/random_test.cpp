// SPDX-License-Identifier: MIT
// Ten thousand random steps against a list that does everything the slow and
// plain way. The seed is printed; SWCTL_TEST_SEED sets it.
#include <cstdlib>
#include <iostream>
#include <list>
#include <random>

#include "l2/table.h"

namespace {

constexpr int kSteps = 10000;

struct Known {
  uint32_t vid;
  uint8_t number;
  int32_t port;
  int32_t trunk;
  uint32_t flags;
  uint32_t age;

  bool operator==(const Known &) const = default;
  auto key() const { return std::pair(vid, number); }
};

bool is_static(const Known &known) {
  return (known.flags & 0x0E) == 0x08;
}

unsigned seed() {
  const char *set = getenv("SWCTL_TEST_SEED");
  if (set != nullptr) return static_cast<unsigned>(strtoul(set, nullptr, 0));
  return std::random_device{}();
}

class L2Random : public l2_test::L2Test {
 protected:
  uint32_t pick(std::initializer_list<uint32_t> choices) {
    return *(choices.begin() + random_() % choices.size());
  }
  Known any() {
    return {.vid = pick({10, 20, 30}),
            .number = static_cast<uint8_t>(random_() % 16),
            .port = static_cast<int32_t>(pick({3, 4, 28})),
            .trunk = static_cast<int32_t>(pick({0, 3, 5})),
            .flags = pick({0, 0, 0, 0x08, 0x08, 0x02, 0x0A, 0x28}),
            .age = 0};
  }

  auto find(const Known &like) {
    return std::find_if(list_.begin(), list_.end(),
                        [&](const Known &known) { return known.key() == like.key(); });
  }
  void purge() {
    list_.remove_if([&](const Known &known) { return known.vid == 30 && !vlan_30_; });
  }
  template <typename Test>
  void remove_by_walk(Test test) {
    purge();
    list_.remove_if(test);
  }

  void add() {
    const Known known = any();
    user_l2_addr_t record = {};
    record.vid = static_cast<uint16_t>(known.vid);
    memcpy(record.mac, l2_test::mac(known.number).data(), sizeof record.mac);
    record.port = known.port;
    record.tgid = known.trunk;
    record.flags = known.flags;
    ASSERT_EQ(user_mac_addr_add(0, record), 0);
    list_.remove_if([&](const Known &other) { return other.key() == known.key(); });
    list_.push_back(known);
  }
  void learn() {
    const Known known = any();
    const vchip_station_t station = {known.vid, {2, 0, 0, 0, 0, known.number}, known.trunk};
    ASSERT_EQ(vchip_station_learn(0, known.port, &station), 0);
    const auto found = find(known);
    if (found == list_.end()) {
      list_.push_back({known.vid, known.number, known.port, known.trunk, 0, 0});
    } else if ((found->flags & 0x08) == 0) {
      *found = {known.vid, known.number, known.port, known.trunk, found->flags, 0};
    }
  }
  void remove_one() {
    const Known like = any();
    const bool known = find(like) != list_.end();
    const int32_t result = user_mac_addr_delete(0, l2_test::mac(like.number).data(), like.vid);
    ASSERT_EQ(result, known ? 0 : VCHIP_E_L2_ENTRY);
    list_.remove_if([&](const Known &other) { return other.key() == like.key(); });
  }
  void read_one() {
    const Known like = any();
    const auto found = find(like);
    user_l2_addr_t record = {};
    const int32_t result =
        user_mac_addr_get(0, l2_test::mac(like.number).data(), like.vid, &record);
    ASSERT_EQ(result, found != list_.end() ? 0 : VCHIP_E_L2_ENTRY);
    if (found == list_.end()) return;
    ASSERT_EQ(record.port, found->port);
    ASSERT_EQ(record.tgid, found->trunk);
  }
  void walk_delete() {
    const Known like = any();
    const l2_test::Mac address = l2_test::mac(like.number);
    switch (random_() % 5) {
      case 0:
        user_l2_addr_delete_static_by_mac_port(0, 0, address.data(), like.port, 0);
        return remove_by_walk([&](const Known &known) {
          return is_static(known) && known.number == like.number && known.port == like.port;
        });
      case 1:
        user_l2_addr_delete_dynaic_by_mac_port(0, 0, address.data(), like.port, like.vid);
        return remove_by_walk([&](const Known &known) {
          return (known.flags & 8) == 0 && known.key() == like.key() && known.port == like.port;
        });
      case 2:
        user_l2_addr_delete_static_by_vlan(0, 0, like.vid);
        return remove_by_walk([&](const Known &known) {
          return is_static(known) && known.vid == like.vid && known.port != VCHIP_CPU_PORT;
        });
      case 3:
        user_l2_addr_delete_static_by_vlan_trunk(0, 0, like.vid, like.trunk);
        return remove_by_walk([&](const Known &known) {
          return is_static(known) && known.vid == like.vid && known.trunk == like.trunk;
        });
      case 4:
        user_l2_addr_del_all_addr_by_lrntype(0, 0, USER_LEARN_TYPE_DYNAMIC);
        return remove_by_walk([](const Known &known) { return (known.flags & 8) == 0; });
    }
  }
  void flush() {
    const Known like = any();
    const uint32_t flags = pick({0, 1});
    ASSERT_EQ(user_l2_addr_delete_by_vlan_port(0, 0, like.vid, 0, like.port, flags), 0);
    list_.remove_if([&](const Known &known) {
      return known.vid == like.vid && known.port == like.port &&
             (flags != 0 || (known.flags & 8) == 0);
    });
  }
  void pass_time() {
    const uint32_t seconds = pick({1, 100, 299});
    ASSERT_EQ(vchip_time_pass(0, seconds), 0);
    for (Known &known : list_)
      if ((known.flags & 8) == 0) known.age += seconds;
    list_.remove_if([](const Known &known) { return known.age >= 300; });
  }
  void toggle_vlan() {
    vlan_30_ = !vlan_30_;
    ASSERT_EQ(vlan_30_ ? rtk_vlan_create(0, 30) : rtk_vlan_destroy(0, 30), 0);
  }
  void step() {
    switch (random_() % 16) {
      case 0:
      case 1:
      case 2:
      case 3:
      case 4: return add();
      case 5:
      case 6:
      case 7:
      case 8: return learn();
      case 9: return remove_one();
      case 10:
      case 11: return read_one();
      case 12: return walk_delete();
      case 13: return flush();
      case 14: return pass_time();
      case 15: return toggle_vlan();
    }
  }

  // What the chip holds, by its view.
  static std::list<Known> in_chip() {
    std::list<Known> all;
    for (const vchip::AddressView &view : vchip::addresses(0))
      all.push_back({view.vid, static_cast<uint8_t>(std::stoi(view.mac.substr(15), nullptr, 16)),
                     view.port, view.trunk, view.flags, view.age});
    return all;
  }

  std::mt19937 random_;
  std::list<Known> list_;
  bool vlan_30_ = false;
};

TEST_F(L2Random, TenThousandStepsAgainstANaiveList) {
  const unsigned number = seed();
  std::cout << "seed " << number << " (SWCTL_TEST_SEED)" << std::endl;
  random_.seed(number);
  const auto by_key = [](const Known &a, const Known &b) { return a.key() < b.key(); };
  size_t most = 0;
  for (int i = 0; i < kSteps; ++i) {
    step();
    if (i % 100 == 0) swprobe::forget();
    list_.sort(by_key);
    std::list<Known> chip = in_chip();
    chip.sort(by_key);
    ASSERT_EQ(chip, list_) << "step " << i << ", seed " << number;
    most = std::max(most, list_.size());
  }
  EXPECT_GT(most, 10u) << "the steps hardly filled the table";
}

}  // namespace
