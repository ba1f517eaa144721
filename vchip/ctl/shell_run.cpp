// SPDX-License-Identifier: MIT
#include "shell_run.h"

#include "os/program.h"
#include "usage_error.h"

namespace vchipctl {

void run_shell(const std::string &file) {
  const os::Ending ending = os::run_program({"swctl", "-b", file}, os::Input::none);
  if (ending.signal != 0)
    throw Refused(file + ": swctl was ended by signal " + std::to_string(ending.signal));
  if (ending.status != 0)
    throw Refused(file + ": swctl ended with status " + std::to_string(ending.status));
}

}  // namespace vchipctl
