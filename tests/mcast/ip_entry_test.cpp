// SPDX-License-Identifier: MIT
// IP multicast entries. Address a is the source and b the group, as the
// virtual chip takes them.
#include <swctl-vchip/view.h>
#include <swctl/mcast.h>
#include <swctl/platform/sdk.h>

#include <cstring>

#include "support/library_test.h"

namespace {

using swctl_test::chip_answers;
using testing::ElementsAre;
using testing::IsEmpty;
using McastIpEntry = swctl_test::LibraryTest;

constexpr uint32_t kSource = 0xC0000201;  // 192.0.2.1
constexpr uint32_t kGroup = 0xE8010203;   // 232.1.2.3
constexpr user_pbmp_t kPorts = {{0x04000003}};
constexpr int64_t kResults[] = {0, 4, -1, -1071, INT32_MIN, INT32_MAX};

// 2001:db8::1 and ff3e::8000:1, one byte past a word.
struct Addresses {
  uint8_t pad = 0;
  uint8_t source[16] = {0x20, 1, 0x0d, 0xb8, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1};
  uint8_t group[16] = {0xff, 0x3e, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0x80, 0, 0, 1};
};
const Addresses kSix;

TEST_F(McastIpEntry, AddPutsTheSecondAddressFirst) {
  EXPECT_EQ(User_ip_mcast_add(1, kSource, kGroup, 10, kPorts), 0);
  EXPECT_CALLS(
      "rtk_l2_ipMcastAddr_add(unit=1, entry.vid=10, entry.zero=0, "
      "entry.address_b=0xe8010203, entry.address_a=0xc0000201, entry.ports=0x4000003, "
      "entry.rest=[0 0 0]) = 0");
  EXPECT_THAT(vchip::ip_mcast_entries(1),
              ElementsAre(vchip::McastIpView{10, "192.0.2.1", "232.1.2.3", 0x04000003}));
  EXPECT_THAT(vchip::ip_mcast_entries(0), IsEmpty());
}

TEST_F(McastIpEntry, SetGivesItItsPorts) {
  ASSERT_EQ(User_ip_mcast_add(1, kSource, kGroup, 10, kPorts), 0);
  swprobe::forget();
  EXPECT_EQ(User_ip_mcast_set(1, kSource, kGroup, 10, {{0x80}}), 0);
  EXPECT_CALLS(
      "rtk_l2_ipMcastAddr_set(unit=1, entry.vid=10, entry.zero=0, "
      "entry.address_b=0xe8010203, entry.address_a=0xc0000201, entry.ports=0x80, "
      "entry.rest=[0 0 0]) = 0");
  EXPECT_EQ(vchip::ip_mcast_entries(1)[0].ports, 0x80u);
}

TEST_F(McastIpEntry, DelHandsTheAddressesOverInOrder) {
  ASSERT_EQ(User_ip_mcast_add(1, kSource, kGroup, 10, kPorts), 0);
  swprobe::forget();
  EXPECT_EQ(User_ip_mcast_del(1, kSource, kGroup, 10), 0);
  EXPECT_CALLS(
      "rtk_l2_ipMcastAddr_del(unit=1, address_a=0xc0000201, address_b=0xe8010203, "
      "vid=10) = 0");
  EXPECT_THAT(vchip::ip_mcast_entries(1), IsEmpty());
}

using Writer = int32_t (*)(uint32_t, uint32_t, uint32_t, uint32_t, user_pbmp_t);
struct WriterCase {
  Writer function;
  const char *call;
};
const WriterCase kWriters[] = {{User_ip_mcast_add, "rtk_l2_ipMcastAddr_add"},
                               {User_ip_mcast_set, "rtk_l2_ipMcastAddr_set"}};

TEST_F(McastIpEntry, AnythingAndAnyResultPassThrough) {
  for (const WriterCase &test : kWriters) {
    for (const int64_t result : kResults) {
      swprobe::clear_plan();
      chip_answers(test.call, result);
      swprobe::forget();
      EXPECT_EQ(test.function(0xFFFFFFFF, 1, 2, 0x1FFFE, {{0x80000001}}), result);
      const auto calls = swprobe::take();
      ASSERT_EQ(calls.size(), 1u);
      EXPECT_EQ(calls[0].in("unit"), 0xFFFFFFFF);
      EXPECT_EQ(calls[0].in("entry.vid"), 0xFFFE);
      EXPECT_EQ(calls[0].in("entry.address_a"), 1);
      EXPECT_EQ(calls[0].in("entry.address_b"), 2);
      EXPECT_EQ(calls[0].in("entry.ports"), 0x80000001);
    }
  }
}

TEST_F(McastIpEntry, EveryPortBelow32HasItsBitAndNoOther) {
  for (const WriterCase &test : kWriters) {
    chip_answers(test.call, 0);
    for (uint32_t port = 0; port < 256; ++port) {
      user_pbmp_t ports = {};
      ports.word[port / 32] = 1u << port % 32;
      swprobe::forget();
      EXPECT_EQ(test.function(0, kSource, kGroup, 10, ports), 0);
      EXPECT_EQ(swprobe::take()[0].in("entry.ports"), port < 32 ? int64_t{1} << port : 0) << port;
    }
  }
}

TEST_F(McastIpEntry, DelPassesAnythingOn) {
  for (const int64_t result : kResults) {
    chip_answers("rtk_l2_ipMcastAddr_del", result);
    swprobe::forget();
    EXPECT_EQ(User_ip_mcast_del(7, 0x80000001, 2, 0x10005), result);
    const auto calls = swprobe::take();
    ASSERT_EQ(calls.size(), 1u);
    EXPECT_EQ(calls[0].in("unit"), 7);
    EXPECT_EQ(calls[0].in("address_a"), 0x80000001);
    EXPECT_EQ(calls[0].in("address_b"), 2);
    EXPECT_EQ(calls[0].in("vid"), 5);
  }
}

TEST_F(McastIpEntry, EntryHasItsBytesInPlace) {
  unsigned char bytes[28];
  const chip_ip_mcast_entry entry = {0x0A0B, 0, 2, 3, 4, {5, 6, 7}};
  memcpy(bytes, &entry, sizeof bytes);
  uint16_t vid = 0;
  memcpy(&vid, bytes, sizeof vid);
  EXPECT_EQ(vid, 0x0A0B) << "the VLAN ID is the first half of the first word";
  uint32_t words[7];
  memcpy(words, bytes, sizeof words);
  EXPECT_THAT(std::vector<uint32_t>(words + 1, words + 7), ElementsAre(2, 3, 4, 5, 6, 7));
}

std::string bytes_of(const swprobe::Call &call, const std::string &name) {
  std::string text;
  for (size_t index = 0; index < 16; ++index)
    text += static_cast<char>(call.in(name + "[" + std::to_string(index) + "]"));
  return text;
}
std::string text_of(const uint8_t (&address)[16]) {
  return {reinterpret_cast<const char *>(address), sizeof address};
}

TEST_F(McastIpEntry, Ip6AddPutsTheSecondAddressFirst) {
  EXPECT_EQ(User_ip6_mcast_add(1, kSix.source, kSix.group, 0x1000A, kPorts), 0);
  const auto calls = swprobe::take();
  ASSERT_EQ(calls.size(), 1u);
  const swprobe::Call &call = calls[0];
  EXPECT_EQ(call.name, "rtk_l2_ip6McastAddr_add");
  EXPECT_EQ(call.in("unit"), 1);
  EXPECT_EQ(call.in("entry.vid"), 10);
  EXPECT_EQ(bytes_of(call, "entry.address_b.bytes"), text_of(kSix.group));
  EXPECT_EQ(bytes_of(call, "entry.address_a.bytes"), text_of(kSix.source));
  EXPECT_EQ(call.in("entry.zero"), 0);
  EXPECT_EQ(call.in("entry.ports"), 0x04000003);
  for (const char *word : {"entry.rest[0]", "entry.rest[1]", "entry.rest[2]"})
    EXPECT_EQ(call.in(word), 0);
  EXPECT_THAT(vchip::ip6_mcast_entries(1),
              ElementsAre(vchip::McastIpView{10, "2001:db8::1", "ff3e::8000:1", 0x04000003}));
}

TEST_F(McastIpEntry, Ip6AddLooksAtTheFirstWordOfThePorts) {
  EXPECT_EQ(User_ip6_mcast_add(0, kSix.source, kSix.group, 10, {{0, 0x102, 3, 4, 5, 6, 7, 8}}), 0);
  EXPECT_EQ(vchip::ip6_mcast_entries(0)[0].ports, 0u);
}

TEST_F(McastIpEntry, Ip6DelHandsTheAddressesOverByValue) {
  ASSERT_EQ(User_ip6_mcast_add(1, kSix.source, kSix.group, 10, kPorts), 0);
  swprobe::forget();
  EXPECT_EQ(User_ip6_mcast_del(1, kSix.source, kSix.group, 0xFFFF000A), 0);
  const auto calls = swprobe::take();
  ASSERT_EQ(calls.size(), 1u);
  EXPECT_EQ(calls[0].name, "rtk_l2_ip6McastAddr_del");
  EXPECT_EQ(calls[0].in("unit"), 1);
  EXPECT_EQ(bytes_of(calls[0], "address_a.bytes"), text_of(kSix.source));
  EXPECT_EQ(bytes_of(calls[0], "address_b.bytes"), text_of(kSix.group));
  EXPECT_EQ(calls[0].in("vid"), 10);
  EXPECT_THAT(vchip::ip6_mcast_entries(1), IsEmpty());
}

TEST_F(McastIpEntry, Ip6ResultsPassThrough) {
  for (const int64_t result : kResults) {
    chip_answers("rtk_l2_ip6McastAddr_add", result);
    chip_answers("rtk_l2_ip6McastAddr_del", result);
    EXPECT_EQ(User_ip6_mcast_add(0, kSix.source, kSix.group, 10, kPorts), result);
    EXPECT_EQ(User_ip6_mcast_del(0, kSix.source, kSix.group, 10), result);
  }
}

TEST_F(McastIpEntry, Ip6SetIsNotSupported) {
  EXPECT_EQ(User_ip6_mcast_set(0, kSix.source, kSix.group, 10, kPorts), -1);
  EXPECT_NO_CALLS();
}

TEST_F(McastIpEntry, PrintsNothing) {
  const auto all = [] {
    for (const WriterCase &test : kWriters) test.function(2, 0, 0, 0, kPorts);
    User_ip_mcast_del(2, 0, 0, 0);
    User_ip6_mcast_add(2, kSix.source, kSix.group, 10, kPorts);
    User_ip6_mcast_del(2, kSix.source, kSix.group, 10);
  };
  EXPECT_PRINTED(swctl_test::printed_by(all), "", "");
}

}  // namespace
