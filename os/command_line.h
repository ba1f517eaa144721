// SPDX-License-Identifier: MIT
// How the programs begin and end.
#ifndef SWCTL_OS_COMMAND_LINE_H
#define SWCTL_OS_COMMAND_LINE_H

#include <CLI/CLI.hpp>
#include <functional>
#include <stdexcept>

namespace os {

// What is no fault of the words on the command line.
struct Refused : std::runtime_error {
  using std::runtime_error::runtime_error;
};

// Reads the words and runs what they ask for, which answers the exit status; help and the
// version are printed at once. Throws Refused if what was printed, by streams of C or of
// C++, did not arrive: a pipe or a disk may say no late.
int parse_and_run(CLI::App &app, int argc, char **argv, const std::function<int()> &run);

// The same, as the end of main(): says what was thrown, by the program's name, and
// answers 2 for Refused and 1 for everything else.
int run_program_main(CLI::App &app, int argc, char **argv, const std::function<int()> &run);

}  // namespace os

#endif
