// SPDX-License-Identifier: MIT
// Lines on standard error, each in one write so that those of several
// processes do not mix.
#ifndef VCHIP_COMMON_STANDARD_ERROR_H
#define VCHIP_COMMON_STANDARD_ERROR_H

#include <string>

namespace vchip {

// Writes `line`, adding the line end if it has none.
void write_error_line(std::string line);
// Only to a person: if standard error is a terminal.
void write_notice(const std::string &line);

}  // namespace vchip

#endif
