// SPDX-License-Identifier: MIT
#include "document/dump.h"
#include "qos/qos_block.h"

namespace vchip {
namespace {

template <typename Array>
std::vector<uint32_t> numbers_of(const Array &array) {
  return {array.begin(), array.end()};
}

const char *algorithm_name(uint32_t algorithm) {
  return algorithm == 0 ? "wfq" : "wrr";
}

void dump_group(Dump &entry, const std::array<uint32_t, kPrioritySources> &weights) {
  entry.number("dscp", weights[0]);
  entry.number("inner_tag", weights[1]);
  entry.number("outer_tag", weights[2]);
  entry.number("inner_port", weights[3]);
  entry.number("outer_port", weights[4]);
}

void dump_maps(Dump &block, const QosMaps &maps) {
  block.numbers("outer_internal", numbers_of(maps.outer[0]));
  block.numbers("outer_eligible_internal", numbers_of(maps.outer[1]));
  block.numbers("inner_internal", numbers_of(maps.inner));
  block.numbers("dscp_internal", numbers_of(maps.dscp));
  block.numbers("internal_queue", numbers_of(maps.queue));
  block.objects("groups", kPriorityGroups,
                [&](Dump &entry, size_t group) { dump_group(entry, maps.groups[group]); });
  block.text("remark_source", maps.remark_source == 0 ? "internal" : "tag");
}

void dump_port(Dump &entry, size_t number, const QosPort &port) {
  entry.number("port", static_cast<int64_t>(number));
  entry.number("outer_priority", port.outer_priority);
  entry.number("inner_priority", port.inner_priority);
  entry.number("group", port.group);
  entry.text("algorithm", algorithm_name(port.algorithm));
  entry.numbers("weights", numbers_of(port.weights));
  entry.numbers("strict", numbers_of(port.strict));
  entry.flag("remarks", port.remarks != 0);
}

}  // namespace

void QosBlock::dump(const char *name, Dump &unit) const {
  unit.object(name, [this](Dump &block) {
    dump_maps(block, maps_);
    block.objects("ports", ports_.size(),
                  [this](Dump &entry, size_t number) { dump_port(entry, number, ports_[number]); });
  });
}

}  // namespace vchip
