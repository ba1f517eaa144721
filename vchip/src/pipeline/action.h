// SPDX-License-Identifier: MIT
#ifndef VCHIP_PIPELINE_ACTION_H
#define VCHIP_PIPELINE_ACTION_H

#include "common/frame_action.h"

namespace vchip {

// "dropped", as in "a BPDU, to be dropped".
const char *action_text(FrameAction action);

}  // namespace vchip

#endif
