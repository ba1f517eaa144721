// SPDX-License-Identifier: MIT
#ifndef SWCTL_SHELL_ACL_REFUSAL_H
#define SWCTL_SHELL_ACL_REFUSAL_H

#include <cstdint>
#include <string>

#include "fault.h"

namespace swsh {

// What the chip refused: the function, what it was about ("rule 7"), and the
// chip's own sentence.
Fault acl_refusal(int32_t result, const char *function, const std::string &subject);

// Throws it if the result is negative.
void check_acl(int32_t result, const char *function, const std::string &subject);

}  // namespace swsh

#endif
