// SPDX-License-Identifier: MIT
#include <swctl/platform/field_records.h>
#include <swctl/types.h>

#include <algorithm>

#include "recording.h"

namespace swprobe {
namespace {

// These take numbers, and bitmaps of words, as bytes in the machine's order;
// addresses of Ethernet and IPv6, and the match field of IP protocols, are
// bytes in an order of their own.
bool takes_numbers_as_bytes(const Call &call) {
  if (call.name == "rtk_acl_ruleEntryField_write")
    return call.in("field") != CHIP_ACL_FIELD_IP_PROTOCOL;
  return call.name == "adp_fp_add_entity_qualify" || call.name == "adp_fp_add_entity_action";
}

void turn(std::vector<int64_t> &bytes) {
  constexpr size_t kWord = 4;
  const size_t size = bytes.size();
  if (size != 2 && size != kWord && size != sizeof(user_pbmp_t)) return;
  const auto each = static_cast<ptrdiff_t>(std::min(size, kWord));
  for (auto at = bytes.begin(); at != bytes.end(); at += each) std::reverse(at, at + each);
}

}  // namespace

void turn_bytes(Call &call) {
  if (!takes_numbers_as_bytes(call)) return;
  for (Argument &argument : call.arguments)
    if (argument.array && argument.width == 1) turn(argument.before);
}

}  // namespace swprobe
