// SPDX-License-Identifier: MIT
#include "forward/learning_block.h"

#include <algorithm>
#include <iterator>

namespace vchip {

void LearningBlock::reset() {
  for (NewAddress &port : ports_) port = {0, 0};
}

bool LearningBlock::sound() const {
  return std::all_of(std::begin(ports_), std::end(ports_), [](const NewAddress &port) {
    return port.mode <= kLastLearningMode && port.action <= kLastNewAddressAction;
  });
}

}  // namespace vchip
