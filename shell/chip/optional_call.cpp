// SPDX-License-Identifier: MIT
#include "chip/optional_call.h"

#include <dlfcn.h>

#include "fault.h"

namespace swsh {

void *find_symbol(const char *name) {
  return dlsym(RTLD_DEFAULT, name);
}

void refuse_missing(const char *function) {
  Fault fault;
  fault.status = kRefused;
  fault.message = std::string("this platform cannot tell: it has no ") + function;
  fault.culprit = function;
  throw CommandError(fault);
}

}  // namespace swsh
