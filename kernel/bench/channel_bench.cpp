// SPDX-License-Identifier: MIT
// What a request through the library costs over the same exchange by hand, in
// one run against the kernel module. Fails if it costs more than 1.1 times the
// bare exchange with the same blocks of memory, or makes other than three system
// calls. What the blocks themselves cost, the leaner ways by hand show.
#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <vector>

#include "exchange.h"
#include "system_calls.h"

namespace {

constexpr int kRounds = 41;
constexpr uint32_t kRequests = 250;  // of each way, in each round
constexpr int kCountedCalls = 200;
constexpr double kLimit = 1.1;

using Exchange = uint32_t (*)(uint32_t);

template <Exchange Body>
void once() {
  if (Body(7) != 7) abort();
}

struct Way {
  const char *name;
  Exchange exchange;
  void (*once)();
  std::vector<double> seconds;  // of a request, for each round
};

template <Exchange Body>
Way named(const char *name) {
  return {name, Body, once<Body>, {}};
}

double timed(Exchange exchange) {
  const auto start = std::chrono::steady_clock::now();
  for (uint32_t index = 0; index < kRequests; ++index) {
    if (exchange(index) != index) abort();
  }
  const std::chrono::duration<double> passed = std::chrono::steady_clock::now() - start;
  return passed.count() / kRequests;
}

double median(std::vector<double> numbers) {
  std::nth_element(numbers.begin(), numbers.begin() + kRounds / 2, numbers.end());
  return numbers[kRounds / 2];
}

// The ways take turns, so that a slow moment of the machine falls on all; the
// ratio is that of each round.
double ratio(const Way &way, const Way &base) {
  std::vector<double> ratios;
  for (int round = 0; round < kRounds; ++round) {
    ratios.push_back(way.seconds[round] / base.seconds[round]);
  }
  return median(ratios);
}

}  // namespace

int main() {
  Way ways[] = {
      named<through_library>("library"),
      named<through_libmnl>("libmnl"),
      named<through_bare_calls>("bare, same memory"),
      named<through_bare_calls_one_datagram>("bare, one datagram"),
      named<through_bare_calls_one_memory>("bare, one memory"),
      named<through_bare_calls_unbounded>("bare, no limit"),
  };
  const Way &library = ways[0];
  const Way &bare = ways[2];
  // Before the parent has sockets: a child's would be the same.
  std::vector<double> calls;
  for (const Way &way : ways) {
    calls.push_back(static_cast<double>(count_system_calls(way.once, kCountedCalls)) /
                    kCountedCalls);
  }
  for (const Way &way : ways) timed(way.exchange);
  for (int round = 0; round < kRounds; ++round) {
    for (Way &way : ways) way.seconds.push_back(timed(way.exchange));
  }

  printf("%-20s%12s%8s%16s%14s\n", "", "requests/s", "us", "library is", "system calls");
  for (size_t index = 0; index < std::size(ways); ++index) {
    const Way &way = ways[index];
    const double seconds = median(way.seconds);
    printf("%-20s%12.0f%8.1f%10.2f times%14.2f\n", way.name, 1 / seconds, seconds * 1e6,
           ratio(library, way), calls[index]);
  }
  const bool good = ratio(library, bare) <= kLimit && calls[0] == 3;
  printf("library: %s (at most %.1f times \"%s\", 3 system calls)\n",
         good ? "within its limits" : "BEYOND ITS LIMITS", kLimit, bare.name);
  return good ? 0 : 1;
}
