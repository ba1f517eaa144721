// SPDX-License-Identifier: MIT
#ifndef SWCTL_BENCH_RATIO_REPORTER_H
#define SWCTL_BENCH_RATIO_REPORTER_H

#include <benchmark/benchmark.h>
#include <map>
#include <string>
#include <vector>

// Collects the repetitions of pairs of benchmarks, "NAME/library" and
// "NAME/direct", and prints for each pair the median times and their ratio.
class RatioReporter : public benchmark::BenchmarkReporter {
 public:
  // A pair, and the ratio that it must not pass (0: no limit).
  void expect(const std::string &name, double limit);

  bool ReportContext(const Context &context) override;
  void ReportRuns(const std::vector<Run> &runs) override;
  void Finalize() override;

  bool all_within_limits() const { return within_limits_; }

 private:
  struct Pair {
    std::string name;
    double limit;
  };
  std::vector<Pair> pairs_;
  std::map<std::string, std::vector<double>> times_;
  bool within_limits_ = true;
};

#endif
