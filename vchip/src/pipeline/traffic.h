// SPDX-License-Identifier: MIT
// The frames of a unit that are on their way, which belong to this process, and
// what it has compiled for it.
#ifndef VCHIP_PIPELINE_TRAFFIC_H
#define VCHIP_PIPELINE_TRAFFIC_H

#include <swctl-vchip/vchip.h>

#include <array>
#include <cstdint>

#include "pipeline/compiled.h"
#include "pipeline/frame_ring.h"
#include "pipeline/scheduler.h"

namespace vchip {

inline constexpr uint32_t kQueueFrames = 1000;

struct PortTraffic {
  std::array<FrameRing, kQueues> queues;
  uint32_t waiting = 0;  // frames in all of them
  Scheduler scheduler;
  FrameRing left;  // to be taken
};

struct UnitTraffic {
  std::array<PortTraffic, VCHIP_PORTS> ports;
  FrameRing turning;           // left a port in loopback, will arrive at it
  uint32_t waiting_ports = 0;  // a bit for each with frames in its queues
  uint32_t left_ports = 0;     // a bit for each with frames to be taken
  uint64_t clock = 0;          // up to which its queues were served
  Compiled tables;
  uint64_t revision = 0;  // of the settings that they were compiled from; 0: none
};

}  // namespace vchip

#endif
