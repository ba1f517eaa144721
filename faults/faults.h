// SPDX-License-Identifier: MIT
// Fails each call of a program in turn and says what the program made of it.
#ifndef SWCTL_FAULTS_FAULTS_H
#define SWCTL_FAULTS_FAULTS_H

#include <cstdint>
#include <string>
#include <vector>

#include "program.h"

namespace swfaults {

struct Settings {
  std::vector<std::string> words;  // the program
  std::vector<std::string> only;   // patterns of calls to fail; all without one
  double seconds = 10;             // time limit of a run
  unsigned processes = 0;          // at a time; 0: as many as there are cores
  int32_t result = -1;             // of a call that fails
  std::string image;               // what every chip is a copy of; empty: power-on
  std::string probe;               // the library to preload
};

// One call that fails: alone, or with all after it.
struct Fault {
  size_t call;  // its number among those of the SDK and the adapter, from 1
  bool and_after;
  std::string name;
  std::string line;  // with what went in
};

// What a program made of a fault.
enum class Verdict {
  told,         // its status or what it printed is another than without a fault
  silent,       // both are the same: the failure passed unseen
  crashed,      // a signal ended it
  hung,         // its time was over
  not_reached,  // it did not make the call this time
};

struct Run {
  Fault fault;
  Verdict verdict;
  End end;
};

struct Outcome {
  size_t calls = 0;            // of the program without a fault
  int status = 0;              // its exit status
  bool output_varies = false;  // from run to run: then standard error and status count
  bool error_varies = false;   // likewise: then the status counts
  std::vector<Run> runs;
};

// Whether a run is one to look at: silent, crashed or hung.
bool is_bad(Verdict verdict);
const char *word_of(Verdict verdict);

// Throws std::runtime_error if the program makes no call, or does not end by
// itself without a fault.
Outcome try_faults(const Settings &settings);

// The plan that makes the fault.
std::string plan_of(const Fault &fault, int32_t result);
Verdict verdict_of(const Outcome &outcome, const End &usual, const End &end, bool reached);

}  // namespace swfaults

#endif
