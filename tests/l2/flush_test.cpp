// SPDX-License-Identifier: MIT
// The deletes that are one request to the chip, word for word.
#include "l2/table.h"

namespace {

constexpr uint32_t kVid = 0xABCD000A;  // low half 10
constexpr int32_t kPort = 3;
constexpr int32_t kTrunk = 5;
const l2_test::Mac kMac = l2_test::mac(1);

struct FlushRow {
  const char *name;
  int32_t (*function)(uint32_t lead, uint32_t unit, uint32_t flags);
  const char *words;  // of the request, up to includeStatic
  std::vector<std::string> remaining;
};

// The entries of prepared(), by number.
const FlushRow kFlushRows[] = {
    {"user_l2_addr_delete_by_mac_port",
     [](uint32_t lead, uint32_t unit, uint32_t flags) {
       return user_l2_addr_delete_by_mac_port(lead, unit, kMac.data(), 0xEEEE, kPort, flags);
     },
     "byVlan=0, request.vid=0, request.byInterface=1, request.interfaceIsPort=1, "
     "request.portOrTrunk=3",
     {"3", "4"}},
    {"user_l2_addr_delete_by_port",
     [](uint32_t lead, uint32_t unit, uint32_t flags) {
       return user_l2_addr_delete_by_port(lead, unit, 0xEEEE, kPort, flags);
     },
     "byVlan=0, request.vid=0, request.byInterface=1, request.interfaceIsPort=1, "
     "request.portOrTrunk=3",
     {"3", "4"}},
    {"user_l2_addr_delete_by_trunk",
     [](uint32_t lead, uint32_t unit, uint32_t flags) {
       return user_l2_addr_delete_by_trunk(lead, unit, kTrunk, flags);
     },
     "byVlan=0, request.vid=0, request.byInterface=0, request.interfaceIsPort=1, "
     "request.portOrTrunk=5",
     {}},
    {"user_l2_addr_delete_by_vlan",
     [](uint32_t lead, uint32_t unit, uint32_t flags) {
       return user_l2_addr_delete_by_vlan(lead, unit, kVid, flags);
     },
     "byVlan=1, request.vid=10, request.byInterface=0, request.interfaceIsPort=0, "
     "request.portOrTrunk=0",
     {"2", "4"}},
    {"user_l2_addr_delete_by_vlan_port",
     [](uint32_t lead, uint32_t unit, uint32_t flags) {
       return user_l2_addr_delete_by_vlan_port(lead, unit, kVid, 0xEEEE, kPort, flags);
     },
     "byVlan=1, request.vid=10, request.byInterface=1, request.interfaceIsPort=1, "
     "request.portOrTrunk=3",
     {"2", "3", "4"}},
    {"user_l2_addr_delete_by_vlan_trunk",
     [](uint32_t lead, uint32_t unit, uint32_t flags) {
       return user_l2_addr_delete_by_vlan_trunk(lead, unit, kVid, kTrunk, flags);
     },
     "byVlan=1, request.vid=10, request.byInterface=1, request.interfaceIsPort=0, "
     "request.portOrTrunk=5",
     {"1", "2", "4"}},
    {"user_l2_addr_delete_by_mac",
     [](uint32_t lead, uint32_t unit, uint32_t flags) {
       return user_l2_addr_delete_by_mac(lead, unit, kMac.data(), flags);
     },
     "byVlan=0, request.vid=0, request.byInterface=0, request.interfaceIsPort=0, "
     "request.portOrTrunk=0",
     {}},
};

class L2Flush : public l2_test::L2Test {
 protected:
  static void prepare() {
    put({{.vid = 10, .number = 1, .port = 3, .trunk = 1},
         {.vid = 20, .number = 2, .port = 3, .trunk = 5},
         {.vid = 10, .number = 3, .port = 5, .trunk = 5},
         {.vid = 20, .number = 4, .port = 5, .trunk = 3}});
  }
  static std::vector<std::string> numbers() {
    std::vector<std::string> all;
    for (const vchip::AddressView &view : vchip::addresses(0)) all.push_back(view.mac.substr(16));
    return all;
  }
};

TEST_F(L2Flush, SendsOneRequestToUnitZero) {
  for (const FlushRow &row : kFlushRows) {
    for (const uint32_t flags : {0u, 1u, 2u, 0x80000000u}) {
      swprobe::forget();
      EXPECT_EQ(row.function(9, 1, flags), 0) << row.name;
      EXPECT_CALLS(
          std::string("rtk_l2_ucastAddr_flush(unit=0, request.reserved=0, request.") + row.words +
          ", request.reserved2=0, request.includeStatic=" + (flags != 0 ? "1" : "0") + ") = 0")
          << row.name;
    }
  }
}

TEST_F(L2Flush, TheChipRemovesWhatTheRequestSelects) {
  for (const FlushRow &row : kFlushRows) {
    prepare();
    EXPECT_EQ(row.function(0, 0, 0), 0);
    EXPECT_THAT(numbers(), testing::UnorderedElementsAreArray(row.remaining)) << row.name;
  }
}

TEST_F(L2Flush, StaticEntriesStayUnlessAskedFor) {
  for (const FlushRow &row : kFlushRows) {
    put({{.vid = 10, .number = 1, .port = 3, .trunk = 5, .flags = 0x08}});
    EXPECT_EQ(row.function(0, 0, 0), 0);
    EXPECT_EQ(numbers().size(), 1u) << row.name;
    EXPECT_EQ(row.function(0, 0, 4), 0);
    EXPECT_EQ(numbers().size(), 0u) << row.name;
    EXPECT_EQ(l2_test::logged(swprobe::take()).size(), 0u) << "flushes are not logged";
  }
}

TEST_F(L2Flush, ReturnsAnyResult) {
  for (const FlushRow &row : kFlushRows) {
    for (const int32_t result : {-1, 3, INT32_MIN}) {
      swprobe::clear_plan();
      swctl_test::chip_answers("rtk_l2_ucastAddr_flush", result);
      EXPECT_EQ(row.function(0, 0, 0), result) << row.name;
    }
  }
}

TEST_F(L2Flush, PortsAreWordsWithASign) {
  EXPECT_EQ(user_l2_addr_delete_by_port(0, 0, 0, -2, 0), VCHIP_E_PORT);
  EXPECT_EQ(static_cast<int32_t>(swprobe::take().at(0).in("request.portOrTrunk")), -2);
}

}  // namespace
