// SPDX-License-Identifier: MIT
#include "ratio_reporter.h"

#include <algorithm>
#include <cstdio>

namespace {

struct Spread {
  double low, middle, high;
};

Spread spread(std::vector<double> times) {
  if (times.empty()) return {};
  std::sort(times.begin(), times.end());
  return {times.front(), times[times.size() / 2], times.back()};
}

}  // namespace

void RatioReporter::expect(const std::string &name, double limit) {
  pairs_.push_back({name, limit});
}

bool RatioReporter::ReportContext(const Context &) {
  return true;
}

void RatioReporter::ReportRuns(const std::vector<Run> &runs) {
  for (const Run &run : runs) {
    if (run.run_type != Run::RT_Iteration) continue;
    std::string name = run.run_name.function_name;
    times_[name].push_back(run.GetAdjustedCPUTime());
  }
}

void RatioReporter::Finalize() {
  printf("%-28s %28s %28s %7s\n", "", "library ns (min/median/max)", "direct ns (min/median/max)",
         "ratio");
  for (const Pair &pair : pairs_) {
    const Spread library = spread(times_[pair.name + "/library"]);
    const Spread direct = spread(times_[pair.name + "/direct"]);
    if (direct.middle <= 0) continue;  // filtered out
    const double ratio = library.middle / direct.middle;
    printf("%-28s %10.2f %8.2f %8.2f %10.2f %8.2f %8.2f %7.2f", pair.name.c_str(), library.low,
           library.middle, library.high, direct.low, direct.middle, direct.high, ratio);
    if (pair.limit > 0) printf("  limit %.2f", pair.limit);
    if (pair.limit > 0 && ratio > pair.limit) {
      printf("  EXCEEDED");
      within_limits_ = false;
    }
    printf("\n");
  }
}
