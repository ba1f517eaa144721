// SPDX-License-Identifier: MIT
#ifndef VCHIPD_CONFIGURE_H
#define VCHIPD_CONFIGURE_H

#include <cstdint>
#include <string>

namespace vchipd {

// Lets swctl load a configuration into a unit, all of it or nothing; what is wrong with
// it, swctl says. Throws Fault.
void configure(const std::string &file, uint32_t unit);

}  // namespace vchipd

#endif
