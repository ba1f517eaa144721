// SPDX-License-Identifier: MIT
// Runs a program of the build and collects all that it says.
#ifndef SWCTL_TESTS_PROBE_PROCESS_H
#define SWCTL_TESTS_PROBE_PROCESS_H

#include <map>
#include <string>

struct Outcome {
  int status;  // of exit; negative for a signal
  std::string output;
  std::string error;
};

struct Run {
  std::string program;
  std::string argument = {};
  std::string preload = {};
  std::map<std::string, std::string> environment = {};
};

// Through the emulator where there is one.
Outcome run(const Run &what);

// A whole file; empty if there is none.
std::string text_of(const std::string &path);

#endif
