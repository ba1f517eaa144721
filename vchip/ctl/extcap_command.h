// SPDX-License-Identifier: MIT
// vchipctl extcap: the ports as interfaces of Wireshark, in the words in which it asks
// its external captures.
#ifndef VCHIPCTL_EXTCAP_COMMAND_H
#define VCHIPCTL_EXTCAP_COMMAND_H

#include <functional>
#include <string>

#include "os/command_line.h"

namespace vchipctl {

struct ExtcapWords {
  bool interfaces = false;
  bool dlts = false;
  bool config = false;
  bool capture = false;
  bool drops = false;
  std::string interface;
  std::string fifo;
  std::string filter;
  std::string version;
};

// Throws UsageError and Refused.
void extcap(const ExtcapWords &words);

void add_extcap_command(os::Command &app, ExtcapWords &words, std::function<void()> &run,
                        bool &own_chip);

}  // namespace vchipctl

#endif
