// SPDX-License-Identifier: MIT
#ifndef SWCTL_BENCH_PAIRS_H
#define SWCTL_BENCH_PAIRS_H

#include <benchmark/benchmark.h>
#include <span>

// What is done through the library, and the same done without it.
struct Pair {
  const char *name;
  void (*through)(benchmark::State &);
  void (*direct)(benchmark::State &);
  double limit;  // for the ratio of both; 0: none
};

// Runs the pairs that the command line selects and prints their times and
// ratios. Returns the status of the program.
int run_pairs(int argc, char **argv, std::span<const Pair> pairs);

#endif
