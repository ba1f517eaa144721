// SPDX-License-Identifier: MIT
#ifndef SWCTL_SRC_FRAME_STATIC_MAC_H
#define SWCTL_SRC_FRAME_STATIC_MAC_H

#include <cstdint>

namespace swctl {

enum class StaticMac { added, removed };

// Tells the platform that a static layer-2 address was added or removed: a
// trace record if tracing is on, naming `function` and `line`, and a log line
// in every case. `mac` is six bytes.
void note_static_mac(StaticMac change, const char *function, int line, const uint8_t *mac);

}  // namespace swctl

#endif
