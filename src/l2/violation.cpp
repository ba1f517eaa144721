// SPDX-License-Identifier: MIT
// Violation entries are found in a dump of the table, not in a walk.
#include <swctl/l2.h>

namespace {

constexpr int kMacText = 18;

bool is_violation(const user_l2_addr_t &record, int32_t port) {
  constexpr uint32_t kLookedAt = L2_FLAG_VIOLATION | USER_L2_FLAG_VIOLATION_IGNORED;
  return record.port == port && (record.flags & kLookedAt) == L2_FLAG_VIOLATION;
}

// Calls visit(record) for each violation entry of the port; none if the dump
// cannot be written or read.
template <typename Visit>
void each_violation(int32_t port, Visit visit) {
  if (user_mac_table_show(0, USER_MACTABLE_PATH) < 0) return;
  FILE *file = fopen(USER_MACTABLE_PATH, "r");
  if (file == nullptr) return;
  user_l2_addr_t record = {};
  while (user_l2_mactable_fread(&record, file, 0) != 0) {
    if (is_violation(record, port)) visit(record);
  }
  fclose(file);
}

}  // namespace

int32_t user_mac_violate_count_get_by_port(int32_t port, uint32_t *count) {
  uint32_t found = 0;
  each_violation(port, [&](const user_l2_addr_t &) { ++found; });
  *count = found;
  return 0;
}

int32_t user_mac_violate_del_by_port(int32_t port) {
  each_violation(port, [](const user_l2_addr_t &record) {
    const uint8_t *mac = record.mac;
    char text[kMacText] = {};
    snprintf(text, sizeof text, "%02x:%02x:%02x:%02x:%02x:%02x", mac[0], mac[1], mac[2], mac[3],
             mac[4], mac[5]);
    // The text goes where the address belongs; the header tells callers so.
    user_mac_addr_delete(0, reinterpret_cast<const uint8_t *>(text), record.vid);
  });
  return 0;
}
