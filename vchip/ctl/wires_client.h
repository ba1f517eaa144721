// SPDX-License-Identifier: MIT
// Speaks with the vchipd that serves a unit of an image.
#ifndef VCHIPCTL_WIRES_CLIENT_H
#define VCHIPCTL_WIRES_CLIENT_H

#include <cstdint>
#include <optional>

#include "os/descriptor.h"
#include "os/json.h"

namespace vchipctl {

// The answer to a request; nothing if no vchipd serves the unit of the image that
// VCHIP_IMAGE names. Throws Refused with what vchipd says.
std::optional<os::Json> ask_if_served(uint32_t unit, const os::Json &request);
// The same; throws Refused if none does.
os::Json ask_vchipd(uint32_t unit, const os::Json &request);

// The same for a request whose answer goes on: the connection, from there.
os::Descriptor follow_vchipd(uint32_t unit, const os::Json &request);

}  // namespace vchipctl

#endif
