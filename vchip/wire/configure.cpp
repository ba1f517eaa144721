// SPDX-License-Identifier: MIT
#include "configure.h"

#include "fault.h"
#include "os/program.h"

namespace vchipd {

void configure(const std::string &file, uint32_t unit) {
  const std::vector<std::string> words = {"swctl",  "-u",   std::to_string(unit),
                                          "config", "load", file};
  const os::Ending ending = os::run_program(words, os::Input::own);
  if (ending.signal != 0)
    throw Fault("--config " + file + ": swctl was ended by signal " +
                std::to_string(ending.signal));
  if (ending.status != 0) throw Fault("--config " + file + ": swctl has refused it");
}

}  // namespace vchipd
