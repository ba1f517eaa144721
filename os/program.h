// SPDX-License-Identifier: MIT
// Other programs, started by this one.
#ifndef SWCTL_OS_PROGRAM_H
#define SWCTL_OS_PROGRAM_H

#include <string>
#include <vector>

namespace os {

// The folder of the running program; empty if the system does not say.
std::string own_folder();

// The program of that name beside this one if there is one, else the name, for PATH. A
// name with a slash in it is a place already.
std::string find_program(const std::string &name);

enum class Input { none, own };

// How a program has ended: its exit status, or the signal, which is 0 otherwise.
struct Ending {
  int status = 0;
  int signal = 0;
};

// Runs a program, found as above, to its end. What it prints goes to standard error, so
// that standard output holds the results of this program alone. Throws
// std::runtime_error, which names the program, if it cannot be run.
Ending run_program(const std::vector<std::string> &words, Input input);

}  // namespace os

#endif
