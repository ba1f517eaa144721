// SPDX-License-Identifier: MIT
// Where the kernel that runs keeps things, as its own description of its types says
// (BTF).
#ifndef VCHIPD_KERNEL_LAYOUT_H
#define VCHIPD_KERNEL_LAYOUT_H

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

namespace vchipd {

// A member of a structure, in bits from its begin.
struct Member {
  uint32_t offset;
  uint32_t bits;  // of a bit field; 0: it is none
};

// The members of a structure of those names, those of structures without a name in it
// included; nothing if one is missing, or the bytes are no BTF.
bool find_members(std::span<const uint8_t> btf, std::string_view structure,
                  std::span<const std::string_view> names, std::span<Member> members);

// What a program in the kernel has to know of a packet beyond what it is shown.
struct PacketLayout {
  uint32_t head;  // offsets in bytes
  uint32_t data;
  uint32_t checksum_start;
  uint32_t checksum_offset;
  uint32_t checksum_state;  // the byte of the state of the checksum,
  uint32_t checksum_mask;   // its bits there,
  uint32_t checksum_asked;  // and their value if it is still to be completed
};

// Of the kernel that runs, if it tells; looked up once.
const std::optional<PacketLayout> &packet_layout();

}  // namespace vchipd

#endif
