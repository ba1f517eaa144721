// SPDX-License-Identifier: MIT
#include <swctl-vchip/queue_view.h>

#include <algorithm>
#include <cinttypes>
#include <cmath>
#include <cstdio>

#include "frame_commands.h"
#include "os/json.h"
#include "port_names.h"
#include "usage_error.h"
#include "words.h"

namespace vchipctl {
namespace {

using os::Json;
using vchip::PortQueueView;
using vchip::QueueView;

constexpr double kBarLength = 20;

// The part of what the port sent, by wire length.
double share_of(const PortQueueView &port, const QueueView &queue) {
  double total = 0;
  for (const QueueView &each : port.queues) total += static_cast<double>(each.bytes);
  return total == 0 ? 0 : static_cast<double>(queue.bytes) / total;
}

// What has sent something has a bar, however small its share.
std::string bar(double share) {
  return std::string(static_cast<size_t>(std::ceil(share * kBarLength)), '#');
}

bool queue_has_counted(const QueueView &queue) {
  return queue.waiting != 0 || queue.sent != 0 || queue.dropped != 0;
}

void print_queue(int32_t port, size_t number, const PortQueueView &view) {
  const QueueView &queue = view.queues[number];
  const double share = share_of(view, queue);
  printf("%-4s  %5zu  %7" PRIu64 "  %10" PRIu64 "  %14" PRIu64 "  %10" PRIu64 "  %5.1f %%  %s\n",
         port_name(port).c_str(), number, queue.waiting, queue.sent, queue.bytes, queue.dropped,
         share * 100, bar(share).c_str());
}

void print_queues_table(uint32_t unit, const std::vector<int32_t> &ports, bool all) {
  printf("port  queue  waiting        sent           bytes     dropped    share\n");
  for (const int32_t port : ports) {
    const PortQueueView view = vchip::port_queues(unit, port);
    for (size_t number = 0; number < view.queues.size(); ++number)
      if (all || queue_has_counted(view.queues[number])) print_queue(port, number, view);
  }
}

Json port_queues_json(uint32_t unit, int32_t port) {
  const PortQueueView view = vchip::port_queues(unit, port);
  Json queues = Json::array();
  for (size_t number = 0; number < view.queues.size(); ++number) {
    const QueueView &queue = view.queues[number];
    queues.push_back({{"queue", number},
                      {"waiting", queue.waiting},
                      {"sent", queue.sent},
                      {"bytes", queue.bytes},
                      {"dropped", queue.dropped},
                      {"share", share_of(view, queue)}});
  }
  return {{"port", port_json(port)}, {"paused_until", view.paused_until}, {"queues", queues}};
}

}  // namespace

void queues(const TrafficWords &words) {
  if (words.words.size() > 1) throw UsageError("'" + words.words[1] + "' does not belong here");
  const uint32_t unit = parse_unit(words.unit);
  const bool asked = !words.words.empty();
  const std::vector<int32_t> ports = asked ? parse_all_ports(words.words[0]) : ports_by_name();
  if (!words.json) return print_queues_table(unit, ports, words.all || asked);
  Json all = Json::array();
  for (const int32_t port : ports) all.push_back(port_queues_json(unit, port));
  printf("%s\n", os::json_text(all).c_str());
}

}  // namespace vchipctl
