// SPDX-License-Identifier: MIT
#include <swctl-vchip/qos_view.h>

#include "chip/viewing.h"

namespace vchip {
namespace {

template <typename Array>
std::vector<uint32_t> list(const Array &array) {
  return {array.begin(), array.end()};
}

}  // namespace

QosView qos(uint32_t unit) {
  Viewing chip;
  const QosMaps &maps = chip.unit(unit).qos.maps();
  QosView view = {list(maps.outer[0]), list(maps.outer[1]), list(maps.inner),
                  list(maps.dscp),     list(maps.queue),    {},
                  maps.remark_source};
  for (const auto &weights : maps.groups) view.group_weights.push_back(list(weights));
  return view;
}

QosPortView qos_port(uint32_t unit, int32_t port) {
  Viewing chip;
  const QosBlock &block = chip.unit(unit).qos;
  expect_port(port);
  const QosPort &own = block.port(port);
  return {own.outer_priority, own.inner_priority, own.group,       own.algorithm,
          list(own.weights),  list(own.strict),   own.remarks != 0};
}

}  // namespace vchip
