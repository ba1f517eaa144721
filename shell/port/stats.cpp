// SPDX-License-Identifier: MIT
#include <swctl/platform/port_records.h>

#include <chrono>
#include <cstdint>

#include "chip/call.h"
#include "chip/each.h"
#include "chip/lead.h"
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

// A counter that wrapped around in between still gives the right difference.
Record rate_record(const Port &port, const Reading &before, const Reading &now, int64_t seconds) {
  Record record;
  record.add("port", port.interface);
  for (const Column &column : kColumns) {
    const uint64_t difference = now.*column.count - before.*column.count;
    record.add(column.rate, difference / static_cast<uint64_t>(seconds));
  }
  return record;
}

std::vector<Reading> read_all(const Context &context, const std::vector<Port> &ports) {
  std::vector<Reading> readings;
  for (const Port &port : ports) readings.push_back(read_port_counters(context, port));
  return readings;
}

Answer stats(const Arguments &arguments, const Context &context) {
  const auto ports = chosen_ports(arguments);
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
  for_each_port(ports_of(arguments.numbers("PORTS")), [&](const Port &port) {
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
                    .help = "Count for so long and show rates per second"}},
      .details = "Without PORTS, all front ports. errors are frames that came in damaged.\n",
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
