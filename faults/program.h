// SPDX-License-Identifier: MIT
// Runs a program to its end, or to that of its time.
#ifndef SWCTL_FAULTS_PROGRAM_H
#define SWCTL_FAULTS_PROGRAM_H

#include <map>
#include <string>
#include <vector>

namespace swfaults {

struct Order {
  std::vector<std::string> words;
  std::map<std::string, std::string> environment;  // beside that of this process
  std::string output;                              // the files it prints into
  std::string error;
  double seconds = 0;  // its time limit
};

struct End {
  enum class Kind { exited, killed, timed_out };

  Kind kind = Kind::exited;
  int code = 0;  // exit status, or signal
  double seconds = 0;
  std::string output;
  std::string error;
};

// All that the program started in its process group ends with it. Throws
// std::runtime_error if it cannot be started.
End run(const Order &order);

}  // namespace swfaults

#endif
