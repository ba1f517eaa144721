// SPDX-License-Identifier: MIT
// The deletes that walk the table. What each removes is in one table here;
// every row is tried on entries that miss it by one field.
#include "l2/table.h"

namespace {

using l2_test::Entry;
using l2_test::mac;

// What an entry point is given. Every value differs from every other, so that
// a mix-up shows.
struct Match {
  uint8_t number = 1;  // of mac()
  int32_t port = 3;
  int32_t trunk = 5;
  uint32_t vid = 10;
};

enum class VlanTest { none, equal, equal_or_0, low_half };
enum class Kind { static_only, dynamic_only, all };
enum class Log { yes, no, when_static };

struct Row {
  const char *name;
  const char *callback;
  int32_t (*function)(uint32_t unit, const Match &match);
  VlanTest vlan;
  bool port;
  bool trunk;
  bool mac;
  Kind kind;
  bool interface;
  Log log;
};

template <auto Function>
int32_t by_mac_port_vlan(uint32_t unit, const Match &match) {
  return Function(7, unit, mac(match.number).data(), match.port, match.vid);
}

const Row kRows[] = {
    {"user_l2_addr_delete_static_by_mac_port", "del_static_mac_by_mac_port_callback",
     by_mac_port_vlan<user_l2_addr_delete_static_by_mac_port>, VlanTest::equal_or_0, true, false,
     true, Kind::static_only, false, Log::yes},
    {"user_l2_addr_delete_trunk_static_by_port_mac_vlan",
     "del_static_trunk_mac_by_mac_port_vid_callback",
     by_mac_port_vlan<user_l2_addr_delete_trunk_static_by_port_mac_vlan>, VlanTest::equal_or_0,
     true, false, true, Kind::static_only, false, Log::yes},
    {"user_l2_addr_delete_trunk_dynamic_by_port_mac_vlan",
     "del_dynamic_trunk_mac_by_mac_port_vid_callback",
     by_mac_port_vlan<user_l2_addr_delete_trunk_dynamic_by_port_mac_vlan>, VlanTest::equal_or_0,
     true, false, true, Kind::dynamic_only, false, Log::no},
    {"user_l2_addr_delete_all_dynamic_by_port_mac_vlan",
     "del_all_trunk_mac_by_mac_port_vid_callback",
     by_mac_port_vlan<user_l2_addr_delete_all_dynamic_by_port_mac_vlan>, VlanTest::equal_or_0, true,
     false, true, Kind::all, false, Log::when_static},
    {"user_l2_addr_delete_dynaic_by_mac_port", "del_dynaic_mac_by_mac_port_callback",
     by_mac_port_vlan<user_l2_addr_delete_dynaic_by_mac_port>, VlanTest::equal_or_0, true, false,
     true, Kind::dynamic_only, false, Log::no},
    {"user_l2_addr_delete_all_by_mac_port", "del_all_mac_by_mac_port_callback",
     [](uint32_t unit, const Match &match) {
       return user_l2_addr_delete_all_by_mac_port(7, unit, mac(match.number).data(), match.port);
     },
     VlanTest::none, true, false, true, Kind::all, false, Log::when_static},
    {"user_l2_addr_delete_static_by_port", "del_static_mac_by_port_callback",
     [](uint32_t unit, const Match &match) {
       return user_l2_addr_delete_static_by_port(7, unit, 0xAAAA, match.port);
     },
     VlanTest::none, true, false, false, Kind::static_only, false, Log::yes},
    {"user_l2_addr_delete_static_by_trunk", "del_static_mac_by_trunk_callback",
     [](uint32_t unit, const Match &match) {
       return user_l2_addr_delete_static_by_trunk(7, unit, match.trunk);
     },
     VlanTest::none, false, true, false, Kind::static_only, true, Log::yes},
    {"user_l2_addr_delete_static_by_vlan", "del_static_mac_by_vlan_callback",
     [](uint32_t unit, const Match &match) {
       return user_l2_addr_delete_static_by_vlan(7, unit, match.vid);
     },
     VlanTest::low_half, false, false, false, Kind::static_only, true, Log::yes},
    {"user_l2_addr_delete_static_by_vlan_port", "del_static_mac_by_vlan_port_callback",
     [](uint32_t unit, const Match &match) {
       return user_l2_addr_delete_static_by_vlan_port(7, unit, match.vid, match.port);
     },
     VlanTest::equal, true, false, false, Kind::static_only, false, Log::yes},
    {"user_l2_addr_delete_static_by_vlan_trunk", "del_static_mac_by_vlan_trunk_callback",
     [](uint32_t unit, const Match &match) {
       return user_l2_addr_delete_static_by_vlan_trunk(7, unit, match.vid, match.trunk);
     },
     VlanTest::equal, false, true, false, Kind::static_only, false, Log::yes},
    {"user_l2_addr_delete_static_by_mac", "del_static_mac_by_mac_callback",
     [](uint32_t unit, const Match &match) {
       return user_l2_addr_delete_static_by_mac(7, unit, mac(match.number).data());
     },
     VlanTest::none, false, false, true, Kind::static_only, false, Log::yes},
    {"learn type 0", "del_all__mac_bytype_callback",
     [](uint32_t unit, const Match &) {
       return user_l2_addr_del_all_addr_by_lrntype(7, unit, USER_LEARN_TYPE_DYNAMIC);
     },
     VlanTest::none, false, false, false, Kind::dynamic_only, false, Log::no},
    {"learn type 1", "del_all__mac_bytype_callback",
     [](uint32_t unit, const Match &) {
       return user_l2_addr_del_all_addr_by_lrntype(7, unit, USER_LEARN_TYPE_STATIC);
     },
     VlanTest::none, false, false, false, Kind::static_only, true, Log::yes},
    {"learn type 2", "del_all__mac_bytype_callback",
     [](uint32_t unit, const Match &) {
       return user_l2_addr_del_all_addr_by_lrntype(7, unit, USER_LEARN_TYPE_ALL);
     },
     VlanTest::none, false, false, false, Kind::all, true, Log::no},
    {"learn type 0x80000001", "del_all__mac_bytype_callback",
     [](uint32_t unit, const Match &) {
       return user_l2_addr_del_all_addr_by_lrntype(7, unit, 0x80000001);
     },
     VlanTest::none, false, false, false, Kind::all, true, Log::no},
};

bool is_static(const Entry &entry) {
  return (entry.flags & 0x0E) == 0x08;
}

// The interface of a port on the board, but for port 9, which the tests put on
// interface 28.
constexpr int32_t kPortOn28 = 9;
constexpr int32_t kCpuPort = 28;        // interface 0
constexpr int32_t kPortOnNothing = 25;  // interface -1

bool vlan_fits(VlanTest test, uint32_t vid, uint32_t match) {
  switch (test) {
    case VlanTest::none: return true;
    case VlanTest::equal: return vid == match;
    case VlanTest::equal_or_0: return match == 0 || vid == match;
    case VlanTest::low_half: return vid == (match & 0xFFFF);
  }
  return false;
}

bool fits(const Row &row, const Entry &entry, const Match &match) {
  if (!vlan_fits(row.vlan, entry.vid, match.vid)) return false;
  if (row.port && entry.port != match.port) return false;
  if (row.trunk && entry.trunk != match.trunk) return false;
  if (row.mac && entry.number != match.number) return false;
  if (row.kind == Kind::static_only) return is_static(entry);
  return row.kind == Kind::all || (entry.flags & 0x08) == 0;
}

// The calls after the scan and the VLAN lookup that an entry causes.
std::vector<std::string> expected_calls(const Row &row, const Entry &entry, const Match &match) {
  std::vector<std::string> calls;
  if (!fits(row, entry, match)) return calls;
  if (row.interface) calls.push_back("adp_phy_2_intf_id");
  if (row.interface && (entry.port == kCpuPort || entry.port == kPortOn28)) return calls;
  calls.push_back("rtk_l2_addr_del");
  const bool logs = row.log == Log::yes || (row.log == Log::when_static && is_static(entry));
  if (logs) calls.insert(calls.end(), {"sys_trace_get", "sys_trace_add_log", "Log_logging_func"});
  return calls;
}

bool is_walking(const std::string &name) {
  return name == "rtk_l2_nextValidAddr_get" || name == "rtk_vlan_port_get";
}

class L2Delete : public l2_test::L2Test {
 protected:
  void SetUp() override {
    L2Test::SetUp();
    // Every VLAN exists, 0 too.
    swctl_test::chip_answers("rtk_vlan_port_get", 0);
    swprobe::plan("adp_phy_2_intf_id port 9 result 28");
    ASSERT_EQ(vchip_trace_set(1), 0);
  }

  // Entries in scan order.
  static void put_sorted(std::vector<Entry> &entries) {
    put(entries);
    std::vector<Entry> sorted;
    for (const vchip::AddressView &view : vchip::addresses(0))
      for (const Entry &entry : entries)
        if (entry.vid == view.vid && entry.number == std::stoi(view.mac.substr(15), nullptr, 16))
          sorted.push_back(entry);
    ASSERT_EQ(sorted.size(), entries.size());
    entries = sorted;
  }

  static void empty() {
    const chip_l2_flush_request all = {0, 0, 0, 0, 0, 0, 0, 1};
    ASSERT_EQ(rtk_l2_ucastAddr_flush(0, &all), 0);
  }

  // Runs a row over the entries and holds every call against the table above.
  static void check(const Row &row, std::vector<Entry> entries, const Match &match) {
    empty();
    put_sorted(entries);
    swprobe::forget();
    EXPECT_EQ(row.function(1, match), 0);
    std::vector<std::string> calls, expected;
    for (const std::string &name : l2_test::names(swprobe::take()))
      if (!is_walking(name)) calls.push_back(name);
    std::vector<std::string> remaining;
    for (const Entry &entry : entries) {
      const std::vector<std::string> own = expected_calls(row, entry, match);
      expected.insert(expected.end(), own.begin(), own.end());
      const bool removed = std::count(own.begin(), own.end(), "rtk_l2_addr_del") != 0;
      if (!removed) remaining.push_back(std::to_string(entry.vid) + ' ' + text(entry.number));
    }
    EXPECT_EQ(calls, expected);
    EXPECT_EQ(held(), remaining);
  }
  static std::string text(uint8_t number) {
    char line[20];
    snprintf(line, sizeof line, "02:00:00:00:00:%02x", number);
    return line;
  }
};

constexpr uint32_t kFlags[] = {0x00, 0x02, 0x08, 0x0A, 0x0C, 0x28, 0x00800008};

TEST_F(L2Delete, EveryRowAgainstNearMisses) {
  for (const Row &row : kRows) {
    for (const int32_t port : {3, 5, kPortOn28, kCpuPort, kPortOnNothing}) {
      for (const int32_t trunk : {0, 3, 5}) {
        for (const uint32_t flags : kFlags) {
          SCOPED_TRACE(std::string(row.name) + " port " + std::to_string(port) + " trunk " +
                       std::to_string(trunk) + " flags " + std::to_string(flags));
          std::vector<Entry> entries;
          for (const uint32_t vid : {0u, 10u, 20u})
            for (const uint8_t number : {uint8_t{1}, uint8_t{2}})
              entries.push_back({vid, number, port, trunk, flags});
          check(row, entries, {});
          check(row, entries, {.trunk = 0, .vid = 0});
          if (HasFailure()) return;
        }
      }
    }
  }
}

TEST_F(L2Delete, PortsOffTheBoardMatchToo) {
  for (const Row &row : kRows) {
    if (!row.port) continue;
    SCOPED_TRACE(row.name);
    for (const int32_t port : {kCpuPort, kPortOn28, kPortOnNothing})
      for (const uint32_t flags : {0x00u, 0x08u})
        check(row, {{.port = port, .flags = flags}}, {.port = port});
  }
}

TEST_F(L2Delete, EveryByteOfTheAddressCounts) {
  for (const Row &row : kRows) {
    if (!row.mac) continue;
    const uint32_t flags = row.kind == Kind::dynamic_only ? 0 : 0x08;
    // Byte 0 keeps its group bit clear.
    for (size_t byte = 0; byte < SWCTL_MAC_BYTES; ++byte) {
      empty();
      chip_l2_ucast_entry entry = l2_test::chip_entry({.flags = flags});
      entry.mac[byte] ^= 0x80;
      ASSERT_EQ(rtk_l2_addr_add(0, &entry), 0);
      EXPECT_EQ(row.function(0, {}), 0);
      EXPECT_EQ(held().size(), 1u) << row.name << " byte " << byte;
    }
  }
}

TEST_F(L2Delete, AddressOfSixBytesIsNotReadBeyond) {
  // The last six bytes of the heap block: a sanitizer sees what lies past them.
  const std::unique_ptr<uint8_t[]> exact(new uint8_t[SWCTL_MAC_BYTES]);
  memcpy(exact.get(), mac(1).data(), SWCTL_MAC_BYTES);
  put({{.flags = 0x08}});
  EXPECT_EQ(user_l2_addr_delete_static_by_mac(0, 0, exact.get()), 0);
  EXPECT_EQ(held().size(), 0u);
  put({{.flags = 0x08}});
  EXPECT_EQ(user_l2_addr_delete_all_by_mac_port(0, 0, exact.get(), 3), 0);
  EXPECT_EQ(held().size(), 0u);
}

TEST_F(L2Delete, VlanArgumentIsAWordButForOneFunction) {
  for (const Row &row : kRows) {
    if (row.vlan == VlanTest::none) continue;
    const uint32_t flags = row.kind == Kind::dynamic_only ? 0 : 0x08;
    SCOPED_TRACE(row.name);
    check(row, {{.vid = 10, .trunk = 5, .flags = flags}}, {.vid = 0x1000A});
  }
  put({{.vid = 10, .flags = 0x08}});
  EXPECT_EQ(user_l2_addr_delete_static_by_vlan(0, 0, 0x1000A), 0);
  EXPECT_EQ(held().size(), 0u);
}

TEST_F(L2Delete, RemovalsAreLoggedUnderTheCallbacksName) {
  for (const Row &row : kRows) {
    if (row.log == Log::no) continue;
    ASSERT_EQ(vchip_reset(), 0);
    ASSERT_EQ(vchip_trace_set(1), 0);
    put({{.number = 1, .trunk = 5, .flags = 0x08}});
    EXPECT_EQ(row.function(0, {}), 0);
    const std::vector<vchip::TraceRecord> trace = vchip::platform().trace;
    ASSERT_EQ(trace.size(), 1u) << row.name;
    EXPECT_EQ(l2_test::function_of(trace[0]), row.callback);
    EXPECT_EQ(trace[0].message, l2_test::removed_line(1));
    EXPECT_EQ(l2_test::logged(swprobe::take()), std::vector<std::string>{l2_test::removed_line(1)});
  }
}

TEST_F(L2Delete, FailedDeletesAreIgnoredAndLoggedAllTheSame) {
  for (const Row &row : kRows) {
    for (const int32_t result : {-1, 5}) {
      empty();
      const uint32_t flags = row.kind == Kind::dynamic_only ? 0 : 0x08;
      put({{.vid = 10, .trunk = 5, .flags = flags}});
      swprobe::plan("rtk_l2_addr_del result " + std::to_string(result));
      EXPECT_EQ(row.function(0, {}), 0) << row.name;
      EXPECT_EQ(l2_test::logged(swprobe::take()).size(), row.log == Log::no ? 0u : 1u) << row.name;
      EXPECT_EQ(held().size(), 1u);
      SetUp();
    }
  }
}

TEST_F(L2Delete, AFailedScanIsTheEnd) {
  for (const Row &row : kRows) {
    swprobe::plan("rtk_l2_nextValidAddr_get result -5");
    EXPECT_EQ(row.function(0, {}), 0) << row.name;
    EXPECT_EQ(swprobe::take().size(), 1u) << row.name;
    SetUp();
  }
}

TEST_F(L2Delete, StaleEntriesGoAsInEveryWalk) {
  for (const Row &row : kRows) {
    swprobe::clear_plan();
    put({{.vid = 30, .number = 9, .port = kCpuPort, .flags = 0x02}});
    EXPECT_EQ(row.function(0, {}), 0);
    EXPECT_EQ(held().size(), 0u) << row.name;
  }
}

TEST_F(L2Delete, SdkIsOnUnitZeroWhateverTheUnit) {
  for (const Row &row : kRows) {
    put({{.vid = 10, .trunk = 5, .flags = 0x08}, {.vid = 10, .number = 2, .trunk = 5}});
    put({{.vid = 10, .trunk = 5, .flags = 0x08}}, 1);
    EXPECT_EQ(row.function(1, {}), 0);
    for (const swprobe::Call &call : swprobe::take())
      if (call.name.rfind("rtk_", 0) == 0) {
        EXPECT_EQ(call.in("unit"), 0) << call.line();
      }
    EXPECT_EQ(held(1).size(), 1u) << row.name;
    empty();
  }
}

TEST_F(L2Delete, LearnTypesAboveTwoAreLikeTwo) {
  for (const uint32_t type : {2u, 3u, 0x100u, 0xFFFFFFFFu}) {
    put({{.number = 1, .flags = 0x08},
         {.number = 2},
         {.number = 3, .flags = 0x0A},
         {.number = 4, .port = kCpuPort}});
    EXPECT_EQ(user_l2_addr_del_all_addr_by_lrntype(0, 0, type), 0);
    EXPECT_EQ(held(), std::vector<std::string>{"10 02:00:00:00:00:04"}) << type;
    EXPECT_EQ(l2_test::logged(swprobe::take()).size(), 0u);
  }
}

TEST_F(L2Delete, NothingIsPrinted) {
  put({{.flags = 0x08}});
  const auto all = [] {
    for (const Row &row : kRows) row.function(0, {});
  };
  EXPECT_PRINTED(swctl_test::printed_by(all), "", "");
}

// The callbacks by themselves, with the data that their header names.

TEST_F(L2Delete, CallbacksAnswerZeroAndKeepWhatTheyAreGiven) {
  chip_l2_ucast_entry match = l2_test::chip_entry({.trunk = 5});
  const user_l2_walk_callback_t callbacks[] = {
      del_static_mac_by_mac_port_callback,
      del_static_trunk_mac_by_mac_port_vid_callback,
      del_dynamic_trunk_mac_by_mac_port_vid_callback,
      del_all_trunk_mac_by_mac_port_vid_callback,
      del_dynaic_mac_by_mac_port_callback,
      del_all_mac_by_mac_port_callback,
      del_static_mac_by_vlan_port_callback,
      del_static_mac_by_vlan_trunk_callback,
      del_static_mac_by_mac_callback,
  };
  // Of the match only the key is read.
  match.flags = 0xFFFFFFFF;
  match.aux = 9;
  const chip_l2_ucast_entry before = match;
  for (const user_l2_walk_callback_t callback : callbacks) {
    for (const uint32_t flags : {0x00u, 0x08u}) {
      chip_l2_ucast_entry entry = l2_test::chip_entry({.trunk = 5, .flags = flags});
      const chip_l2_ucast_entry given = entry;
      swctl_test::chip_answers("rtk_l2_addr_del", -1);
      EXPECT_EQ(callback(0xFFFFFFFF, &entry, &match), 0);
      EXPECT_EQ(memcmp(&entry, &given, sizeof entry), 0);
      EXPECT_EQ(memcmp(&match, &before, sizeof match), 0);
    }
  }
}

size_t deletes(user_l2_walk_callback_t callback, const Entry &entry, void *data) {
  chip_l2_ucast_entry record = l2_test::chip_entry(entry);
  swprobe::forget();
  EXPECT_EQ(callback(0, &record, data), 0);
  size_t found = 0;
  for (const swprobe::Call &call : swprobe::take()) found += call.name == "rtk_l2_addr_del";
  return found;
}

TEST_F(L2Delete, CallbacksWithASingleValue) {
  int32_t word = 3;
  EXPECT_EQ(deletes(del_static_mac_by_port_callback, {.port = 3, .flags = 8}, &word), 1u);
  EXPECT_EQ(deletes(del_static_mac_by_port_callback, {.port = 4, .flags = 8}, &word), 0u);
  EXPECT_EQ(deletes(del_static_mac_by_trunk_callback, {.port = 4, .trunk = 3, .flags = 8}, &word),
            1u);
  EXPECT_EQ(deletes(del_static_mac_by_trunk_callback, {.port = 3, .trunk = 4, .flags = 8}, &word),
            0u);
  uint16_t vid = 20;
  EXPECT_EQ(deletes(del_static_mac_by_vlan_callback, {.vid = 20, .flags = 8}, &vid), 1u);
  EXPECT_EQ(deletes(del_static_mac_by_vlan_callback, {.vid = 0x10014, .flags = 8}, &vid), 1u)
      << "sixteen bits are compared";
  EXPECT_EQ(deletes(del_static_mac_by_vlan_callback, {.vid = 10, .flags = 8}, &vid), 0u);
  uint32_t type = 0;
  EXPECT_EQ(deletes(del_all__mac_bytype_callback, {.flags = 0}, &type), 1u);
  EXPECT_EQ(deletes(del_all__mac_bytype_callback, {.flags = 8}, &type), 0u);
}

}  // namespace
