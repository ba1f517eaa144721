// SPDX-License-Identifier: MIT
#include "forward/flood_block.h"

#include "core/board.h"
#include "core/dump.h"

namespace vchip {

void FloodBlock::reset() {
  for (uint32_t &mask : isolation_) mask = kAllPorts;
  miss_index_.fill(0);
}

void FloodBlock::dump(const char *name, Dump &unit) const {
  unit.object(name, [this](Dump &block) {
    block.objects("isolation", VCHIP_PORTS, [this](Dump &entry, size_t port) {
      entry.number("port", static_cast<int64_t>(port));
      entry.ports("may_send_to", isolation_[port]);
    });
    block.numbers("miss_index", {miss_index_.begin(), miss_index_.end()});
  });
}

}  // namespace vchip
