// SPDX-License-Identifier: MIT
#include "chip/witness.h"

#include <swctl/platform/adapter.h>
#include <swctl/platform/sdk.h>

#include <algorithm>
#include <dlfcn.h>

namespace swsh {
namespace {

Witness *present = nullptr;
int depth = 0;

// The next library that defines a call answers it; where there is none, it is
// refused like one that the platform does not have.
template <typename Function, typename... Arguments>
int32_t pass_on(const char *name, Function *next, Arguments... arguments) {
  ++depth;
  const int32_t result = next == nullptr ? -1 : next(arguments...);
  --depth;
  if (result < 0 && depth == 0) Witness::note(name, result);
  return result;
}

template <typename Function>
Function *next_of(const char *name) {
  return reinterpret_cast<Function *>(dlsym(RTLD_NEXT, name));
}

}  // namespace

Witness::Witness() : outer_(present) {
  present = this;
}

Witness::~Witness() {
  present = outer_;
}

bool Witness::saw(std::string_view name) const {
  return std::any_of(failed_.begin(), failed_.end(),
                     [&](const FailedCall &call) { return call.name == name; });
}

FailedCall Witness::blame(const char *function, int32_t result) const {
  if (failed_.empty() || failed_.front().result == result) return {function, result};
  return failed_.front();
}

void Witness::note(const char *name, int32_t result) {
  if (present != nullptr) present->failed_.push_back({name, result});
}

}  // namespace swsh

// The program comes before every library in the order in which calls are
// looked up: what the library asks of the platform passes here. Names of our own
// have a prefix, since the arguments of a call are in scope under theirs.
// clang-format off
#include <swctl/platform/calls_begin.h>
#define SWCTL_CALL(name, ...)                                                              \
  int32_t name(SWCTL_PARAMETERS(__VA_ARGS__)) {                                            \
    static auto *const swsh_next = swsh::next_of<decltype(name)>(#name);                   \
    return swsh::pass_on(#name, swsh_next, SWCTL_ARGUMENTS(__VA_ARGS__));                  \
  }
#include <swctl/platform/calls/adapter.def>
#include <swctl/platform/calls/sdk.def>
#include <swctl/platform/calls_end.h>
// clang-format on
