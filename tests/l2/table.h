// SPDX-License-Identifier: MIT
// A table to try the address functions on, filled past the library.
#ifndef SWCTL_TESTS_L2_TABLE_H
#define SWCTL_TESTS_L2_TABLE_H

#include <swctl-vchip/view.h>
#include <swctl/l2.h>
#include <swctl/platform/sdk.h>

#include <array>
#include <cstdlib>
#include <cstring>

#include "support/library_test.h"

namespace l2_test {

using Mac = std::array<uint8_t, SWCTL_MAC_BYTES>;

inline constexpr uint32_t kStatic = 0x08;

// 02:00:00:00:00:NN
inline Mac mac(uint8_t number) {
  return {0x02, 0, 0, 0, 0, number};
}

struct Entry {
  uint32_t vid = 10;
  uint8_t number = 1;  // of mac()
  int32_t port = 3;
  int32_t trunk = 0;
  uint32_t flags = 0;
  uint32_t aux = 0;
};

inline chip_l2_ucast_entry chip_entry(const Entry &entry) {
  chip_l2_ucast_entry record = {};
  record.vid = entry.vid;
  memcpy(record.mac, mac(entry.number).data(), sizeof record.mac);
  record.port = entry.port;
  record.trunk = entry.trunk;
  record.flags = entry.flags;
  record.aux = entry.aux;
  return record;
}

// A chip whose unit 0 has the VLANs 10 and 20; every other VLAN is stale.
class L2Test : public swctl_test::LibraryTest {
 protected:
  // What the library logs is judged by its calls; the lines would be noise.
  L2Test() { setenv("VCHIP_LOG", "none", 1); }
  void SetUp() override {
    LibraryTest::SetUp();
    ASSERT_EQ(rtk_vlan_create(0, 10), 0);
    ASSERT_EQ(rtk_vlan_create(0, 20), 0);
    swprobe::forget();
  }

  // Adds entries by the SDK's own call, and forgets that call.
  static void put(const std::vector<Entry> &entries, uint32_t unit = 0) {
    for (const Entry &entry : entries) {
      const chip_l2_ucast_entry record = chip_entry(entry);
      ASSERT_EQ(rtk_l2_addr_add(unit, &record), 0);
    }
    swprobe::forget();
  }
  static void mark(const Entry &entry, uint32_t state, uint32_t aux = 0) {
    ASSERT_EQ(vchip_l2_mark(0, entry.vid, mac(entry.number).data(), state, aux), 0);
  }

  // What the chip holds, "10 02:00:00:00:00:01", in scan order.
  static std::vector<std::string> held(uint32_t unit = 0) {
    std::vector<std::string> all;
    for (const vchip::AddressView &view : vchip::addresses(unit))
      all.push_back(std::to_string(view.vid) + ' ' + view.mac);
    return all;
  }
};

inline std::string text_of(const swprobe::Call &call, const std::string &argument) {
  for (const swprobe::Argument &candidate : call.arguments)
    if (candidate.name == argument) return candidate.text;
  throw std::out_of_range(argument);
}

// The lines that were logged, after checking level, option and tag of each.
inline std::vector<std::string> logged(const std::vector<swprobe::Call> &calls) {
  std::vector<std::string> lines;
  for (const swprobe::Call &call : calls) {
    if (call.name != "Log_logging_func") continue;
    EXPECT_EQ(call.in("level"), 6);
    EXPECT_EQ(call.in("option"), 0);
    EXPECT_EQ(text_of(call, "tag"), "STATIC-MAC");
    lines.push_back(text_of(call, "text"));
  }
  return lines;
}

inline std::string removed_line(uint8_t number) {
  char line[80];
  snprintf(line, sizeof line, "User remove static MAC 02:00:00:00:00:%02x from network system\n",
           number);
  return line;
}

inline std::vector<std::string> names(const std::vector<swprobe::Call> &calls) {
  std::vector<std::string> all;
  for (const swprobe::Call &call : calls) all.push_back(call.name);
  return all;
}

// The location of a trace record without its line number.
inline std::string function_of(const vchip::TraceRecord &record) {
  const size_t end = record.location.find("():");
  EXPECT_NE(end, std::string::npos) << record.location;
  EXPECT_NE(std::stoi(record.location.substr(end + 3)), 0) << record.location;
  return record.location.substr(0, end);
}

}  // namespace l2_test

#endif
