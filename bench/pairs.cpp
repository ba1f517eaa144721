// SPDX-License-Identifier: MIT
#include "pairs.h"

#include <string>
#include <vector>

#include "ratio_reporter.h"

int run_pairs(int argc, char **argv, std::span<const Pair> pairs) {
  // Repetitions of both sides of a pair take turns, so that a slow moment of
  // the machine falls on both.
  std::string repetitions = "--benchmark_repetitions=11";
  std::string interleaved = "--benchmark_enable_random_interleaving=true";
  std::string time = "--benchmark_min_time=0.05";
  std::vector<char *> arguments = {argv[0], repetitions.data(), interleaved.data(), time.data()};
  arguments.insert(arguments.end(), argv + 1, argv + argc);
  int count = static_cast<int>(arguments.size());
  arguments.push_back(nullptr);

  benchmark::Initialize(&count, arguments.data());
  if (benchmark::ReportUnrecognizedArguments(count, arguments.data())) return 1;
  RatioReporter reporter;
  for (const Pair &pair : pairs) {
    benchmark::RegisterBenchmark((std::string(pair.name) + "/library").c_str(), pair.through);
    benchmark::RegisterBenchmark((std::string(pair.name) + "/direct").c_str(), pair.direct);
    reporter.expect(pair.name, pair.limit);
  }
  benchmark::RunSpecifiedBenchmarks(&reporter);
  return reporter.all_within_limits() ? 0 : 1;
}
