// SPDX-License-Identifier: MIT
// Priorities, and the queues that frames leave a port through.
#ifndef VCHIP_QOS_QOS_BLOCK_H
#define VCHIP_QOS_QOS_BLOCK_H

#include <swctl-vchip/vchip.h>

#include <array>
#include <cstdint>

#include "common/numbers.h"

namespace vchip {

class Dump;
class Findings;

inline constexpr uint32_t kDropEligibility = 2;
inline constexpr uint32_t kCodePoints = 64;
inline constexpr uint32_t kPriorityGroups = 4;
inline constexpr uint32_t kPrioritySources = 5;
inline constexpr uint32_t kMaxSourceWeight = 7;
inline constexpr uint32_t kMaxQueueWeight = 127;
inline constexpr uint32_t kMaxAlgorithm = 1;
inline constexpr uint32_t kMaxRemarkSource = 1;

// Written word by word and in one locked step; each word is valid on its own.
struct QosPort {
  uint32_t outer_priority;
  uint32_t inner_priority;
  uint32_t group;
  uint32_t algorithm;
  std::array<uint32_t, kQueues> weights;
  std::array<uint32_t, kQueues> strict;
  uint32_t remarks;
};

// What holds for all ports.
struct QosMaps {
  std::array<std::array<uint32_t, kPriorities>, kDropEligibility> outer;
  std::array<uint32_t, kPriorities> inner;
  std::array<uint32_t, kCodePoints> dscp;
  std::array<uint32_t, kPriorities> queue;
  std::array<std::array<uint32_t, kPrioritySources>, kPriorityGroups> groups;
  uint32_t remark_source;
};

class QosBlock {
 public:
  static constexpr uint32_t kLayout = 1;
  void power_on();
  void repair() {}  // single words, each valid on its own
  bool sound() const;
  void dump(const char *name, Dump &unit) const;
  void check(Findings &findings) const;

  const QosMaps &maps() const { return maps_; }
  QosMaps &maps() { return maps_; }
  const QosPort &port(int32_t port) const { return ports_[static_cast<size_t>(port)]; }
  QosPort &port(int32_t port) { return ports_[static_cast<size_t>(port)]; }

 private:
  QosMaps maps_;
  std::array<QosPort, VCHIP_PORTS> ports_;
};

}  // namespace vchip

#endif
