// SPDX-License-Identifier: MIT
#ifndef SWCTL_TESTS_SWEEP_CASES_H
#define SWCTL_TESTS_SWEEP_CASES_H

namespace sweep {

// The argument lists of the C99 program.
void c99_cases();
// Those that lead other ways through a function.
void port_cases();
void l2_cases();
void other_cases();

}  // namespace sweep

#endif
