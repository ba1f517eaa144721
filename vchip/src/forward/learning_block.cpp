// SPDX-License-Identifier: MIT
#include "forward/learning_block.h"

#include <algorithm>
#include <iterator>

namespace vchip {

void LearningBlock::power_on() {
  for (NewAddress &port : ports_) port = {kLearnAtOnce, FrameAction::forward};
}

bool LearningBlock::sound() const {
  return std::all_of(std::begin(ports_), std::end(ports_), [](const NewAddress &port) {
    return port.mode <= kLearnNothing && is_known(port.action);
  });
}

}  // namespace vchip
