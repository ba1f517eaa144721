// SPDX-License-Identifier: MIT
#include "chip/address_table.h"

#include <algorithm>

#include "chip/limits.h"
#include "chip/progress.h"
#include "mac_text.h"

namespace swsh {
namespace {

constexpr uint32_t kPortBits = 32;

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

// What a walk fills.
template <typename Entry>
struct Gathering {
  Progress progress;
  std::vector<Entry> entries;

  explicit Gathering(const char *what) : progress(what) {}
};

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

int32_t gather_address(uint32_t, chip_l2_ucast_entry *entry, void *data) {
  auto &gathering = *static_cast<Gathering<user_l2_addr_t> *>(data);
  gathering.entries.push_back(record_of(*entry));
  gathering.progress.step();
  return 0;
}

int32_t gather_group(uint32_t, chip_l2_mcast_entry *entry, void *data) {
  auto &gathering = *static_cast<Gathering<chip_l2_mcast_entry> *>(data);
  gathering.entries.push_back(*entry);
  gathering.progress.step();
  return 0;
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
  Gathering<user_l2_addr_t> gathering("addresses read");
  rtk_l2_traverse(0, gather_address, &gathering);
  return std::move(gathering.entries);
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

std::vector<chip_l2_mcast_entry> read_groups(uint32_t unit) {
  Gathering<chip_l2_mcast_entry> gathering("groups read");
  rtk_l2_mcast_traverse(unit, gather_group, &gathering);
  return std::move(gathering.entries);
}

Record group_record(const Interfaces &interfaces, const uint8_t *mac, int64_t vid,
                    uint32_t portmask) {
  Record record;
  record.add("vlan", vid);
  record.add("mac", mac_text(mac));
  record.add("ports", interfaces_of(interfaces, portmask));
  return record;
}

uint32_t portmask_of(const std::vector<int64_t> &interfaces) {
  uint32_t mask = 0;
  for (const Port &port : ports_of(interfaces)) mask |= 1u << static_cast<uint32_t>(port.chip);
  return mask;
}

std::vector<int64_t> interfaces_of(const Interfaces &interfaces, uint32_t portmask) {
  std::vector<int64_t> all;
  for (uint32_t port = 0; port < kPortBits; ++port) {
    if ((portmask >> port & 1) == 0) continue;
    const std::optional<int64_t> interface = interfaces.of(static_cast<int32_t>(port));
    if (interface) all.push_back(*interface);
  }
  std::sort(all.begin(), all.end());
  return all;
}

}  // namespace swsh
