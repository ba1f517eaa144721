// SPDX-License-Identifier: MIT
// Implements the sample list but sample_absent.
#include <cerrno>
#include <cstring>

#include "sample/sample.h"

int32_t sample_scalars(uint32_t unit, int32_t port, uint32_t mask, uint32_t *value,
                       uint32_t *bits) {
  if (value != nullptr) *value = unit + static_cast<uint32_t>(port);
  if (bits != nullptr) *bits = ~mask;
  errno = ERANGE;
  return 0;
}

int32_t sample_arrays(const uint16_t *list, const uint8_t *mac, int32_t count, int32_t *found) {
  for (int32_t i = 0; i < count; ++i) found[i] = mac[i] - list[0];
  return count;
}

int32_t sample_update(uint32_t *mask, int8_t *steps) {
  *mask |= 2;
  steps[1] = static_cast<int8_t>(-steps[0]);
  return 0;
}

int32_t sample_record(uint32_t unit, const sample_entry *entry, sample_entry *found) {
  if (entry == nullptr) return -4;
  *found = *entry;
  found->port += static_cast<int32_t>(unit);
  return 0;
}

int32_t sample_table(int32_t count, sample_entry *table, sample_entry *last) {
  for (int32_t i = 0; i < count; ++i) {
    table[i] = *last;
    table[i].port = i;
  }
  if (count > 0) last->port = count - 1;
  return 0;
}

int32_t sample_by_value(sample_address address, sample_block block, uint32_t after) {
  return address.byte[15] + block.data[6259] + block.last + static_cast<int32_t>(after);
}

int32_t sample_area(uint32_t size, const void *data) {
  int32_t sum = 0;
  for (uint32_t i = 0; i < size; ++i) sum += static_cast<const uint8_t *>(data)[i];
  return sum;
}

int32_t sample_widths(int8_t tiny, uint8_t byte, int16_t half, int64_t wide, uint64_t *counter) {
  *counter = 0xfedcba9876543210u;
  return tiny + byte + half + static_cast<int32_t>(wide >> 32);
}

int32_t sample_result(int32_t value, uint32_t *written) {
  *written = 4;
  return value;
}

int32_t sample_nested(int32_t value) {
  uint32_t written = 0;
  sample_result(value, &written);
  return sample_result(value, &written) + static_cast<int32_t>(written);
}

int32_t sample_words(uint32_t from, uint32_t *result) {
  *result = from;
  return 0;
}

extern "C" SWCTL_API const char *swctl_platform_result_text(int32_t result);

const char *swctl_platform_result_text(int32_t result) {
  return result == -4 ? "no entry" : nullptr;
}
