// SPDX-License-Identifier: MIT
/**
 * @file view.h
 * @brief Views of the virtual chip: what it holds.
 *
 * Read-only pictures of the chip's own state, for tests that judge a program
 * by what it did to the chip. A picture is a copy taken in one locked step;
 * it does not change afterwards. None of these functions goes through the
 * SDK calls. A unit or port that does not exist, or an image that cannot be
 * used, throws std::out_of_range or std::runtime_error.
 */
#ifndef SWCTL_VCHIP_VIEW_H
#define SWCTL_VCHIP_VIEW_H

#include <swctl-vchip/acl_view.h>
#include <swctl-vchip/attack_view.h>
#include <swctl-vchip/cable_view.h>
#include <swctl-vchip/counter_view.h>
#include <swctl-vchip/defaults_view.h>
#include <swctl-vchip/forward_view.h>
#include <swctl-vchip/l2_view.h>
#include <swctl-vchip/mcast_ip_view.h>
#include <swctl-vchip/mirror_trunk_view.h>
#include <swctl-vchip/qos_view.h>
#include <swctl-vchip/queue_view.h>
#include <swctl-vchip/rate_view.h>
#include <swctl-vchip/rule_view.h>
#include <swctl-vchip/stp_view.h>
#include <swctl-vchip/tag_view.h>
#include <swctl-vchip/vlan_view.h>
#include <swctl/types.h>

#include <string>
#include <vector>

namespace vchip {

// One port. Abilities are words with the bits of VCHIP_ABILITY_*, speeds the
// SDK's codes.
struct PortView {
  int32_t port;       // chip port
  int32_t interface;  // logical interface, -1 for none
  bool admin;
  bool autonegotiation;
  uint32_t advertised;
  uint32_t forced_speed;
  uint32_t forced_duplex;
  uint32_t forced_flow_control;
  bool combo;
  uint32_t medium;
  bool loopback;
  bool back_pressure;
  uint32_t crossover;
  bool eee;
  bool cable;
  bool partner_autonegotiation;
  uint32_t partner_ability;
  // What the rest resolves to; speed and duplex are 0 while the link is down.
  bool link;
  uint32_t speed;
  uint32_t duplex;
  // Flow control in operation.
  bool pause_transmit;
  bool pause_receive;
};
SWCTL_API PortView port(uint32_t unit, int32_t port);

// What holds for a whole unit.
struct SwitchView {
  bool tag_counts_in_length;
  std::vector<uint32_t> max_length;  // by class of link speeds
  std::vector<uint32_t> cpu_format;  // by kind of frame
};
SWCTL_API SwitchView switch_wide(uint32_t unit);

// One record of the operation trace.
struct TraceRecord {
  std::string location;
  std::string message;
};
struct PlatformView {
  bool trace_on;
  std::vector<TraceRecord> trace;  // oldest first
  uint64_t log_lines;              // given to the log since the last reset
};
SWCTL_API PlatformView platform();

// The whole chip as a JSON document, indented by `indent` spaces (-1: one line).
SWCTL_API std::string dump_json(int indent);
// The same with one block only, or the blocks of one unit only, or both: what is
// left out is left out of the document.
struct DumpPart {
  int32_t unit = -1;  // -1: all
  std::string block;  // empty: all
};
SWCTL_API std::string dump_json(int indent, const DumpPart &part);

}  // namespace vchip

#endif
