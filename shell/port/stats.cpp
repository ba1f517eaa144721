// SPDX-License-Identifier: MIT
#include <swctl/platform/port_records.h>

#include <algorithm>
#include <chrono>
#include <cstdint>

#include "chip/call.h"
#include "chip/each.h"
#include "fault.h"
#include "port/commands.h"

namespace swsh {
namespace {

uint64_t number_of(const user_counter_t &counter) {
  return uint64_t{counter.high} << 32 | counter.low;
}

uint64_t read_counter(const Context &context, const Port &port, uint32_t counter) {
  return number_of(
      ask(SWSH_CALL(user_port_packetstat_get), port, kLead, context.unit, port.chip, counter));
}

uint64_t read_sum(const Context &context, const Port &port, int32_t kind) {
  return number_of(ask(SWSH_CALL(user_stat_port_get), port, kLead, context.unit, port.chip, kind));
}

// One reading of a port, and how its columns are called.
struct Reading {
  uint64_t rx_bytes, rx_packets, tx_bytes, tx_packets, errors;
};
struct Column {
  const char *total;
  const char *rate;
  uint64_t Reading::*count;
};
constexpr Column kColumns[] = {
    {"rx_bytes", "rx_bytes/s", &Reading::rx_bytes},
    {"rx_packets", "rx_packets/s", &Reading::rx_packets},
    {"tx_bytes", "tx_bytes/s", &Reading::tx_bytes},
    {"tx_packets", "tx_packets/s", &Reading::tx_packets},
    {"errors", "errors/s", &Reading::errors},
};

Reading read_port_counters(const Context &context, const Port &port) {
  const auto read = [&](uint32_t counter) { return read_counter(context, port, counter); };
  return {.rx_bytes = read(CHIP_COUNTER_RX_OCTETS),
          .rx_packets = read_sum(context, port, USER_STAT_PACKETS),
          .tx_bytes = read(CHIP_COUNTER_TX_OCTETS),
          .tx_packets = read(CHIP_COUNTER_TX_UNICAST) + read(CHIP_COUNTER_TX_MULTICAST) +
                        read(CHIP_COUNTER_TX_BROADCAST),
          .errors = read_sum(context, port, USER_STAT_ERRORS)};
}

Record total_record(const Port &port, const Reading &now) {
  Record record;
  record.add("port", port.interface);
  for (const Column &column : kColumns) record.add(column.total, now.*column.count);
  return record;
}

// Counters go up, and wrap around from their end. One that went down from
// anywhere else was set to 0 in between, and all of the port's with it.
bool was_reset(const Reading &before, const Reading &now) {
  constexpr uint64_t kHalf = uint64_t{1} << 63;
  return std::ranges::any_of(kColumns, [&](const Column &column) {
    return now.*column.count - before.*column.count >= kHalf;
  });
}

// There is no rate of counters that were reset.
Record rate_record(const Port &port, const Reading &before, const Reading &now, int64_t seconds) {
  const bool reset = was_reset(before, now);
  Record record;
  record.add("port", port.interface);
  for (const Column &column : kColumns) {
    const uint64_t difference = now.*column.count - before.*column.count;
    if (reset) {
      record.add(column.rate, nullptr, "reset");
    } else {
      record.add(column.rate, difference / static_cast<uint64_t>(seconds));
    }
  }
  return record;
}

// The counters by what they count; the chip knows the others by number alone.
struct CounterName {
  uint32_t counter;
  const char *name;
};
constexpr CounterName kCounterNames[] = {
    {CHIP_COUNTER_RX_OCTETS, "rx_octets"},
    {CHIP_COUNTER_RX_UNICAST, "rx_unicast"},
    {CHIP_COUNTER_RX_MULTICAST, "rx_multicast"},
    {CHIP_COUNTER_RX_BROADCAST, "rx_broadcast"},
    {CHIP_COUNTER_TX_OCTETS, "tx_octets"},
    {CHIP_COUNTER_TX_UNICAST, "tx_unicast"},
    {CHIP_COUNTER_TX_MULTICAST, "tx_multicast"},
    {CHIP_COUNTER_TX_BROADCAST, "tx_broadcast"},
    {CHIP_COUNTER_SYMBOL_ERRORS, "symbol_errors"},
    {CHIP_COUNTER_FRAGMENTS, "fragments"},
    {CHIP_COUNTER_OVERSIZE, "oversize"},
    {CHIP_COUNTER_CHECKSUM_ERRORS, "checksum_errors"},
};

Value counter_name(uint32_t counter) {
  const auto *const found = std::ranges::find(kCounterNames, counter, &CounterName::counter);
  return found == std::end(kCounterNames) ? Value(nullptr) : Value(std::string(found->name));
}

Answer all_counters(const Context &context, const std::vector<Port> &ports) {
  Answer answer = {Shape::table, {}, ""};
  for (const Port &port : ports)
    for (uint32_t counter = 0; counter < CHIP_PORT_COUNTERS; ++counter)
      answer.records.push_back(Record()
                                   .add("port", port.interface)
                                   .add("counter", int64_t{counter})
                                   .add("name", counter_name(counter))
                                   .add("value", read_counter(context, port, counter)));
  return answer;
}

std::vector<Reading> read_all(const Context &context, const std::vector<Port> &ports) {
  std::vector<Reading> readings;
  for (const Port &port : ports) readings.push_back(read_port_counters(context, port));
  return readings;
}

Answer stats(const Arguments &arguments, const Context &context) {
  if (arguments.has("all") && arguments.has("period"))
    throw CommandError(wrong_usage("all counters are shown without a period", "period"));
  const auto ports = chosen_ports(arguments);
  if (arguments.has("all")) return all_counters(context, ports);
  Answer answer = {Shape::table, {}, ""};
  const std::vector<Reading> before = read_all(context, ports);
  if (!arguments.has("period")) {
    for (size_t i = 0; i < ports.size(); ++i)
      answer.records.push_back(total_record(ports[i], before[i]));
    return answer;
  }
  const int64_t seconds = arguments.number("period");
  if (!wait_for(std::chrono::seconds(seconds))) throw CommandError(interrupted());
  const std::vector<Reading> now = read_all(context, ports);
  for (size_t i = 0; i < ports.size(); ++i)
    answer.records.push_back(rate_record(ports[i], before[i], now[i], seconds));
  return answer;
}

Answer clear(const Arguments &arguments, const Context &context) {
  for_each_port(ports_given(arguments, "PORTS"), [&](const Port &port) {
    perform(SWSH_CALL(user_port_packetstat_clear), port, kLead, context.unit, port.chip);
  });
  return {};
}

}  // namespace

Node port_stats_command() {
  return {
      .name = "stats",
      .help = "Show counters of ports",
      .positional = {ports_to_show()},
      .keywords = {{.name = "period",
                    .type = number(1, 3600, "seconds"),
                    .help = "Count for so long and show rates per second"},
                   {.name = "all", .type = flag(), .help = "Every counter of the chip"}},
      .details =
          "Without PORTS, all front ports. errors are frames that came in damaged. There\n"
          "is no rate of a port whose counters were set to 0 meanwhile.\n",
      .run = stats,
  };
}

Node port_clear_command() {
  return {
      .name = "clear",
      .help = "Set the counters of ports to 0",
      .positional = {required("PORTS", interface_list(), "Ports to clear")},
      .run = clear,
  };
}

}  // namespace swsh
