// SPDX-License-Identifier: MIT
// What changes on the chip, by reading it again and again.
#include <swctl/port.h>

#include <chrono>
#include <map>

#include "chip/address_table.h"
#include "chip/call.h"
#include "chip/limits.h"
#include "chip/ports.h"
#include "config/plain.h"
#include "config/state.h"
#include "fault.h"
#include "interrupt.h"
#include "mac_text.h"
#include "objects/registry.h"

namespace swsh {
namespace {

constexpr int64_t kUsualPeriod = 500;  // milliseconds
constexpr int64_t kLongestPeriod = 1000000;
constexpr int64_t kMostPackets = 1000000000;

enum Watched : int64_t {
  kWatchLinks = 1,
  kWatchVlans = 2,
  kWatchAddresses = 4,
  kWatchTraps = 8,
  kWatchCounters = 16
};

// What there is of an object, by name.
using Things = std::map<std::string, std::string>;

// One reading of everything that is watched, by object.
using Seen = std::map<std::string, Things>;

class Watcher {
 public:
  Watcher(const Arguments &arguments, const Context &context)
      : context_(context),
        watched_(arguments.has("OBJECTS") ? arguments.number("OBJECTS")
                                          : kWatchLinks | kWatchVlans | kWatchTraps),
        threshold_(arguments.has("threshold") ? arguments.number("threshold") : 0) {}

  Seen read() {
    Seen seen;
    if (is_watched(kWatchLinks)) read_links(seen["link"]);
    if (is_watched(kWatchVlans)) read_settings(seen, "vlan");
    if (is_watched(kWatchTraps)) read_settings(seen, "trap");
    if (is_watched(kWatchAddresses)) read_table(seen["mac"]);
    return seen;
  }

  // Ports that received more than the threshold since the last time.
  void tell_counters() {
    if (!is_watched(kWatchCounters)) return;
    for (const Port &port : board_.front()) {
      const user_counter_t counter = ask(SWSH_CALL(user_stat_port_get), port, kLead, context_.unit,
                                         port.chip, int32_t{USER_STAT_PACKETS});
      const uint64_t now = uint64_t{counter.high} << 32 | counter.low;
      const auto last = counts_.find(port.interface);
      const bool is_over = last != counts_.end() && now >= last->second &&
                           now - last->second > static_cast<uint64_t>(threshold_);
      if (is_over)
        tell("over", "counter", "port " + std::to_string(port.interface),
             std::to_string(now - last->second));
      counts_[port.interface] = now;
    }
  }

  void tell_changes(const Seen &before, const Seen &now) const {
    for (const auto &[object, things] : now) {
      const Things &old = before.at(object);
      for (const auto &[name, value] : old)
        if (!things.contains(name)) tell("removed", object, name, value);
      for (const auto &[name, value] : things) {
        const auto found = old.find(name);
        if (found == old.end()) tell("added", object, name, value);
        if (found != old.end() && found->second != value) tell("changed", object, name, value);
      }
    }
  }

 private:
  bool is_watched(Watched object) const { return (watched_ & object) != 0; }

  void tell(const char *event, const std::string &object, const std::string &name,
            const std::string &value) const {
    context_.emit(Record()
                      .add("event", std::string(event))
                      .add("object", object)
                      .add("what", name)
                      .add("value", value));
  }

  void read_links(Things &links) const {
    for (const Port &port : board_.front()) {
      const bool up = read_port(context_, port, SWSH_CALL(user_port_link_status_get)) != 0;
      links["port " + std::to_string(port.interface)] = up ? "up" : "down";
    }
  }

  void read_settings(Seen &seen, const char *object) const {
    const State state = read_state(context_, board_, object);
    Things &things = seen[object];
    for (size_t number = 0; number < state.contents.size(); ++number)
      for (const auto &[id, content] : state.contents[number]) {
        const SettingKind &kind = kinds(board_)[number];
        const std::string which = id.text.empty() ? std::to_string(id.number) : id.text;
        const bool is_one = !kind.merges && kind.usual({}) && id == Id();
        things[is_one ? kind.title() : kind.title() + ' ' + which] = content.value_or("none");
      }
  }

  static void read_table(Things &addresses) {
    const Interfaces interfaces;
    for (const user_l2_addr_t &entry : read_addresses()) {
      const auto port = interfaces.of(entry.port);
      addresses[mac_text(entry.mac) + " vlan " + std::to_string(entry.vid)] =
          port ? "port " + std::to_string(*port) : "port -";
    }
  }

  const Context &context_;
  Board board_;
  int64_t watched_;
  int64_t threshold_;
  std::map<int64_t, uint64_t> counts_;
};

void watch_chip(const Arguments &arguments, const Context &context) {
  const auto given = [&](const char *name, int64_t otherwise) {
    return arguments.has(name) ? arguments.number(name) : otherwise;
  };
  using Time = std::chrono::steady_clock;
  const std::chrono::milliseconds period(given("interval", kUsualPeriod));
  const Time::time_point end = Time::now() + std::chrono::seconds(given("seconds", 0));
  Watcher watcher(arguments, context);
  Seen before = watcher.read();
  watcher.tell_counters();
  while (!arguments.has("seconds") || Time::now() < end) {
    if (!wait_for(period)) break;
    Seen now = watcher.read();
    watcher.tell_changes(before, now);
    watcher.tell_counters();
    before = std::move(now);
  }
}

Answer monitor_chip(const Arguments &arguments, const Context &context) {
  if (!context.emit)
    throw CommandError(
        wrong_usage("monitor shows changes as they happen, not in a batch", "monitor"));
  const bool counts =
      arguments.has("OBJECTS") && (arguments.number("OBJECTS") & kWatchCounters) != 0;
  if (counts != arguments.has("threshold"))
    throw CommandError(wrong_usage("counters and a threshold go together", std::nullopt,
                                   {counts ? "threshold" : "counter"}));
  try {
    watch_chip(arguments, context);
  } catch (const CommandError &) {
    if (!take_interrupt()) throw;  // else it ends as it is meant to
  }
  return {Shape::shown, {}, ""};
}

}  // namespace

Node monitor_object() {
  return {
      .name = "monitor",
      .help = "Print what changes as it happens",
      .positional = {{.name = "OBJECTS",
                      .type = choice_list({{"link", kWatchLinks, "Links of the front ports"},
                                           {"vlan", kWatchVlans, "VLANs, their ports and rules"},
                                           {"mac", kWatchAddresses, "Addresses"},
                                           {"trap", kWatchTraps, "Trapped frames"},
                                           {"counter", kWatchCounters, "Packets over threshold"}}),
                      .help = "What to watch, with commas between; link,vlan,trap if not given"}},
      .keywords = {{.name = "interval",
                    .type = number(10, kLongestPeriod, "milliseconds"),
                    .help = "Between two readings; 500 if not given"},
                   {.name = "seconds",
                    .type = number(1, kLongestPeriod, "seconds"),
                    .help = "End after this time"},
                   {.name = "threshold",
                    .type = number(0, kMostPackets, "packets"),
                    .help = "Of counter: received by a port between two readings"}},
      .details =
          "Runs until it is interrupted. A setting that is as after power-on again is\n"
          "removed. What comes and goes between two readings is not\n"
          "seen. With -j every line is a JSON object.\n",
      .run = monitor_chip,
  };
}

}  // namespace swsh
