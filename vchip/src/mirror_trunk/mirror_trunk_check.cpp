// SPDX-License-Identifier: MIT
#include "common/numbers.h"
#include "document/findings.h"
#include "mirror_trunk/mirror_block.h"
#include "mirror_trunk/trunk_block.h"

namespace vchip {

void MirrorBlock::check(Findings &findings) const {
  findings.each("groups", groups_, [&](const chip_mirror_entry &group, size_t) {
    findings.flag("enable", group.enable);
    findings.at_most("mirroring_port", group.mirroring_port, VCHIP_PORTS - 1);
    findings.ports("ingress", group.ingress);
    findings.ports("egress", group.egress);
    findings.flag("field7", group.field7);
    findings.flag("field12", group.field12);
    findings.flag("field15", group.field15);
    findings.any("field5", group.field5);
    findings.any("field6", group.field6);
    findings.any("field8", group.field8);
    findings.any("field9", group.field9);
    findings.any("field10", group.field10);
    findings.any("field11", group.field11);
    findings.any("field13", group.field13);
    findings.any("field14", group.field14);
  });
}

// A port is in one trunk at most.
void TrunkBlock::check(Findings &findings) const {
  uint32_t before = 0;
  findings.each("members", members_, [&](const uint32_t &ports, size_t) {
    findings.bits("", ports, kAllPorts & ~kCpuPortBit);
    findings.rule((ports & before) == 0, "", "has a port of another trunk");
    before |= ports;
  });
  findings.each_at_most("hash_fields", hash_fields_, kHashFields);
}

}  // namespace vchip
