// SPDX-License-Identifier: MIT
// Fails each call of a function in turn, alone and with all that follow, and
// holds what the function then does against the table.
#ifndef SWCTL_TESTS_SWEEP_SWEEP_H
#define SWCTL_TESTS_SWEEP_SWEEP_H

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <type_traits>
#include <vector>

namespace sweep {

// Memory of the caller that a function may write to.
struct Output {
  uint8_t *start;
  size_t size;
};

template <typename Value>
void add_output(std::vector<Output> &, const Value &) {}

// One element, whatever may follow it: what an address leads to is not told.
template <typename Value>
requires(std::is_object_v<Value> &&
         !std::is_const_v<Value>) void add_output(std::vector<Output> &all, Value *const &address) {
  if (address != nullptr) all.push_back({reinterpret_cast<uint8_t *>(address), sizeof *address});
}

template <typename Value, size_t size>
requires(!std::is_const_v<Value>) void add_output(std::vector<Output> &all, Value (&array)[size]) {
  all.push_back({reinterpret_cast<uint8_t *>(array), sizeof array});
}

// Those among the arguments of a call.
template <typename... Values>
std::vector<Output> outputs_of(Values &&...values) {
  std::vector<Output> all;
  (add_output(all, values), ...);
  return all;
}

// A function with a set of arguments. It is called very often, on the chip as
// it is now and with the library as it is now.
struct Subject {
  std::string function;
  std::string variant;
  int32_t expected;  // if nothing fails
  std::function<int32_t()> call;
  // Before each call they are as they are now.
  std::vector<Output> outputs = {};
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

#define SWEEP(function, variant, expected, ...)                              \
  sweep::sweep({#function, variant, expected,                                \
                [&] { return static_cast<int32_t>(function(__VA_ARGS__)); }, \
                sweep::outputs_of(__VA_ARGS__)})

#endif
