// SPDX-License-Identifier: MIT
#include "l2/l2_block.h"

#include <algorithm>
#include <cstring>

namespace vchip {
namespace {

// Whether a flush request selects an entry; every field counts.
bool selects(const chip_l2_flush_request &request, const chip_l2_ucast_entry &entry) {
  const int32_t interface = request.interfaceIsPort != 0 ? entry.port : entry.trunk;
  const auto wanted = static_cast<int32_t>(request.portOrTrunk);
  return (request.byVlan == 0 || entry.vid == request.vid) &&
         (request.byInterface == 0 || interface == wanted) &&
         (request.includeStatic != 0 || !is_static(entry));
}

chip_l2_ucast_entry make_entry(uint32_t vid, const uint8_t *mac, int32_t port, int32_t trunk) {
  chip_l2_ucast_entry entry = {};
  entry.vid = vid;
  memcpy(entry.mac, mac, sizeof entry.mac);
  entry.port = port;
  entry.trunk = trunk;
  return entry;
}

}  // namespace

void L2Block::power_on() {
  table_.power_on();
  aging_ = kUsualAging;
  for (LearnLimit &limit : limits_) limit = {0, kMaxLearnLimit};
}

int32_t L2Block::add(const chip_l2_ucast_entry &entry) {
  chip_l2_ucast_entry own = make_entry(entry.vid, entry.mac, entry.port, entry.trunk);
  own.flags = entry.flags;
  own.aux = entry.aux;
  own.extra = entry.extra;
  return table_.put(own) ? 0 : VCHIP_E_L2_FULL;
}

int32_t L2Block::remove(uint32_t vid, const uint8_t *mac) {
  const int32_t index = table_.find(vid, mac);
  if (index == kNoIndex) return VCHIP_E_L2_ENTRY;
  table_.remove(index);
  return 0;
}

void L2Block::flush(const chip_l2_flush_request &request) {
  for (int32_t index = table_.next(kNoIndex); index != kNoIndex; index = table_.next(index))
    if (selects(request, table_.entry(index))) table_.remove(index);
}

bool L2Block::may_learn(int32_t port) const {
  const LearnLimit &limit = limits_[port];
  return limit.enabled == 0 || table_.learned(port) < static_cast<uint32_t>(limit.limit);
}

// A trunk is one place, whichever of its members the frame came by.
static bool is_at(const chip_l2_ucast_entry &entry, const Source &source) {
  return entry.trunk == source.trunk && (entry.trunk != 0 || entry.port == source.port);
}

// A station that shows up where it is not bound to be is a violation; one that
// was learned has moved.
Learn L2Block::plan(int32_t index, const Source &source) const {
  if (index == kNoIndex) {
    if (!may_learn(source.port)) return Learn::limit;
    return table_.is_full(source.vid, source.mac) ? Learn::full : Learn::add;
  }
  const chip_l2_ucast_entry &entry = table_.entry(index);
  if (is_static(entry)) {
    const bool violates = !is_at(entry, source) && (entry.flags & kViolationIgnoredFlag) == 0;
    return violates ? Learn::violation : Learn::nothing;
  }
  if (is_at(entry, source)) return Learn::refresh;
  return entry.port != source.port && !may_learn(source.port) ? Learn::limit : Learn::move;
}

void L2Block::apply(Learn learn, int32_t index, const Source &source) {
  switch (learn) {
    case Learn::refresh: return table_.refresh(index);
    case Learn::violation: {
      const chip_l2_ucast_entry &entry = table_.entry(index);
      return table_.set_state(index, entry.state | kViolationState, entry.aux);
    }
    case Learn::move: {
      chip_l2_ucast_entry entry = table_.entry(index);
      entry.port = source.port;
      entry.trunk = source.trunk;
      table_.put(entry);
      return;
    }
    case Learn::add:
      table_.put(make_entry(source.vid, source.mac, source.port, source.trunk));
      return;
    case Learn::nothing:
    case Learn::full:
    case Learn::limit: return;
  }
}

int32_t L2Block::mark(uint32_t vid, const uint8_t *mac, uint32_t state, uint32_t aux) {
  const int32_t index = table_.find(vid, mac);
  if (index == kNoIndex) return VCHIP_E_L2_ENTRY;
  table_.set_state(index, state, aux);
  return 0;
}

}  // namespace vchip
