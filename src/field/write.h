// SPDX-License-Identifier: MIT
#ifndef SWCTL_SRC_FIELD_WRITE_H
#define SWCTL_SRC_FIELD_WRITE_H

#include <cstddef>
#include <cstdint>

namespace swctl {

// The SDK is told no length: it gets areas that hold its widest field.
inline constexpr size_t kFieldAreaSize = 28;

// Writes one match field of a rule: `size` bytes of value and of mask, the
// rest of both areas zero.
int32_t write_field(uint32_t unit, int32_t rule, uint32_t field, const void *value,
                    const void *mask, size_t size);

// The same for a plain number, in host order.
template <typename T>
int32_t write_number(uint32_t unit, int32_t rule, uint32_t field, T value, T mask) {
  return write_field(unit, rule, field, &value, &mask, sizeof value);
}

}  // namespace swctl

#endif
