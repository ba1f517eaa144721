// SPDX-License-Identifier: MIT
#ifndef SWCTL_SHELL_CHIP_PLATFORM_H
#define SWCTL_SHELL_CHIP_PLATFORM_H

namespace swsh {

// Throws the CommandError of status kRefused that says why no call of the
// platform can succeed, if the platform knows.
void expect_platform();

}  // namespace swsh

#endif
