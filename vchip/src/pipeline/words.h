// SPDX-License-Identifier: MIT
// How the steps name things to a reader.
#ifndef VCHIP_PIPELINE_WORDS_H
#define VCHIP_PIPELINE_WORDS_H

#include <cstdint>
#include <string>

#include "common/frame_action.h"

namespace vchip {

// "port 3" by the number on the box, "the CPU port", or "port p27" where there
// is no number.
std::string port_text(int32_t port);
// "ports 1-4,7": the numbers on the box, then chip ports without one.
std::string ports_text(uint32_t ports);
std::string number_text(uint64_t number);
std::string address_text(uint64_t address);
std::string vlan_text(uint32_t vid);
// "dropped", as in "a BPDU, to be dropped".
const char *action_text(FrameAction action);

}  // namespace vchip

#endif
