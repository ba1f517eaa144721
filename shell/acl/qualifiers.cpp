// SPDX-License-Identifier: MIT
#include "acl/qualifiers.h"

#include <swctl/field.h>

#include <cstring>
#include <stdexcept>

#include "chip/call.h"
#include "chip/ports.h"
#include "fault.h"
#include "number_list.h"
#include "text.h"

namespace swsh {

using Write = void (*)(const std::string &subject, uint32_t unit, int32_t rule,
                       const MatchValue &value);
enum class Writing { masked, ports, protocol, frame_type, ip_type };

struct Qualifier {
  const char *keyword;
  const char *help;
  uint32_t field;
  Writing writing;
  Notation notation;
  int bits;
  Write write;
};

namespace {

constexpr int kDscpShift = 2;
constexpr int kDscpBits = 6;
constexpr uint32_t kOtherProtocols = 0x1000;

// The functions of the library by what they take.
template <typename Number, typename Mask>
void write(const Call<int32_t(uint32_t, uint32_t, int32_t, Number, Mask)> &function,
           const std::string &subject, uint32_t unit, int32_t rule, const MatchValue &value) {
  perform(function, subject, kLead, unit, rule, static_cast<Number>(value.number),
          static_cast<Mask>(value.mask));
}

using Addresses = int32_t(uint32_t, uint32_t, int32_t, const uint8_t *, const uint8_t *);
void write(const Call<Addresses> &function, const std::string &subject, uint32_t unit, int32_t rule,
           const MatchValue &value) {
  perform(function, subject, kLead, unit, rule, value.address.data(), value.address_mask.data());
}

void write(const Call<int32_t(uint32_t, uint32_t, int32_t, user_pbmp_t, ...)> &function,
           const std::string &subject, uint32_t unit, int32_t rule, const MatchValue &value) {
  const user_pbmp_t ports = {{value.number}};
  perform(function, subject, kLead, unit, rule, ports);
}

#define WRITE(function)                                                                  \
  [](const std::string &subject, uint32_t unit, int32_t rule, const MatchValue &value) { \
    write(SWSH_CALL(function), subject, unit, rule, value);                              \
  }
constexpr Qualifier kQualifiers[] = {
    {"in-ports", "Ports that the frame came in on", CHIP_ACL_FIELD_IN_PORTS, Writing::ports,
     Notation::decimal, 32, WRITE(user_field_qualify_InPorts)},
    {"dst-mac", "Destination MAC address", CHIP_ACL_FIELD_DST_MAC, Writing::masked, Notation::mac,
     0, WRITE(user_field_qualify_DstMac)},
    {"src-mac", "Source MAC address", CHIP_ACL_FIELD_SRC_MAC, Writing::masked, Notation::mac, 0,
     WRITE(user_field_qualify_SrcMac)},
    {"ethertype", "EtherType", CHIP_ACL_FIELD_ETHER_TYPE, Writing::masked, Notation::hexadecimal,
     16, WRITE(user_field_qualify_EtherType)},
    {"outer-vlan", "Tag control information of the outer VLAN tag", CHIP_ACL_FIELD_OUTER_VLAN,
     Writing::masked, Notation::decimal, 16, WRITE(user_field_qualify_OuterVlan)},
    {"outer-vlan-id", "VLAN of the outer tag", CHIP_ACL_FIELD_OUTER_VLAN_ID, Writing::masked,
     Notation::decimal, 16, WRITE(user_field_qualify_OuterVlanId)},
    {"outer-priority", "Priority of the outer tag", CHIP_ACL_FIELD_OUTER_PRIORITY, Writing::masked,
     Notation::decimal, 8, WRITE(user_field_qualify_OuterVlanPri)},
    {"inner-vlan", "Low byte of the inner VLAN tag", CHIP_ACL_FIELD_INNER_VLAN, Writing::masked,
     Notation::decimal, 8, WRITE(user_field_qualify_InnerVlan)},
    {"inner-vlan-id", "VLAN of the inner tag", CHIP_ACL_FIELD_INNER_VLAN_ID, Writing::masked,
     Notation::decimal, 16, WRITE(user_field_qualify_InnerVlanId)},
    {"inner-priority", "Priority of the inner tag", CHIP_ACL_FIELD_INNER_PRIORITY, Writing::masked,
     Notation::decimal, 8, WRITE(user_field_qualify_InnerVlanPri)},
    {"frame-type", "Format of the frame", CHIP_ACL_FIELD_FRAME_TYPE, Writing::frame_type,
     Notation::decimal, 8, WRITE(user_field_qualify_FrameType)},
    {"ip-type", "Kind of IP packet", CHIP_ACL_FIELD_IP_TYPE, Writing::ip_type, Notation::decimal, 8,
     WRITE(user_field_qualify_iptype)},
    {"protocol", "Protocol of IP, udp, tcp, icmp, igmp or a number 0-255",
     CHIP_ACL_FIELD_IP_PROTOCOL, Writing::protocol, Notation::decimal, 8,
     WRITE(user_field_qualify_IpProtocol)},
    {"src-ip", "Source address of IPv4", CHIP_ACL_FIELD_SRC_IP, Writing::masked, Notation::ip, 32,
     WRITE(user_field_qualify_SrcIp)},
    {"dst-ip", "Destination address of IPv4", CHIP_ACL_FIELD_DST_IP, Writing::masked, Notation::ip,
     32, WRITE(user_field_qualify_DstIp)},
    {"src-ip6", "Source address of IPv6", CHIP_ACL_FIELD_SRC_IP6, Writing::masked, Notation::ip6, 0,
     WRITE(user_field_qualify_SrcIp6)},
    {"dst-ip6", "Destination address of IPv6", CHIP_ACL_FIELD_DST_IP6, Writing::masked,
     Notation::ip6, 0, WRITE(user_field_qualify_DstIp6)},
    {"dscp", "DSCP; excludes traffic-class", CHIP_ACL_FIELD_TRAFFIC_CLASS, Writing::masked,
     Notation::decimal, 6, WRITE(user_field_qualify_DSCP)},
    {"traffic-class", "Traffic class of IPv6", CHIP_ACL_FIELD_TRAFFIC_CLASS, Writing::masked,
     Notation::hexadecimal, 8, WRITE(user_field_qualify_Ip6TrafficClass)},
    {"src-port", "Source port of TCP or UDP", CHIP_ACL_FIELD_L4_SRC_PORT, Writing::masked,
     Notation::decimal, 16, WRITE(user_field_qualify_L4SrcPort)},
    {"dst-port", "Destination port of TCP or UDP", CHIP_ACL_FIELD_L4_DST_PORT, Writing::masked,
     Notation::decimal, 16, WRITE(user_field_qualify_L4DstPort)},
};

// Names of numbers, and the codes that the chip has instead.
struct Code {
  const char *word;
  uint32_t number;
  uint8_t chip;
};
constexpr Code kProtocols[] = {{"udp", 17, 0}, {"tcp", 6, 1}, {"icmp", 1, 2}, {"igmp", 2, 3}};
constexpr Code kFrameTypes[] = {{"1", 1, 0}, {"2", 2, 1}, {"3", 3, 2}};
constexpr Code kIpTypes[] = {{"5", 5, 2}, {"10", 10, 3}, {"12", 12, 0}};

template <size_t Count>
Type codes_type(const Code (&codes)[Count]) {
  std::vector<Choice> choices;
  for (const Code &code : codes) choices.push_back({code.word, code.number, ""});
  return choice(std::move(choices));
}

// The number that the library's caller gives for the chip's code, or the code.
template <size_t Count>
int64_t code_number(const Code (&codes)[Count], uint8_t chip) {
  for (const Code &code : codes)
    if (code.chip == chip) return code.number;
  return chip;
}

Type type_of(const Qualifier &qualifier) {
  switch (qualifier.writing) {
    case Writing::ports: return interface_list(0);
    case Writing::frame_type: return codes_type(kFrameTypes);
    case Writing::ip_type: return codes_type(kIpTypes);
    case Writing::masked:
    case Writing::protocol: break;
  }
  return text();
}

CommandError bad_value(const Qualifier &qualifier, const std::string &word,
                       const std::string &fault, const std::string &expected) {
  return CommandError(
      wrong_usage("bad value " + in_quotes(word) + " of " + qualifier.keyword + ": " + fault, word,
                  {expected}));
}

uint32_t protocol_number(const Qualifier &qualifier, const std::string &word) {
  for (const Code &code : kProtocols)
    if (word == code.word) return code.number;
  const ParsedNumber parsed = parse_number(word, 0, UINT8_MAX);
  if (parsed.fault.empty()) return static_cast<uint32_t>(parsed.number);
  throw bad_value(qualifier, word, parsed.fault, "udp, tcp, icmp, igmp or a number 0-255");
}

MatchValue masked_value(const Qualifier &qualifier, const std::string &word) {
  try {
    return parse_match(qualifier.notation, qualifier.bits, word);
  } catch (const std::invalid_argument &error) {
    throw bad_value(qualifier, word, error.what(),
                    match_expected(qualifier.notation, qualifier.bits));
  }
}

MatchValue value_of(const Qualifier &qualifier, const Arguments &arguments) {
  const std::string name = qualifier.keyword;
  MatchValue value;
  switch (qualifier.writing) {
    case Writing::masked: return masked_value(qualifier, arguments.word(name));
    case Writing::ports: value.number = portmask_of(interfaces_given(arguments, name)); break;
    case Writing::protocol: value.number = protocol_number(qualifier, arguments.word(name)); break;
    case Writing::frame_type:
    case Writing::ip_type: value.number = arguments.u32(name); break;
  }
  return value;
}

// A number of the field's width in the order of this machine.
uint32_t host_number(const uint8_t *bytes, uint32_t width) {
  uint16_t two = 0;
  uint32_t four = 0;
  switch (width) {
    case 1: return bytes[0];
    case 2: memcpy(&two, bytes, sizeof two); return two;
    default: memcpy(&four, bytes, sizeof four); return four;
  }
}

// The mask leaves out the ports that the rule is for.
std::vector<int64_t> ports_left_out(const uint8_t *mask) {
  return interfaces_in({{~host_number(mask, 4)}});
}

Value protocol_field(const uint8_t *data, const uint8_t *mask) {
  const bool coded = mask[0] == UINT8_MAX && mask[1] == 0;
  if (!coded) return int64_t{host_number(data, 2) - kOtherProtocols};
  for (const Code &code : kProtocols)
    if (code.chip == data[0]) return code.word;
  return int64_t{data[0]};
}

MatchValue masked_value(const Qualifier &qualifier, const uint8_t *data, const uint8_t *mask) {
  MatchValue value;
  memcpy(value.address.data(), data, kAddressBytes);
  memcpy(value.address_mask.data(), mask, kAddressBytes);
  const uint32_t width = chip_acl_field_bytes(qualifier.field);
  value.number = host_number(data, width);
  value.mask = host_number(mask, width);
  if (qualifier.bits == 6) {
    value.number >>= kDscpShift;
    value.mask >>= kDscpShift;
  }
  return value;
}

void add_masked(Record &record, const Qualifier &qualifier, const MatchValue &value) {
  record.add(qualifier.keyword, match_field(qualifier.notation, qualifier.bits, value),
             match_text(qualifier.notation, qualifier.bits, value));
}

void add_condition(Record &record, const Qualifier &qualifier, const uint8_t *data,
                   const uint8_t *mask) {
  const char *name = qualifier.keyword;
  switch (qualifier.writing) {
    case Writing::ports: record.add(name, ports_left_out(mask)); return;
    case Writing::protocol: record.add(name, protocol_field(data, mask)); return;
    case Writing::frame_type: record.add(name, code_number(kFrameTypes, data[0])); return;
    case Writing::ip_type: record.add(name, code_number(kIpTypes, data[0])); return;
    case Writing::masked:
      add_masked(record, qualifier, masked_value(qualifier, data, mask));
      return;
  }
}

// DSCP and traffic class are one field: six bits of it are a DSCP.
bool is_shown(const Qualifier &qualifier, const swctl_platform_acl_rule &rule) {
  if (rule.written[qualifier.field] == 0) return false;
  if (qualifier.field != CHIP_ACL_FIELD_TRAFFIC_CLASS) return true;
  const bool low_bits = ((rule.data[qualifier.field][0] | rule.mask[qualifier.field][0]) & 3) != 0;
  return (qualifier.bits == 6) != low_bits;
}

}  // namespace

std::vector<Parameter> qualifier_parameters() {
  std::vector<Parameter> all;
  for (const Qualifier &each : kQualifiers)
    all.push_back({.name = each.keyword, .type = type_of(each), .help = each.help});
  return all;
}

std::vector<Condition> conditions_of(const Arguments &arguments) {
  if (arguments.has("dscp") && arguments.has("traffic-class")) {
    throw CommandError(wrong_usage("dscp and traffic-class are one field of the chip",
                                   "traffic-class", {"one of them"}));
  }
  std::vector<Condition> all;
  for (const Qualifier &each : kQualifiers)
    if (arguments.has(each.keyword)) all.push_back({&each, value_of(each, arguments)});
  return all;
}

void write_condition(const Condition &condition, uint32_t unit, int32_t rule) {
  const Qualifier &qualifier = *condition.qualifier;
  qualifier.write(std::string(qualifier.keyword) + " of rule " + std::to_string(rule), unit, rule,
                  condition.value);
}

namespace {

// Six bits of the traffic class are a DSCP, and read as one.
bool reads_as_dscp(const Condition &condition) {
  const Qualifier &qualifier = *condition.qualifier;
  return qualifier.field == CHIP_ACL_FIELD_TRAFFIC_CLASS && qualifier.bits != kDscpBits &&
         ((condition.value.number | condition.value.mask) & 3) == 0;
}

std::string protocol_text(uint32_t number) {
  for (const Code &code : kProtocols)
    if (code.number == number) return code.word;
  return std::to_string(number);
}

std::string condition_text(const Condition &condition) {
  const Qualifier &qualifier = *condition.qualifier;
  const std::string keyword = std::string(qualifier.keyword) + ' ';
  MatchValue value = condition.value;
  if (reads_as_dscp(condition)) {
    value.number >>= kDscpShift;
    value.mask >>= kDscpShift;
    return "dscp " + match_text(Notation::decimal, kDscpBits, value);
  }
  switch (qualifier.writing) {
    case Writing::ports: return keyword + number_list_text(interfaces_in({{value.number}}));
    case Writing::protocol: return keyword + protocol_text(value.number);
    case Writing::frame_type:
    case Writing::ip_type: return keyword + std::to_string(value.number);
    case Writing::masked: break;
  }
  return keyword + match_text(qualifier.notation, qualifier.bits, value);
}

}  // namespace

std::string conditions_text(const std::vector<Condition> &conditions) {
  std::vector<std::string> texts;
  for (const Condition &each : conditions) texts.push_back(condition_text(each));
  return join(texts, " ");
}

Record match_record(const swctl_platform_acl_rule &rule) {
  Record record;
  for (const Qualifier &each : kQualifiers)
    if (is_shown(each, rule))
      add_condition(record, each, rule.data[each.field], rule.mask[each.field]);
  return record;
}

}  // namespace swsh
