// SPDX-License-Identifier: MIT
// Functions that a platform may be without, <swctl/platform/read.h>. They are
// looked up when running, so that the shell starts on every platform.
#ifndef SWCTL_SHELL_CHIP_OPTIONAL_CALL_H
#define SWCTL_SHELL_CHIP_OPTIONAL_CALL_H

#include <cstdint>
#include <string>

#include "chip/call.h"
#include "chip/ports.h"

namespace swsh {

// Null if nothing that is loaded defines the name.
void *find_symbol(const char *name);

// Throws the CommandError of status kRefused that names the missing function.
[[noreturn]] void refuse_missing(const char *function);

// To be made by perform() and ask(), which refuse where it is missing.
template <typename Function_>
struct OptionalCall {
  using Function = Function_;
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

// Calls visit(record) for every record of a table from an index on; `what` is
// what a record is called in a refusal. Throws as perform() does.
template <typename Record, typename Visit>
void each_record(const OptionalCall<int32_t(uint32_t, int32_t, Record *)> &next,
                 const std::string &what, uint32_t table, int32_t from, Visit visit) {
  for (;;) {
    const Record record = ask(next, what + ' ' + std::to_string(from), table, from);
    if (record.index < from) return;
    visit(record);
    from = record.index + 1;
  }
}

}  // namespace swsh

#endif
