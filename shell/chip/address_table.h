// SPDX-License-Identifier: MIT
// The entries of the layer-2 table as the shell shows and selects them.
#ifndef SWCTL_SHELL_CHIP_ADDRESS_TABLE_H
#define SWCTL_SHELL_CHIP_ADDRESS_TABLE_H

#include <swctl/l2.h>
#include <swctl/mcast.h>

#include <array>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "chip/ports.h"
#include "command/table.h"

namespace swsh {

using Mac = std::array<uint8_t, SWCTL_MAC_BYTES>;

// The bytes of a parameter of the kind mac.
Mac mac_of(const Arguments &arguments, const std::string &name);

// "02:00:5e:00:00:01 in VLAN 10"
std::string entry_text(const uint8_t *mac, int64_t vid);

enum AddressKind : int64_t { kDynamic, kStatic, kOther, kViolation };

// Which addresses a command is about; what is not given fits every entry.
struct AddressFilter {
  std::optional<int64_t> vid;
  std::optional<int32_t> chip_port;
  std::optional<int64_t> trunk;
  std::optional<int64_t> kind;
  std::optional<Mac> mac;

  bool fits(const user_l2_addr_t &entry) const;
};

// The keywords that make up a filter, and the filter that they make.
std::vector<Parameter> filter_keywords();
AddressFilter filter_of(const Arguments &arguments);

// The entries of read_address_entries() as the library gives them.
std::vector<user_l2_addr_t> read_addresses();

Record address_record(const Interfaces &interfaces, const user_l2_addr_t &entry);

Record group_record(const Interfaces &interfaces, const uint8_t *mac, int64_t vid,
                    uint32_t portmask);

}  // namespace swsh

#endif
