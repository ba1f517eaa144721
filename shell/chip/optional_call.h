// SPDX-License-Identifier: MIT
// Functions that a platform may be without, <swctl/platform/read.h>. They are
// looked up when running, so that the shell starts on every platform.
#ifndef SWCTL_SHELL_CHIP_OPTIONAL_CALL_H
#define SWCTL_SHELL_CHIP_OPTIONAL_CALL_H

#include <cstdint>
#include <string>
#include <type_traits>

#include "chip/ports.h"

namespace swsh {

// Null if nothing that is loaded defines the name.
void *find_symbol(const char *name);

// Throws the CommandError of status kRefused that names the missing function.
[[noreturn]] void refuse_missing(const char *function);

template <typename Function>
struct OptionalCall {
  const char *name;

  // Null if the platform is without it.
  Function *find() const { return reinterpret_cast<Function *>(find_symbol(name)); }
  Function &get() const {
    Function *function = find();
    if (function == nullptr) refuse_missing(name);
    return *function;
  }
};

// The only way to make one, so that name and type are those of one function.
#define SWSH_OPTIONAL_CALL(function) (::swsh::OptionalCall<decltype(function)>{#function})

// What a function says about `subject`: its last argument is where it writes.
// Throws a CommandError of status kRefused if it is missing or refuses.
template <typename... Parameters, typename... Arguments>
uint32_t read_word(const OptionalCall<int32_t(Parameters...)> &call, const std::string &subject,
                   Arguments... arguments) {
  uint32_t word = 0;
  check_call(call.get()(arguments..., &word), call.name, subject);
  return word;
}

// Calls visit(record) for every record of a table from an index on; `what` is
// what a record is called in a refusal. Throws as read_word() does.
template <typename Record, typename Visit>
void each_record(const OptionalCall<int32_t(uint32_t, int32_t, Record *)> &next,
                 const std::string &what, uint32_t table, int32_t from, Visit visit) {
  auto &find_next_record = next.get();
  for (;;) {
    Record record = {};
    check_call(find_next_record(table, from, &record), next.name,
               what + ' ' + std::to_string(from));
    if (record.index < from) return;
    visit(record);
    from = record.index + 1;
  }
}

}  // namespace swsh

#endif
