// SPDX-License-Identifier: MIT
#include "capture_blocks.h"

#include <cstring>

#include "usage_error.h"

namespace vchipctl {
namespace {

constexpr size_t kLeastBlock = 12;
constexpr size_t kMostBlock = 1u << 20;
constexpr uint32_t kStatistics = 5;
constexpr uint32_t kFrame = 6;
constexpr size_t kStatisticsOptions = 20;  // where they begin
constexpr uint16_t kMissed = 5;            // their option

template <typename Value>
Value value_at(const uint8_t *bytes) {
  Value value;
  memcpy(&value, bytes, sizeof value);
  return value;
}

size_t block_size(const std::vector<uint8_t> &bytes, size_t at) {
  const size_t size = value_at<uint32_t>(bytes.data() + at + 4);
  if (size < kLeastBlock || size > kMostBlock) throw Refused("vchipd has sent what is no capture");
  return size;
}

uint64_t missed_of(const uint8_t *block, size_t size) {
  for (size_t at = kStatisticsOptions; at + 4 + sizeof(uint64_t) <= size - 4;) {
    const auto code = value_at<uint16_t>(block + at);
    const auto length = value_at<uint16_t>(block + at + 2);
    if (code == kMissed) return value_at<uint64_t>(block + at + 4);
    at += 4 + (length + 3u) / 4 * 4;
  }
  return 0;
}

}  // namespace

void CaptureBlocks::look(const uint8_t *block, size_t size) {
  const auto type = value_at<uint32_t>(block);
  if (type == kFrame) ++frames_;
  if (type == kStatistics && size > kStatisticsOptions) missed_ += missed_of(block, size);
}

std::vector<uint8_t> CaptureBlocks::take(const uint8_t *bytes, size_t size) {
  rest_.insert(rest_.end(), bytes, bytes + size);
  size_t end = 0;
  while (rest_.size() - end >= kLeastBlock) {
    const size_t block = block_size(rest_, end);
    if (rest_.size() - end < block) break;
    look(rest_.data() + end, block);
    end += block;
  }
  const auto boundary = rest_.begin() + static_cast<ptrdiff_t>(end);
  std::vector<uint8_t> whole(rest_.begin(), boundary);
  rest_.erase(rest_.begin(), boundary);
  return whole;
}

}  // namespace vchipctl
