// SPDX-License-Identifier: MIT
#include <chrono>
#include <map>
#include <tuple>

#include "chip/address_table.h"
#include "fault.h"
#include "interrupt.h"
#include "objects/mac.h"

namespace swsh {
namespace {

using Clock = std::chrono::steady_clock;
using Key = std::tuple<uint32_t, std::string>;
using Table = std::map<Key, user_l2_addr_t>;

constexpr int64_t kUsualInterval = 500;  // milliseconds
constexpr int64_t kLongest = 1000000;

Table read_table(const AddressFilter &filter) {
  Table table;
  for (const user_l2_addr_t &entry : read_addresses()) {
    if (!filter.fits(entry)) continue;
    table.emplace(Key(entry.vid, std::string(std::begin(entry.mac), std::end(entry.mac))), entry);
  }
  return table;
}

bool is_same(const user_l2_addr_t &one, const user_l2_addr_t &other) {
  return std::tie(one.port, one.tgid, one.flags) == std::tie(other.port, other.tgid, other.flags);
}

// Shows one line after another.
struct Teller {
  const Context &context;
  Interfaces interfaces;

  void operator()(const char *event, const user_l2_addr_t &entry) const;
};

void Teller::operator()(const char *event, const user_l2_addr_t &entry) const {
  Record record;
  record.add("event", std::string(event));
  const Record shown = address_record(interfaces, entry);
  record.fields.insert(record.fields.end(), shown.fields.begin(), shown.fields.end());
  context.emit(record);
}

// An entry that changed has gone and come.
void tell_changes(const Teller &tell, const Table &before, const Table &now) {
  const auto in = [](const Table &table, const Table::value_type &entry) {
    const auto found = table.find(entry.first);
    return found != table.end() && is_same(found->second, entry.second);
  };
  for (const auto &entry : before)
    if (!in(now, entry)) tell("removed", entry.second);
  for (const auto &entry : now)
    if (!in(before, entry)) tell("added", entry.second);
}

void watch(const Arguments &arguments, const Context &context) {
  const auto given = [&](const char *name, int64_t otherwise) {
    return arguments.has(name) ? arguments.number(name) : otherwise;
  };
  const std::chrono::milliseconds interval(given("interval", kUsualInterval));
  const Clock::time_point end = Clock::now() + std::chrono::seconds(given("seconds", 0));
  const AddressFilter filter = filter_of(arguments);
  const Teller tell = {context, {}};
  Table before = read_table(filter);
  while (!arguments.has("seconds") || Clock::now() < end) {
    if (!wait_for(interval)) break;
    Table now = read_table(filter);
    tell_changes(tell, before, now);
    before = std::move(now);
  }
}

Answer monitor(const Arguments &arguments, const Context &context) {
  expect_unit_0(context);
  if (!context.emit) {
    throw CommandError(
        wrong_usage("monitor shows changes as they happen, not in a batch", "monitor"));
  }
  try {
    watch(arguments, context);
  } catch (const CommandError &) {
    if (!take_interrupt()) throw;  // else it ends as it is meant to
  }
  return {Shape::shown, {}, ""};
}

}  // namespace

Node mac_monitor_command() {
  Node node = {
      .name = "monitor",
      .help = "Print additions and removals as they happen",
      .keywords = filter_keywords(),
      .details =
          "Runs until it is interrupted. The table is read again and again; what comes\n"
          "and goes between two readings is not seen. An address that changes is removed\n"
          "and added. With -j every line is a JSON object.\n",
      .run = monitor,
  };
  node.keywords.push_back({.name = "interval",
                           .type = number(10, kLongest, "milliseconds"),
                           .help = "Between two readings; 500 if not given"});
  node.keywords.push_back(
      {.name = "seconds", .type = number(1, kLongest, "seconds"), .help = "End after this time"});
  return node;
}

}  // namespace swsh
