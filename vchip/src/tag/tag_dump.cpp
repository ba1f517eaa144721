// SPDX-License-Identifier: MIT
#include "document/dump.h"
#include "tag/tag_block.h"

namespace vchip {
namespace {

void dump_keep(Dump &entry, const char *name, const TagKeep &keep) {
  entry.object(name, [&](Dump &tags) {
    tags.flag("inner", keep.inner != 0);
    tags.flag("outer", keep.outer != 0);
  });
}

void dump_port(Dump &entry, const PortTags &port) {
  entry.number("outer_pvid", port.outer_pvid);
  entry.flag("ingress_filter", port.ingress_filter != 0);
  entry.flag("double_tag", port.double_tag != 0);
  dump_keep(entry, "ingress_keep", port.ingress_keep);
  dump_keep(entry, "egress_keep", port.egress_keep);
  entry.number("outer_tag_status", port.outer_tag_status);
  entry.number("ingress_inner_tpids", port.ingress_inner_tpids);
  entry.number("egress_inner_tpid", port.egress_inner_tpid);
  entry.number("egress_outer_tpid", port.egress_outer_tpid);
}

}  // namespace

void TagBlock::dump(const char *name, Dump &unit) const {
  unit.object(name, [this](Dump &block) {
    block.objects("ports", VCHIP_PORTS, [this](Dump &entry, size_t port) {
      entry.number("port", static_cast<int64_t>(port));
      dump_port(entry, ports_[port]);
    });
    block.numbers("inner_tpid", {inner_.begin(), inner_.end()});
    block.numbers("outer_tpid", {outer_.begin(), outer_.end()});
  });
}

}  // namespace vchip
