// SPDX-License-Identifier: MIT
// Qualifiers whose value the chip has in a form of its own.
#include <swctl/field.h>
#include <swctl/platform/sdk.h>

#include <cstdio>
#include <cstring>

#include "field/write.h"

namespace {

constexpr int kDscpShift = 2;

struct Code {
  uint32_t generic;
  uint8_t chip;
};
constexpr Code kFrameTypes[] = {{1, 0}, {2, 1}, {3, 2}};
constexpr Code kIpTypes[] = {{5, 2}, {10, 3}, {12, 0}};
constexpr Code kProtocolClasses[] = {{17, 0}, {6, 1}, {1, 2}, {2, 3}};

constexpr int kIpTypeLine = 1989;
constexpr uint8_t kIpTypeMask = 0x0F;
// Protocols without a class of their own: this number plus the protocol.
constexpr uint16_t kOtherProtocols = 0x1000;

template <size_t Count>
const Code *find(const Code (&codes)[Count], uint32_t generic) {
  for (const Code &code : codes) {
    if (code.generic == generic) return &code;
  }
  return nullptr;
}

// The low eight bits of the register that a byte came in, whatever is above
// them. The compiler takes that for zero, as the convention of MIPS has it; a
// caller that declares the argument as a word leaves there what it likes.
uint8_t low_byte(uint8_t argument) {
  uint32_t word = argument;
  asm("" : "+r"(word));  // from here on the compiler knows nothing of it
  return static_cast<uint8_t>(word & 0xFF);
}

}  // namespace

int32_t user_field_qualify_DSCP(uint32_t, uint32_t unit, int32_t rule, uint8_t value,
                                uint8_t mask) {
  // DSCP is the upper six bits of the traffic class (RFC 2474).
  return swctl::write_number(unit, rule, CHIP_ACL_FIELD_TRAFFIC_CLASS,
                             static_cast<uint8_t>(value << kDscpShift),
                             static_cast<uint8_t>(mask << kDscpShift));
}

int32_t user_field_qualify_InPorts(uint32_t, uint32_t unit, int32_t rule, user_pbmp_t ports, ...) {
  // The field has a bit for the ingress port. A frame matches if the bits of all
  // ports that are not in the list are 0.
  return swctl::write_number(unit, rule, CHIP_ACL_FIELD_IN_PORTS, uint32_t{0}, ~ports.word[0]);
}

int32_t user_field_qualify_IpProtocol(uint32_t, uint32_t unit, int32_t rule, uint8_t protocol,
                                      uint8_t) {
  // One area holds both forms: a class in the first byte, followed by its mask,
  // or number and mask of two bytes each.
  uint8_t area[6] = {0, 0xFF};
  const uint8_t *data = &area[0];
  const uint8_t *mask = &area[1];
  const uint8_t number = low_byte(protocol);
  if (const Code *code = find(kProtocolClasses, number)) {
    area[0] = code->chip;
  } else {
    const uint16_t words[] = {static_cast<uint16_t>(kOtherProtocols + number), 0xFFFF};
    memcpy(&area[2], words, sizeof words);
    data = &area[2];
    mask = &area[4];
  }
  return rtk_acl_ruleEntryField_write(unit, CHIP_ACL_TABLE, rule, CHIP_ACL_FIELD_IP_PROTOCOL, data,
                                      mask);
}

int32_t user_field_qualify_FrameType(uint32_t, uint32_t unit, int32_t rule, uint32_t type,
                                     uint32_t) {
  const Code *code = find(kFrameTypes, type);
  if (code == nullptr) return -1;
  return swctl::write_number(unit, rule, CHIP_ACL_FIELD_FRAME_TYPE, code->chip, uint8_t{0xFF});
}

int32_t user_field_qualify_iptype(uint32_t, uint32_t unit, int32_t rule, uint32_t type, uint32_t) {
  const Code *code = find(kIpTypes, type);
  if (code == nullptr) {
    printf("%s:[%05d] unknow ip type [%d]\n", "user_field_qualify_iptype", kIpTypeLine,
           static_cast<int32_t>(type));
    return -1;
  }
  const uint8_t area[2] = {code->chip, kIpTypeMask};
  return rtk_acl_ruleEntryField_write(unit, CHIP_ACL_TABLE, rule, CHIP_ACL_FIELD_IP_TYPE, &area[0],
                                      &area[1]);
}
