// SPDX-License-Identifier: MIT
// What the system says about other processes.
#ifndef VCHIP_COMMON_PROCESS_H
#define VCHIP_COMMON_PROCESS_H

#include <cstdint>
#include <string>

namespace vchip {

// The process that a thread belongs to; 0 if it is gone or out of sight.
uint32_t process_of(uint32_t thread);

// Its name, empty if it is gone or out of sight.
std::string process_name(uint32_t process);

// Whether it was stopped, by a signal or a debugger.
bool is_stopped(uint32_t process);

}  // namespace vchip

#endif
