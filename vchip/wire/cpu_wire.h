// SPDX-License-Identifier: MIT
// The processor's side: an interface for each front port, and one for the CPU port.
#ifndef VCHIPD_CPU_WIRE_H
#define VCHIPD_CPU_WIRE_H

#include "wire_words.h"

namespace vchipd {

// "PREFIX" of the names: what the chip sends to the processor for a reason, such as a
// trap, comes up on the interface of the port by which it came in, and what is sent
// there leaves at that port. On that of the CPU port the processor is a member of
// VLANs.
std::unique_ptr<Wire> make_cpu_wire(const std::string &rest, const Place &place);

}  // namespace vchipd

#endif
