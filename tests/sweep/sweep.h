// SPDX-License-Identifier: MIT
// Fails each call of a function in turn, alone and with all that follow, and
// holds what the function then does against the table.
#ifndef SWCTL_TESTS_SWEEP_SWEEP_H
#define SWCTL_TESTS_SWEEP_SWEEP_H

#include <cstdint>
#include <functional>
#include <string>

namespace sweep {

// A function with a set of arguments. It is called very often, on the chip as
// it is now and with the library as it is now.
struct Subject {
  std::string function;
  std::string variant;
  int32_t expected;  // if nothing fails
  std::function<int32_t()> call;
};
// The chip and the library go on from what the call does if nothing fails.
void sweep(const Subject &subject);

// A chip as after power-on, and a library as loaded.
void start_over();
void start_library_over();

// Prints what went wrong, and the figures; true if nothing did.
bool report();
// Writes down the functions, and the places of their calls in the code.
bool write_list(const std::string &path);

}  // namespace sweep

#define SWEEP(function, variant, expected, ...) \
  sweep::sweep(                                 \
      {#function, variant, expected, [&] { return static_cast<int32_t>(function(__VA_ARGS__)); }})

#endif
