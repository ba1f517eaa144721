// SPDX-License-Identifier: MIT
// A frame in one line.
#include "describe.h"

#include <gtest/gtest.h>
#include <random>

namespace {

using vchipctl::describe;

std::vector<uint8_t> bytes_of(const std::string &digits) {
  std::vector<uint8_t> bytes;
  for (size_t place = 0; place + 1 < digits.size(); place += 2)
    bytes.push_back(static_cast<uint8_t>(std::stoul(digits.substr(place, 2), nullptr, 16)));
  return bytes;
}

// What is said after the addresses and the length.
std::string about(const std::string &digits) {
  const std::string text = describe(bytes_of("020000000002020000000001" + digits));
  const std::string head = "02:00:00:00:00:01 > 02:00:00:00:00:02, length " +
                           std::to_string(12 + digits.size() / 2) + ", ";
  EXPECT_EQ(text.substr(0, head.size()), head);
  return text.substr(head.size());
}

// IPv4 from 10.0.0.1 to 10.0.0.2.
std::string ip(const std::string &protocol, const std::string &carried,
               const std::string &offset = "0000", const std::string &traffic = "00") {
  return "080045" + traffic + "00280000" + offset + "40" + protocol + "0000" + "0a000001" +
         "0a000002" + carried;
}

// IPv6 from 2001:db8::1 to ff02::1.
std::string ip6(const std::string &next, const std::string &carried) {
  return "86dd60000000"
         "0000" +
         next +
         "ff"
         "20010db8000000000000000000000001"
         "ff020000000000000000000000000001" +
         carried;
}

TEST(Describe, Tags) {
  EXPECT_EQ(about("8100a06488b5"), "vlan 100 p 5, type 0x88b5");
  EXPECT_EQ(about("88a81001810030648863"),
            "vlan 1 p 0 dei tpid 0x88a8, vlan 100 p 1 dei, "
            "type 0x8863");
  EXPECT_EQ(about("8100a0"), "type 0x8100");
}

TEST(Describe, Arp) {
  const std::string head = "08060001080006040";
  EXPECT_EQ(about(head + "001"
                         "020000000001"
                         "0a000001"
                         "000000000000"
                         "0a000002"),
            "ARP who-has 10.0.0.2 tell 10.0.0.1");
  EXPECT_EQ(about(head + "002"
                         "020000000001"
                         "0a000001"
                         "020000000002"
                         "0a000002"),
            "ARP 10.0.0.1 is-at 02:00:00:00:00:01");
  EXPECT_EQ(about(head + "009"), "ARP operation 9");
  EXPECT_EQ(about(head + "001"), "ARP who-has ? tell ?");
}

TEST(Describe, Ip) {
  EXPECT_EQ(about(ip("06",
                     "1f900050"
                     "0000000000000000"
                     "5012")),
            "IP 10.0.0.1.8080 > 10.0.0.2.80: TCP [S.]");
  EXPECT_EQ(about(ip("11",
                     "00350036"
                     "0010")),
            "IP 10.0.0.1.53 > 10.0.0.2.54: UDP length 16");
  EXPECT_EQ(about(ip("01", "080000000007000a", "0000", "b8")),
            "IP 10.0.0.1 > 10.0.0.2: ICMP echo request id 7 seq 10 dscp 46");
  EXPECT_EQ(about(ip("01", "0301")), "IP 10.0.0.1 > 10.0.0.2: ICMP type 3 code 1");
  EXPECT_EQ(about(ip("02", "16000000e1010203")), "IP 10.0.0.1 > 10.0.0.2: IGMPv2 report 225.1.2.3");
  EXPECT_EQ(about(ip("2f", "")), "IP 10.0.0.1 > 10.0.0.2: protocol 47");
  EXPECT_EQ(about(ip("06", "1f900050", "00b9")), "IP 10.0.0.1 > 10.0.0.2: fragment at 1480");
}

TEST(Describe, Ip6) {
  EXPECT_EQ(about(ip6("3a", "8000000000010002")),
            "IP6 2001:db8::1 > ff02::1: ICMPv6 echo request id 1 seq 2");
  // After a hop-by-hop header.
  EXPECT_EQ(about(ip6("00",
                      "3a00050200000000"
                      "83")),
            "IP6 2001:db8::1 > ff02::1: MLD type 131");
  EXPECT_EQ(about(ip6("11",
                      "02220223"
                      "0008")),
            "IP6 2001:db8::1.546 > ff02::1.547: UDP length 8");
}

TEST(Describe, Others) {
  EXPECT_EQ(about("88cc"), "LLDP");
  EXPECT_EQ(about("888e"), "EAPOL");
  EXPECT_EQ(about("880901"), "LACP");
  EXPECT_EQ(about("880903"), "Ethernet OAM");
  EXPECT_EQ(about("88080001ffff"), "pause quanta 65535");
  EXPECT_EQ(about("88080101"), "MAC control opcode 257");
  EXPECT_EQ(about("00264242030000020202"), "STP version 2");
  EXPECT_EQ(about("0010aaaa030000000800"), "SNAP type 0x0800");
  EXPECT_EQ(about("0010e0e0"), "LLC dsap 0xe0 ssap 0xe0");
}

// Whatever the bytes, nothing past the end is read, and it is one line.
TEST(Describe, AnyBytes) {
  std::mt19937 random(1);
  const std::string types[] = {"0800", "0806", "86dd", "8100", "88a8", "8808", "8809", "0026"};
  for (int round = 0; round < 20000; ++round) {
    std::vector<uint8_t> frame(random() % 90);
    for (uint8_t &byte : frame) byte = static_cast<uint8_t>(random() % 4 == 0 ? random() : 0);
    const std::vector<uint8_t> type = bytes_of(types[random() % std::size(types)]);
    if (frame.size() >= 14) std::copy(type.begin(), type.end(), frame.begin() + 12);
    const std::string text = describe(frame);
    ASSERT_FALSE(text.empty());
    ASSERT_EQ(text.find('\n'), std::string::npos);
  }
}

}  // namespace
