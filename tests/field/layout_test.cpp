// SPDX-License-Identifier: MIT
// The areas that qualifiers hand to the SDK, byte for byte. This program's own
// rtk_acl_ruleEntryField_write() comes before every other one and copies
// as many bytes as the area is promised to have.
#include <swctl/field.h>
#include <swctl/platform/sdk.h>

#include <cstring>
#include <functional>
#include <vector>

#include "support/library_test.h"

namespace {

using Bytes = std::vector<uint8_t>;

struct Written {
  uint32_t unit, table;
  int32_t rule;
  uint32_t field;
  Bytes data, mask;
  std::ptrdiff_t mask_distance;  // from data to mask
};
size_t area_size;
int32_t answer;
std::vector<Written> written;

}  // namespace

int32_t rtk_acl_ruleEntryField_write(uint32_t unit, uint32_t table, int32_t rule, uint32_t field,
                                     const uint8_t *data, const uint8_t *mask) {
  written.push_back({unit, table, rule, field, Bytes(data, data + area_size),
                     Bytes(mask, mask + area_size),
                     static_cast<std::ptrdiff_t>(reinterpret_cast<uintptr_t>(mask) -
                                                 reinterpret_cast<uintptr_t>(data))});
  return answer;
}

namespace {

// A number as this machine has it in memory.
template <typename T>
Bytes host(T number) {
  Bytes bytes(sizeof number);
  memcpy(bytes.data(), &number, sizeof number);
  return bytes;
}

Bytes filled(Bytes bytes, size_t size) {
  bytes.resize(size);
  return bytes;
}

class FieldLayout : public testing::Test {
 protected:
  void SetUp() override {
    written.clear();
    answer = 0;
  }
  // Runs a qualifier whose areas are `size` bytes, and gives what it wrote.
  static Written one(size_t size, const std::function<int32_t()> &qualify) {
    area_size = size;
    written.clear();
    EXPECT_EQ(qualify(), answer);
    EXPECT_EQ(written.size(), 1u);
    return written.empty() ? Written{} : written.front();
  }
  // The same for an area of 28 bytes that begins with these.
  static void expect_area(uint32_t field, const Bytes &data, const Bytes &mask,
                          const std::function<int32_t()> &qualify) {
    SCOPED_TRACE("field " + std::to_string(field));
    const Written found = one(28, qualify);
    EXPECT_EQ(found.unit, 1u);
    EXPECT_EQ(found.table, 0u);
    EXPECT_EQ(found.rule, 7);
    EXPECT_EQ(found.field, field);
    EXPECT_EQ(found.data, filled(data, 28));
    EXPECT_EQ(found.mask, filled(mask, 28));
  }
};

constexpr uint32_t kLead = 0xABCDABCD;

TEST_F(FieldLayout, NumbersOfTwoBytes) {
  using Qualifier = int32_t (*)(uint32_t, uint32_t, int32_t, uint16_t, uint16_t);
  const struct {
    Qualifier function;
    uint32_t field;
  } kCases[] = {
      {user_field_qualify_OuterVlan, 12},   {user_field_qualify_OuterVlanId, 19},
      {user_field_qualify_InnerVlanId, 22}, {user_field_qualify_EtherType, 15},
      {user_field_qualify_L4SrcPort, 52},   {user_field_qualify_L4DstPort, 53},
  };
  for (const auto &test : kCases) {
    expect_area(test.field, host<uint16_t>(0x0123), host<uint16_t>(0xF0FE),
                [&] { return test.function(kLead, 1, 7, 0x0123, 0xF0FE); });
  }
}

TEST_F(FieldLayout, NumbersOfOneByte) {
  using Qualifier = int32_t (*)(uint32_t, uint32_t, int32_t, uint8_t, uint8_t);
  const struct {
    Qualifier function;
    uint32_t field;
  } kCases[] = {{user_field_qualify_OuterVlanPri, 17},
                {user_field_qualify_InnerVlanPri, 20},
                {user_field_qualify_Ip6TrafficClass, 46}};
  for (const auto &test : kCases) {
    expect_area(test.field, {0xA5}, {0xFE}, [&] { return test.function(kLead, 1, 7, 0xA5, 0xFE); });
  }
}

TEST_F(FieldLayout, InnerVlanKeepsTheLowByte) {
  expect_area(11, {0x23}, {0xFF},
              [] { return user_field_qualify_InnerVlan(kLead, 1, 7, 0x0123, 0x0FFF); });
}

TEST_F(FieldLayout, DscpStandsTwoBitsUp) {
  expect_area(46, {184}, {252}, [] { return user_field_qualify_DSCP(kLead, 1, 7, 46, 63); });
  expect_area(46, {0xFC}, {0x04}, [] { return user_field_qualify_DSCP(kLead, 1, 7, 0xFF, 0x41); });
}

TEST_F(FieldLayout, MacAddressesAsGiven) {
  // Arrays of their own size: a byte read past them is an error.
  const std::vector<uint8_t> mac = {1, 2, 3, 4, 5, 6};
  const std::vector<uint8_t> mask = {0xFF, 0, 0xF0, 0x0F, 0xFE, 0x7F};
  expect_area(8, mac, mask,
              [&] { return user_field_qualify_SrcMac(kLead, 1, 7, mac.data(), mask.data()); });
  expect_area(7, mac, mask,
              [&] { return user_field_qualify_DstMac(kLead, 1, 7, mac.data(), mask.data()); });
}

TEST_F(FieldLayout, InPortsAreZeroUnderTheOtherPorts) {
  user_pbmp_t ports = {{0x0000000A, 0xFFFFFFFF, 1, 2, 3, 4, 5, 0x80000000}};
  expect_area(6, {}, host<uint32_t>(0xFFFFFFF5),
              [&] { return user_field_qualify_InPorts(kLead, 1, 7, ports); });
  for (uint32_t port = 0; port < 32; ++port) {
    ports.word[0] = 1u << port;
    expect_area(6, {}, host<uint32_t>(~(1u << port)),
                [&] { return user_field_qualify_InPorts(kLead, 1, 7, ports); });
  }
}

TEST_F(FieldLayout, InPortsTakeAMaskAndDoNotReadIt) {
  const user_pbmp_t ports = {{0x0F, 0, 0, 0, 0, 0, 0, 0}};
  const user_pbmp_t mask = {{0xFF, 0, 0, 0, 0, 0, 0, 0}};
  expect_area(6, {}, host<uint32_t>(0xFFFFFFF0),
              [&] { return user_field_qualify_InPorts(kLead, 1, 7, ports, mask); });
}

TEST_F(FieldLayout, FrameTypes) {
  for (uint8_t type : Bytes{1, 2, 3}) {
    for (uint32_t mask : {0u, 0x12345678u}) {
      expect_area(13, {static_cast<uint8_t>(type - 1)}, {0xFF},
                  [&] { return user_field_qualify_FrameType(kLead, 1, 7, type, mask); });
    }
  }
}

TEST_F(FieldLayout, IpAddressesAreFourBytesInHostOrder) {
  const auto source = [] { return user_field_qualify_SrcIp(kLead, 1, 7, 0x0A000001, 0xFFFF0FF0); };
  const auto target = [] { return user_field_qualify_DstIp(kLead, 1, 7, 0x0A000001, 0xFFFF0FF0); };
  for (const Written &found : {one(4, source), one(4, target)}) {
    EXPECT_EQ(found.data, host<uint32_t>(0x0A000001));
    EXPECT_EQ(found.mask, host<uint32_t>(0xFFFF0FF0));
    EXPECT_EQ(found.unit, 1u);
    EXPECT_EQ(found.table, 0u);
    EXPECT_EQ(found.rule, 7);
  }
  EXPECT_EQ(one(4, source).field, 42u);
  EXPECT_EQ(one(4, target).field, 43u);
}

TEST_F(FieldLayout, Ip6AddressesAreTheCallersOwn) {
  uint8_t both[32];
  for (uint8_t i = 0; i < 32; ++i) both[i] = i;
  const auto source = [&] { return user_field_qualify_SrcIp6(kLead, 1, 7, both, both + 16); };
  const auto target = [&] { return user_field_qualify_DstIp6(kLead, 1, 7, both, both + 16); };
  for (const Written &found : {one(16, source), one(16, target)}) {
    EXPECT_EQ(found.data, Bytes(both, both + 16));
    EXPECT_EQ(found.mask, Bytes(both + 16, both + 32));
    EXPECT_EQ(found.mask_distance, 16) << "the addresses are passed on, not copies";
    EXPECT_EQ(found.unit, 1u);
    EXPECT_EQ(found.table, 0u);
    EXPECT_EQ(found.rule, 7);
  }
  EXPECT_EQ(one(16, source).field, 44u);
  EXPECT_EQ(one(16, target).field, 45u);
}

TEST_F(FieldLayout, NamedProtocolsAreAClassWithItsMaskBehindIt) {
  const struct { uint8_t protocol, code; } kCases[] = {{17, 0}, {6, 1}, {1, 2}, {2, 3}};
  for (const auto &test : kCases) {
    const Written found =
        one(2, [&] { return user_field_qualify_IpProtocol(kLead, 1, 7, test.protocol, 0x5A); });
    EXPECT_EQ(found.field, 41u);
    EXPECT_EQ(found.data, (Bytes{test.code, 0xFF}));
    EXPECT_EQ(found.mask, (Bytes{0xFF, 0}));
    EXPECT_EQ(found.mask_distance, 1);
  }
}

TEST_F(FieldLayout, NamedProtocolsAreFollowedByZeroes) {
  const Written found = one(5, [] { return user_field_qualify_IpProtocol(kLead, 1, 7, 6, 0); });
  EXPECT_EQ(found.mask, (Bytes{0xFF, 0, 0, 0, 0})) << "the rest of the six bytes";
}

TEST_F(FieldLayout, OtherProtocolsAreNumbersOfTwoBytes) {
  for (int protocol = 0; protocol <= 255; ++protocol) {
    if (protocol == 17 || protocol == 6 || protocol == 1 || protocol == 2) continue;
    const auto value = static_cast<uint8_t>(protocol);
    const Written found =
        one(2, [&] { return user_field_qualify_IpProtocol(kLead, 1, 7, value, 0); });
    EXPECT_EQ(found.unit, 1u);
    EXPECT_EQ(found.rule, 7);
    EXPECT_EQ(found.field, 41u);
    EXPECT_EQ(found.data, host(static_cast<uint16_t>(0x1000 + protocol)));
    EXPECT_EQ(found.mask, host<uint16_t>(0xFFFF));
    EXPECT_EQ(found.mask_distance, 2);
  }
}

TEST_F(FieldLayout, IpTypesAreAByteWithItsMaskBehindIt) {
  const struct {
    uint32_t type;
    uint8_t code;
  } kCases[] = {{5, 2}, {10, 3}, {12, 0}};
  for (const auto &test : kCases) {
    const Written found =
        one(1, [&] { return user_field_qualify_iptype(kLead, 1, 7, test.type, 0xFFFF); });
    EXPECT_EQ(found.unit, 1u);
    EXPECT_EQ(found.table, 0u);
    EXPECT_EQ(found.rule, 7);
    EXPECT_EQ(found.field, 2u);
    EXPECT_EQ(found.data, Bytes{test.code});
    EXPECT_EQ(found.mask, Bytes{0x0F});
    EXPECT_EQ(found.mask_distance, 1);
  }
}

TEST_F(FieldLayout, TemplateFieldsAreOneByteInZeroes) {
  expect_area(0, {0x05}, {0xFF},
              [] { return user_field_set_select_tempate_idx(kLead, 1, 7, 0x105); });
}

TEST_F(FieldLayout, HalvesOfPairsAreOneByteInZeroes) {
  area_size = 28;
  user_field_set_double_entry(kLead, 1, 7);
  ASSERT_EQ(written.size(), 2u);
  for (uint8_t half : Bytes{0, 1}) {
    EXPECT_EQ(written[half].rule, 7 + half);
    EXPECT_EQ(written[half].data, filled({half}, 28));
    EXPECT_EQ(written[half].mask, filled({0xFF}, 28));
  }
  written.clear();
  user_field_init(kLead, 1);
  ASSERT_EQ(written.size(), 768u);
  for (size_t i = 0; i < written.size(); ++i) {
    ASSERT_EQ(written[i].field, 0u);
    ASSERT_EQ(written[i].data, filled({static_cast<uint8_t>(i % 2)}, 28));
    ASSERT_EQ(written[i].mask, filled({3}, 28));
  }
}

}  // namespace
