// SPDX-License-Identifier: MIT
#include <string>
#include <vector>

#include "counter/counter_block.h"
#include "document/dump.h"

namespace vchip {
namespace {

const char *name_of(uint32_t counter) {
  switch (counter) {
    case CHIP_COUNTER_RX_OCTETS: return "rx-octets";
    case CHIP_COUNTER_RX_UNICAST: return "rx-unicast";
    case CHIP_COUNTER_RX_MULTICAST: return "rx-multicast";
    case CHIP_COUNTER_RX_BROADCAST: return "rx-broadcast";
    case CHIP_COUNTER_TX_OCTETS: return "tx-octets";
    case CHIP_COUNTER_TX_UNICAST: return "tx-unicast";
    case CHIP_COUNTER_TX_MULTICAST: return "tx-multicast";
    case CHIP_COUNTER_TX_BROADCAST: return "tx-broadcast";
    case CHIP_COUNTER_SYMBOL_ERRORS: return "symbol-errors";
    case CHIP_COUNTER_FRAGMENTS: return "fragments";
    case CHIP_COUNTER_OVERSIZE: return "oversize";
    case CHIP_COUNTER_CHECKSUM_ERRORS: return "checksum-errors";
    default: return nullptr;
  }
}

void dump_counter(Dump &entry, uint32_t counter, uint64_t value) {
  entry.number("counter", counter);
  if (const char *name = name_of(counter)) entry.text("name", name);
  // As text, since JSON numbers do not hold 64 bits everywhere.
  entry.text("value", std::to_string(value));
}

}  // namespace

// Only counters that counted.
void PortCounterBlock::dump(const char *name, Dump &unit) const {
  unit.objects(name, VCHIP_PORTS, [this](Dump &entry, size_t place) {
    const auto port = static_cast<int32_t>(place);
    std::vector<uint32_t> used;
    for (uint32_t each = 0; each < CHIP_PORT_COUNTERS; ++each)
      if (count(port, each) != 0) used.push_back(each);
    entry.number("port", port);
    entry.objects("counters", used.size(), [&](Dump &counter, size_t index) {
      dump_counter(counter, used[index], count(port, used[index]));
    });
  });
}

}  // namespace vchip
