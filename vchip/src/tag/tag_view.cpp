// SPDX-License-Identifier: MIT
#include <swctl-vchip/tag_view.h>

#include "chip/viewing.h"

namespace vchip {
namespace {

TagKeepView view_of(const TagKeep &keep) {
  return {keep.inner != 0, keep.outer != 0};
}

}  // namespace

PortTagView tags(uint32_t unit, int32_t port) {
  Viewing chip;
  const TagBlock &block = chip.unit(unit).tag;
  expect_port(port);
  const PortTags &own = block.port(port);
  return {own.outer_pvid,           own.ingress_filter != 0,
          own.double_tag != 0,      view_of(own.ingress_keep),
          view_of(own.egress_keep), own.outer_tag_status,
          own.ingress_inner_tpids,  own.egress_inner_tpid,
          own.egress_outer_tpid};
}

TpidView tpids(uint32_t unit) {
  Viewing chip;
  const TagBlock &block = chip.unit(unit).tag;
  return {{block.inner().begin(), block.inner().end()},
          {block.outer().begin(), block.outer().end()}};
}

}  // namespace vchip
