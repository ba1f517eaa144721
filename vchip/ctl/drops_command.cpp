// SPDX-License-Identifier: MIT
#include <swctl-vchip/frame.h>

#include <algorithm>
#include <cinttypes>
#include <cstdio>
#include <iterator>

#include "frame_commands.h"
#include "os/json.h"
#include "port_names.h"
#include "usage_error.h"
#include "words.h"

namespace vchipctl {
namespace {

using os::Json;

// The counters in their order, by the names of the steps.
struct Counter {
  const char *name;
  uint64_t vchip_drops_t::*count;
};
constexpr Counter kCounters[] = {
    {"received", &vchip_drops_t::received},
    {"forwarded", &vchip_drops_t::forwarded},
    {"taken", &vchip_drops_t::taken},
    {"attack", &vchip_drops_t::attack},
    {"ingress-rate", &vchip_drops_t::ingress_rate},
    {"vlan", &vchip_drops_t::vlan},
    {"filter", &vchip_drops_t::filter},
    {"trap", &vchip_drops_t::trap},
    {"state", &vchip_drops_t::state},
    {"learn", &vchip_drops_t::learn},
    {"rule", &vchip_drops_t::rule},
    {"lookup", &vchip_drops_t::lookup},
    {"storm", &vchip_drops_t::storm},
    {"egress", &vchip_drops_t::egress},
    {"port", &vchip_drops_t::port},
    {"length", &vchip_drops_t::length},
    {"queue", &vchip_drops_t::queue},
    {"loop", &vchip_drops_t::loop},
    {"held", &vchip_drops_t::held},
};
constexpr size_t kAlwaysShown = 2;

struct Row {
  int32_t port;
  vchip_drops_t drops;

  bool has_counted() const {
    return std::any_of(std::begin(kCounters), std::end(kCounters),
                       [&](const Counter &counter) { return drops.*counter.count != 0; });
  }
};

std::vector<Row> read_rows(uint32_t unit, const std::vector<int32_t> &ports) {
  std::vector<Row> rows;
  for (const int32_t port : ports) {
    rows.push_back({port, {}});
    expect_done(vchip_drops_get(unit, port, &rows.back().drops));
  }
  return rows;
}

Json row_json(const Row &row) {
  Json counts;
  for (const Counter &counter : kCounters) counts[counter.name] = row.drops.*counter.count;
  return {{"port", port_json(row.port)}, {"counts", counts}};
}

void print_rows_json(const std::vector<Row> &rows) {
  Json all = Json::array();
  for (const Row &row : rows) all.push_back(row_json(row));
  printf("%s\n", os::json_text(all).c_str());
}

// The counters that some row has, and the first ones, or all.
std::vector<Counter> columns_of(const std::vector<Row> &rows, bool all) {
  std::vector<Counter> columns;
  for (const Counter &counter : kCounters) {
    const bool counted = std::any_of(rows.begin(), rows.end(),
                                     [&](const Row &row) { return row.drops.*counter.count != 0; });
    if (all || counted || columns.size() < kAlwaysShown) columns.push_back(counter);
  }
  return columns;
}

int width_of(const Counter &counter, const std::vector<Row> &rows) {
  size_t width = std::string(counter.name).size();
  for (const Row &row : rows)
    width = std::max(width, std::to_string(row.drops.*counter.count).size());
  return static_cast<int>(width);
}

void print_drops_table(const std::vector<Row> &rows, bool all) {
  const std::vector<Counter> columns = columns_of(rows, all);
  printf("port");
  for (const Counter &each : columns) printf("  %*s", width_of(each, rows), each.name);
  for (const Row &row : rows) {
    printf("\n%-4s", port_name(row.port).c_str());
    for (const Counter &each : columns)
      printf("  %*" PRIu64, width_of(each, rows), row.drops.*each.count);
  }
  printf("\n");
}

void show(const TrafficWords &words, uint32_t unit, const std::vector<int32_t> &ports, bool asked) {
  std::vector<Row> rows = read_rows(unit, ports);
  if (words.json) return print_rows_json(rows);
  if (!asked && !words.all) std::erase_if(rows, [](const Row &row) { return !row.has_counted(); });
  print_drops_table(rows, words.all);
}

void clear(uint32_t unit, const std::vector<int32_t> &ports) {
  for (const int32_t port : ports) expect_done(vchip_drops_clear(unit, port));
}

}  // namespace

// "show", "clear", both with ports after them or not, or ports alone.
void drops(const TrafficWords &words) {
  std::vector<std::string> rest = words.words;
  const bool clears = !rest.empty() && rest.front() == "clear";
  if (clears || (!rest.empty() && rest.front() == "show")) rest.erase(rest.begin());
  if (rest.size() > 1) {
    if (rest.size() == words.words.size())
      throw UsageError("no drops command '" + rest[0] + "': expected show or clear");
    throw UsageError("'" + rest[1] + "' does not belong here");
  }
  const uint32_t unit = parse_unit(words.unit);
  const bool asked = !rest.empty();
  const std::vector<int32_t> ports = asked ? parse_all_ports(rest.front()) : ports_by_name();
  if (clears) return clear(unit, ports);
  show(words, unit, ports, asked);
}

}  // namespace vchipctl
