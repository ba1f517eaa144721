// SPDX-License-Identifier: MIT
#include "chip/address_table.h"

#include <algorithm>

#include "chip/l2_walk.h"
#include "chip/limits.h"
#include "mac_text.h"

namespace swsh {
namespace {

AddressKind kind_of(const user_l2_addr_t &entry) {
  if ((entry.flags & USER_L2_FLAG_STATIC) == 0) return kDynamic;
  return STATIC_ENTRY_TEST(entry.flags) ? kStatic : kOther;
}

bool is_violation(const user_l2_addr_t &entry) {
  return (entry.flags & L2_FLAG_VIOLATION) != 0;
}

std::string kind_text(AddressKind kind) {
  switch (kind) {
    case kDynamic: return "dynamic";
    case kStatic: return "static";
    case kOther: return "other";
    case kViolation: break;
  }
  return "violation";
}

std::string flags_text(uint32_t flags) {
  char text[sizeof "0x00000000"];
  snprintf(text, sizeof text, "0x%08x", flags);
  return text;
}

Value interface_value(const Interfaces &interfaces, int32_t chip_port) {
  const std::optional<int64_t> interface = interfaces.of(chip_port);
  return interface ? Value(*interface) : Value(nullptr);
}

user_l2_addr_t record_of(const chip_l2_ucast_entry &entry) {
  user_l2_addr_t record = {};
  record.flags = entry.flags;
  std::copy(std::begin(entry.mac), std::end(entry.mac), record.mac);
  record.vid = static_cast<uint16_t>(entry.vid);
  record.port = entry.port;
  record.tgid = entry.trunk;
  record.aux = entry.aux;
  return record;
}

}  // namespace

Mac mac_of(const Arguments &arguments, const std::string &name) {
  Mac mac = {};
  const std::vector<int64_t> &bytes = arguments.numbers(name);
  for (size_t i = 0; i < mac.size(); ++i) mac[i] = static_cast<uint8_t>(bytes.at(i));
  return mac;
}

std::string entry_text(const uint8_t *mac, int64_t vid) {
  return mac_text(mac) + " in VLAN " + std::to_string(vid);
}

bool AddressFilter::fits(const user_l2_addr_t &entry) const {
  const bool kind_fits =
      !kind || *kind == kind_of(entry) || (*kind == kViolation && is_violation(entry));
  return kind_fits && (!vid || *vid == entry.vid) && (!chip_port || *chip_port == entry.port) &&
         (!trunk || *trunk == entry.tgid) &&
         (!mac || std::equal(mac->begin(), mac->end(), entry.mac));
}

std::vector<Parameter> filter_keywords() {
  return {
      {.name = "vlan", .type = number(0, kLastVlanId), .help = "Only addresses in this VLAN"},
      {.name = "port", .type = interface_number(0), .help = "Only on this port, 0 for the CPU"},
      {.name = "trunk", .type = number(0, kLastTrunk), .help = "Only on this trunk group"},
      {.name = "type",
       .type = choice({{"dynamic", kDynamic, "Learned"},
                       {"static", kStatic, "Configured"},
                       {"other", kOther, "Configured to be filtered"},
                       {"violation", kViolation, "Marked by the chip, of any type"}}),
       .help = "Only addresses of this type"},
      {.name = "address", .type = mac_address(), .help = "Only this address"},
  };
}

AddressFilter filter_of(const Arguments &arguments) {
  AddressFilter filter;
  if (arguments.has("vlan")) filter.vid = arguments.number("vlan");
  if (arguments.has("port")) filter.chip_port = port_of(arguments.number("port")).chip;
  if (arguments.has("trunk")) filter.trunk = arguments.number("trunk");
  if (arguments.has("type")) filter.kind = arguments.number("type");
  if (arguments.has("address")) filter.mac = mac_of(arguments, "address");
  return filter;
}

std::vector<user_l2_addr_t> read_addresses() {
  std::vector<user_l2_addr_t> addresses;
  for (const chip_l2_ucast_entry &entry : read_address_entries())
    addresses.push_back(record_of(entry));
  return addresses;
}

Record address_record(const Interfaces &interfaces, const user_l2_addr_t &entry) {
  Record record;
  record.add("vlan", int64_t{entry.vid});
  record.add("mac", mac_text(entry.mac));
  record.add("port", interface_value(interfaces, entry.port));
  record.add("trunk", int64_t{entry.tgid});
  record.add("type", kind_text(kind_of(entry)));
  record.add("violation", is_violation(entry));
  record.add_detail("flags", int64_t{entry.flags}, flags_text(entry.flags));
  record.add_detail("aux", int64_t{entry.aux});
  record.add_detail("chip_port", int64_t{entry.port});
  return record;
}

Record group_record(const Interfaces &interfaces, const uint8_t *mac, int64_t vid,
                    uint32_t portmask) {
  Record record;
  record.add("vlan", vid);
  record.add("mac", mac_text(mac));
  record.add("ports", interfaces_of(interfaces, portmask));
  return record;
}

}  // namespace swsh
