// SPDX-License-Identifier: MIT
#include "acl/match_value.h"

#include <gtest/gtest.h>
#include <stdexcept>

namespace swsh {
namespace {

std::string there_and_back(Notation notation, int bits, const std::string &word) {
  return match_text(notation, bits, parse_match(notation, bits, word));
}

std::string fault_of(Notation notation, int bits, const std::string &word) {
  try {
    parse_match(notation, bits, word);
  } catch (const std::invalid_argument &error) {
    return error.what();
  }
  return "";
}

TEST(MatchValue, NumbersAndTheirMasks) {
  const MatchValue plain = parse_match(Notation::decimal, 16, "0x123");
  EXPECT_EQ(plain.number, 0x123u);
  EXPECT_EQ(plain.mask, 0xFFFFu);
  const MatchValue masked = parse_match(Notation::decimal, 16, "10/0xfff");
  EXPECT_EQ(masked.number, 10u);
  EXPECT_EQ(masked.mask, 0xFFFu);
  EXPECT_EQ(parse_match(Notation::decimal, 6, "63").mask, 63u);
  EXPECT_EQ(there_and_back(Notation::decimal, 16, "291/4095"), "291/0xfff");
  EXPECT_EQ(there_and_back(Notation::hexadecimal, 16, "0x88CC"), "0x88cc");
  EXPECT_EQ(there_and_back(Notation::decimal, 8, "7/255"), "7");
}

TEST(MatchValue, NumbersHaveAWidth) {
  EXPECT_EQ(fault_of(Notation::decimal, 16, "65535"), "");
  EXPECT_EQ(fault_of(Notation::decimal, 16, "65536"), "out of range");
  EXPECT_EQ(fault_of(Notation::decimal, 16, "1/65536"), "out of range");
  EXPECT_EQ(fault_of(Notation::decimal, 8, "256"), "out of range");
  EXPECT_EQ(fault_of(Notation::decimal, 6, "64"), "out of range");
  for (const char *word : {"", "/", "1/", "/1", "x", "1/2/3", "-1x"})
    EXPECT_NE(fault_of(Notation::decimal, 16, word), "") << word;
}

TEST(MatchValue, MacAddresses) {
  const MatchValue value = parse_match(Notation::mac, 0, "01:80:C2:00:00:0e/ff:00:00:00:00:f0");
  EXPECT_EQ(value.address, (AddressBytes{1, 0x80, 0xC2, 0, 0, 0x0E}));
  EXPECT_EQ(value.address_mask, (AddressBytes{0xFF, 0, 0, 0, 0, 0xF0}));
  EXPECT_EQ(there_and_back(Notation::mac, 0, "01:80:C2:00:00:0e"), "01:80:c2:00:00:0e");
  EXPECT_EQ(there_and_back(Notation::mac, 0, "01:80:c2:00:00:0e/ff:ff:ff:ff:ff:f0"),
            "01:80:c2:00:00:0e/ff:ff:ff:ff:ff:f0");
  for (const char *word :
       {"", "01:80:c2:00:00", "01:80:c2:00:00:0e:00", "01-80:c2-00-00-0e", "0g:80:c2:00:00:0e",
        "1:80:c2:00:00:00e", "01:80:c2:00:00:0e/", "01:80:c2:00:00:0e/8"})
    EXPECT_EQ(fault_of(Notation::mac, 0, word), "not an address") << word;
}

TEST(MatchValue, Ip4Addresses) {
  EXPECT_EQ(parse_match(Notation::ip, 32, "10.0.0.1").number, 0x0A000001u);
  EXPECT_EQ(parse_match(Notation::ip, 32, "10.0.0.1").mask, 0xFFFFFFFFu);
  EXPECT_EQ(parse_match(Notation::ip, 32, "10.0.0.0/8").mask, 0xFF000000u);
  EXPECT_EQ(parse_match(Notation::ip, 32, "0.0.0.0/0").mask, 0u);
  EXPECT_EQ(parse_match(Notation::ip, 32, "10.0.0.0/32").mask, 0xFFFFFFFFu);
  EXPECT_EQ(parse_match(Notation::ip, 32, "10.0.0.0/255.0.255.0").mask, 0xFF00FF00u);
  EXPECT_EQ(there_and_back(Notation::ip, 32, "10.1.0.0/16"), "10.1.0.0/255.255.0.0");
  EXPECT_EQ(fault_of(Notation::ip, 32, "10.1.2.3/16"),
            "has bits after its length; the subnet is 10.1.0.0/16");
  EXPECT_EQ(fault_of(Notation::ip, 32, "10.0.0.1/0"),
            "has bits after its length; the subnet is 0.0.0.0/0");
  EXPECT_EQ(there_and_back(Notation::ip, 32, "10.1.2.3/255.0.0.0"), "10.1.2.3/255.0.0.0")
      << "a mask is no length";
  EXPECT_EQ(fault_of(Notation::ip, 32, "10.0.0.0/33"), "out of range");
  for (const char *word : {"", "10.0.0", "10.0.0.256", "ten", "10.0.0.1/x"})
    EXPECT_EQ(fault_of(Notation::ip, 32, word), "not an address") << word;
}

TEST(MatchValue, Ip6Addresses) {
  EXPECT_EQ(there_and_back(Notation::ip6, 0, "2001:DB8::1"), "2001:db8::1");
  EXPECT_EQ(there_and_back(Notation::ip6, 0, "2001:db8::/128"), "2001:db8::");
  EXPECT_EQ(there_and_back(Notation::ip6, 0, "2001:db8::/33"), "2001:db8::/ffff:ffff:8000::");
  EXPECT_EQ(there_and_back(Notation::ip6, 0, "::/0"), "::/::");
  EXPECT_EQ(fault_of(Notation::ip6, 0, "2001:db8::1/64"),
            "has bits after its length; the subnet is 2001:db8::/64");
  EXPECT_EQ(there_and_back(Notation::ip6, 0, "::1/ffff::"), "::1/ffff::");
  for (const char *word : {"", "2001", "::1/129", "::1/x", "10.0.0.1"})
    EXPECT_EQ(fault_of(Notation::ip6, 0, word), "not an address") << word;
}

}  // namespace
}  // namespace swsh
