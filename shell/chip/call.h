// SPDX-License-Identifier: MIT
// Calls of the library and of the platform. Each is made together with its
// name, so that a refusal names the function that refused.
#ifndef SWCTL_SHELL_CHIP_CALL_H
#define SWCTL_SHELL_CHIP_CALL_H

#include <cstdint>
#include <string>
#include <tuple>
#include <type_traits>

#include "chip/witness.h"
#include "command/table.h"
#include "fault.h"
#include "interrupt.h"

namespace swsh {

// The leading argument of every function of the library, which none reads.
inline constexpr uint32_t kLead = 0;

struct Port;

template <typename Function_>
struct Call {
  using Function = Function_;
  const char *name;
  Function *function;

  Function &get() const { return *function; }
};

// The only way to make one, so that name and function belong together.
#define SWSH_CALL(function) (::swsh::Call<decltype(function)>{#function, function})

// What a call was about, in a message and as the culprit of the fault.
struct Subject {
  std::string named;
  std::string culprit;
  int64_t interface = 0;  // 0 if it is no port
};
Subject subject_of(const Port &port);        // "port 3"
Subject subject_of(const Context &context);  // "unit 0"
Subject subject_of(std::string text);        // "02:00:5e:00:00:01 in VLAN 10"

// A CommandError of status kRefused that says what the chip says.
CommandError refusal(const FailedCall &call, const Subject &subject);
// Throws it.
[[noreturn]] void refuse(const FailedCall &call, const Subject &subject);

// Makes a call about something that subject_of() takes. Throws the
// CommandError of refuse() if the result is negative, or if the platform failed
// a call that the library made for it, whatever the library makes of that; and
// that of an interrupt before the call is made.
template <typename Called, typename About, typename... Arguments>
int32_t perform(const Called &called, const About &about, Arguments... arguments) {
  stop_if_interrupted();
  const Witness witness;
  const int32_t result = called.get()(arguments...);
  if (result < 0 || !witness.failed().empty())
    refuse(witness.blame(called.name, result), subject_of(about));
  return result;
}

// What a function writes to its last argument.
template <typename Function>
struct Answered;
template <typename... Parameters>
struct Answered<int32_t(Parameters...)> {
  using Last = std::tuple_element_t<sizeof...(Parameters) - 1, std::tuple<Parameters...>>;
  using Value = std::remove_pointer_t<Last>;
};

// The same for a call that answers something; its last argument is left out.
template <typename Called, typename About, typename... Arguments>
auto ask(const Called &called, const About &about, Arguments... arguments) {
  typename Answered<typename Called::Function>::Value value = {};
  perform(called, about, arguments..., &value);
  return value;
}

}  // namespace swsh

#endif
