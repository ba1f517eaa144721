// SPDX-License-Identifier: MIT
// vchipctl lab: a chip with a host at each of its first ports, for as long as a command runs.
#ifndef VCHIPCTL_LAB_COMMAND_H
#define VCHIPCTL_LAB_COMMAND_H

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "os/command_line.h"

namespace vchipctl {

struct LabWords {
  std::string ports = "4";
  std::string config;
  std::string port;                  // of enter; empty for the chip's side
  std::vector<std::string> command;  // the user's shell if there is none
};

// Both answer the exit status of the command, or throw UsageError and Refused.
int lab(const std::string &image, const LabWords &words);
int enter_lab(const std::string &image, const LabWords &words);

// `image` is what the command line says; where it says nothing, that of the environment,
// or one that is made for the lab.
void add_lab_commands(os::Command &app, LabWords &words, const std::optional<std::string> &image,
                      std::function<void()> &run, bool &own_chip, int &status);

}  // namespace vchipctl

#endif
