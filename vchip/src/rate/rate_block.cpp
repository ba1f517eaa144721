// SPDX-License-Identifier: MIT
#include "rate/rate_block.h"

#include <algorithm>

#include "common/sound.h"

namespace vchip {
namespace {

constexpr uint64_t kPortBucket = 16384;  // bytes, so that the longest frame fits
constexpr uint32_t kLeastByteBurst = 1518;
constexpr uint32_t kLeastFrameBurst = 1;

bool is_whole(const Bandwidth &bandwidth) {
  return bandwidth.rate >= 0 && bandwidth.rate <= kMaxBandwidth;
}

bool is_whole_storm(const Storm &storm) {
  return storm.rate <= kMaxStormRate;
}

}  // namespace

// Power-on values differ from what management programs set, so that a missing
// initialisation shows.
void RateBlock::power_on() {
  storm_mode_ = kCountPackets;
  Port first = {{0, kMaxBandwidth, {}}, {0, kMaxBandwidth, {}}, {}};
  for (Storm &storm : first.storm) storm.rate = kMaxStormRate;
  for (Port &port : ports_) {
    port = first;
    port.ingress.bucket.fill_up(0);
    port.egress.bucket.fill_up(0);
  }
  fill_storms(0);
}

void RateBlock::fill_storms(uint64_t now) {
  for (int32_t port = 0; port < VCHIP_PORTS; ++port)
    for (uint32_t type = 0; type < kStormTypes; ++type) storm(port, type).bucket.fill_up(now);
}

Fill RateBlock::fill_of(const Bandwidth &limit) {
  return fill_of_bytes(static_cast<uint32_t>(limit.rate), kPortBucket);
}

void RateBlock::set_rate(Bandwidth &limit, int32_t rate, uint64_t now) {
  const Fill before = fill_of(limit);
  limit.rate = rate;
  limit.bucket.change(before, fill_of(limit), now);
}

Fill RateBlock::storm_fill(int32_t port, uint32_t type) const {
  const uint32_t rate = storm(port, type).rate;
  const uint32_t burst = storm_burst_[type];
  return storm_mode_ == kCountPackets ? fill_of_frames(rate, std::max(burst, kLeastFrameBurst))
                                      : fill_of_bytes(rate, std::max(burst, kLeastByteBurst));
}

uint64_t RateBlock::storm_tokens(uint32_t wire) const {
  return storm_mode_ == kCountPackets ? kTokensPerFrame : wire * kTokensPerByte;
}

void RateBlock::set_storm_rate(int32_t port, uint32_t type, uint32_t rate, uint64_t now) {
  const Fill before = storm_fill(port, type);
  storm(port, type).rate = rate;
  storm(port, type).bucket.change(before, storm_fill(port, type), now);
}

void RateBlock::set_storm_burst(uint32_t type, uint32_t size, uint64_t now) {
  std::array<Fill, VCHIP_PORTS> before;
  for (int32_t port = 0; port < VCHIP_PORTS; ++port)
    before[static_cast<size_t>(port)] = storm_fill(port, type);
  storm_burst_[type] = size;
  for (int32_t port = 0; port < VCHIP_PORTS; ++port)
    storm(port, type).bucket.change(before[static_cast<size_t>(port)], storm_fill(port, type), now);
}

void RateBlock::set_storm_mode(uint32_t mode, uint64_t now) {
  if (mode == storm_mode_) return;
  storm_mode_ = mode;
  fill_storms(now);
}

bool RateBlock::sound() const {
  return storm_mode_ <= kCountPackets && are_at_most(storm_burst_, kMaxStormBurst) &&
         std::ranges::all_of(ports_, [](const Port &port) {
           return is_whole(port.ingress) && is_whole(port.egress) &&
                  std::ranges::all_of(port.storm, is_whole_storm);
         });
}

}  // namespace vchip
