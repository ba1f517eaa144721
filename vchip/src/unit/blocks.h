// SPDX-License-Identifier: MIT
// The hardware blocks of a unit. A block is a class that holds its state as
// plain fixed-width words and nothing else, and has
//
//   static constexpr uint32_t kLayout   raised when the meaning of its bytes changes
//   void power_on()                     the state after power-on, from zeroes; what
//                                       stays 0 is not written, so that its memory
//                                       is not taken
//   void repair()                       makes the state whole again after a call
//                                       was killed half-way
//   bool sound() const                  whether every word that is used as an index
//                                       or a port leads to a place that is there,
//                                       and every code and number is one that a
//                                       call would take; also when a call was
//                                       killed half-way. A block whose words may
//                                       hold anything has none
//   void dump(const char *name, Dump &unit) const
//                                       writes its picture under `name`
//   void check(Findings &findings) const
//                                       names every word, and what calls leave in
//                                       it, a killed one that was repaired too
//
// A block knows no other and no lock: what visits it holds the lock, and what
// concerns two blocks is done by who visits both. To add one, write its files,
// include its header here and give it a line.
#ifndef VCHIP_UNIT_BLOCKS_H
#define VCHIP_UNIT_BLOCKS_H

#include "acl/acl_block.h"
#include "acl/acl_count_block.h"
#include "acl/meter_block.h"
#include "counter/counter_block.h"
#include "forward/flood_block.h"
#include "forward/learning_block.h"
#include "forward/mask_block.h"
#include "l2/group_block.h"
#include "l2/l2_block.h"
#include "mcast/mcast_ip_block.h"
#include "mirror_trunk/mirror_block.h"
#include "mirror_trunk/trunk_block.h"
#include "port/cable_block.h"
#include "port/port_block.h"
#include "qos/qos_block.h"
#include "rate/rate_block.h"
#include "stp/stp_block.h"
#include "stp/trap_block.h"
#include "switch/attack_block.h"
#include "switch/defaults_block.h"
#include "switch/switch_block.h"
#include "tag/tag_block.h"
#include "traffic/drop_block.h"
#include "traffic/queue_block.h"
#include "traffic/time_block.h"
#include "vlan/conversion_block.h"
#include "vlan/vlan_block.h"

//     type         member and name in a dump
#define VCHIP_BLOCKS(BLOCK)          \
  BLOCK(AclBlock, acl)               \
  BLOCK(MeterBlock, meter)           \
  BLOCK(AclCountBlock, acl_count)    \
  BLOCK(PortBlock, port)             \
  BLOCK(SwitchBlock, switch_wide)    \
  BLOCK(RateBlock, rate)             \
  BLOCK(DefaultsBlock, defaults)     \
  BLOCK(CableBlock, cable)           \
  BLOCK(PortCounterBlock, counter)   \
  BLOCK(FloodBlock, flood)           \
  BLOCK(MaskBlock, forward_mask)     \
  BLOCK(LearningBlock, learning)     \
  BLOCK(TagBlock, tag)               \
  BLOCK(AttackBlock, attack)         \
  BLOCK(L2Block, l2)                 \
  BLOCK(GroupBlock, group)           \
  BLOCK(VlanBlock, vlan)             \
  BLOCK(ConversionBlock, conversion) \
  BLOCK(QosBlock, qos)               \
  BLOCK(StpBlock, stp)               \
  BLOCK(TrapBlock, trap)             \
  BLOCK(MirrorBlock, mirror)         \
  BLOCK(TrunkBlock, trunk)           \
  BLOCK(McastIpBlock, mcast_ip)      \
  BLOCK(TimeBlock, time)             \
  BLOCK(DropBlock, drops)            \
  BLOCK(QueueBlock, queue)

#endif
