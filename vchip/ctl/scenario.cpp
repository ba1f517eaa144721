// SPDX-License-Identifier: MIT
#include "scenario.h"

#include <swctl-vchip/ability.h>
#include <swctl-vchip/vchip.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <tuple>

#include "port_names.h"
#include "shell_run.h"
#include "usage_error.h"
#include "words.h"

namespace vchipctl {
namespace {

namespace fs = std::filesystem;

constexpr uint32_t kPlayedUnit = 0;
constexpr const char *kSuffix = ".pcap";

std::string read_file(const fs::path &file) {
  std::ifstream stream(file);
  std::string text{std::istreambuf_iterator<char>(stream), {}};
  while (!text.empty() && text.back() == '\n') text.pop_back();
  return text;
}

// "3.pcap": the chip port of interface 3.
int32_t port_of_file(const fs::path &file) {
  const std::string number = file.stem();
  if (file.extension() == kSuffix && number.find_first_not_of("0123456789") == std::string::npos)
    try {
      return parse_one_port(number);
    } catch (const UsageError &) {
    }
  throw Refused(file.string() + ": expected the number of an interface and " + kSuffix +
                ", such as 3.pcap");
}

std::map<int32_t, std::vector<CapturedFrame>> load_captures(const fs::path &directory) {
  std::map<int32_t, std::vector<CapturedFrame>> captures;
  if (!fs::exists(directory)) return captures;
  for (const fs::directory_entry &entry : fs::directory_iterator(directory)) {
    const int32_t port = port_of_file(entry.path());
    captures[port] = read_capture(entry.path(), {});
  }
  return captures;
}

uint64_t load_until(const fs::path &file) {
  if (!fs::exists(file)) return 0;
  try {
    return parse_number(read_file(file), "time", UINT64_MAX);
  } catch (const UsageError &error) {
    throw Refused(file.string() + ": " + error.what());
  }
}

void plug_cables() {
  const vchip_partner_t partner = {1, VCHIP_ABILITY_USUAL};
  for (int32_t port = 0; port < VCHIP_CPU_PORT; ++port)
    if (interface_of(port) >= 0) expect_done(vchip_cable_plug(kPlayedUnit, port, &partner));
}

struct Arrival {
  const CapturedFrame *frame;
  int32_t port;
};

bool arrives_before(const Arrival &first, const Arrival &second) {
  return std::make_tuple(first.frame->time, port_rank(first.port)) <
         std::make_tuple(second.frame->time, port_rank(second.port));
}

std::vector<Arrival> arrivals_of(const Scenario &scenario) {
  std::vector<Arrival> arrivals;
  for (const auto &[port, frames] : scenario.in)
    for (const CapturedFrame &frame : frames) arrivals.push_back({&frame, port});
  std::stable_sort(arrivals.begin(), arrivals.end(), arrives_before);
  return arrivals;
}

bool is_equal(const CapturedFrame &expected, const Departure &got) {
  return expected.time == got.time && expected.bytes == got.bytes;
}

// Of one port: what is equal at the beginning and at the end is left out, so
// that a frame too many or too few does not make all others differ.
void add_differences(int32_t port, const std::vector<CapturedFrame> &expected,
                     const std::vector<const Departure *> &got, std::vector<Difference> &all) {
  size_t first = 0;
  size_t expected_end = expected.size();
  size_t got_end = got.size();
  while (first < std::min(expected_end, got_end) && is_equal(expected[first], *got[first])) ++first;
  while (std::min(expected_end, got_end) > first &&
         is_equal(expected[expected_end - 1], *got[got_end - 1])) {
    --expected_end;
    --got_end;
  }
  for (size_t place = first; place < std::max(expected_end, got_end); ++place)
    all.push_back({port, place + 1, place < expected_end ? &expected[place] : nullptr,
                   place < got_end ? got[place] : nullptr});
}

}  // namespace

Scenario load_scenario(const std::string &directory) {
  const fs::path root = directory;
  if (!fs::is_directory(root)) throw Refused(directory + ": no such folder");
  if (!fs::is_regular_file(root / "config"))
    throw Refused(directory + ": no scenario: there is no file config");
  return {directory,
          read_file(root / "about"),
          root / "config",
          load_captures(root / "in"),
          load_captures(root / "out"),
          load_until(root / "until")};
}

std::vector<Departure> run_scenario(const Scenario &scenario) {
  plug_cables();
  run_shell(scenario.config);
  std::vector<Departure> departures;
  for (const Arrival &arrival : arrivals_of(scenario)) {
    advance_to(arrival.frame->time);
    arrive(kPlayedUnit, arrival.port, arrival.frame->bytes);
    take_departures(kPlayedUnit, departures);
  }
  advance_to(scenario.until);
  take_departures(kPlayedUnit, departures);
  return departures;
}

std::vector<Difference> differences(const Scenario &scenario,
                                    const std::vector<Departure> &departures) {
  const std::vector<CapturedFrame> nothing;
  std::vector<Difference> all;
  for (const int32_t port : ports_by_name()) {
    std::vector<const Departure *> got;
    for (const Departure &departure : departures)
      if (departure.port == port) got.push_back(&departure);
    const auto expected = scenario.out.find(port);
    add_differences(port, expected == scenario.out.end() ? nothing : expected->second, got, all);
  }
  return all;
}

}  // namespace vchipctl
