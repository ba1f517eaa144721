// SPDX-License-Identifier: MIT
#ifndef VCHIPD_CONFIGURE_H
#define VCHIPD_CONFIGURE_H

#include <string>

namespace vchipd {

// Lets swctl carry out the lines of a file; throws Fault.
void configure(const std::string &file);

}  // namespace vchipd

#endif
