// SPDX-License-Identifier: MIT
#include <swctl-vchip/vchip.h>

#include <cinttypes>
#include <cstdio>
#include <cstdlib>
#include <filesystem>

#include "describe.h"
#include "frame_commands.h"
#include "frame_words.h"
#include "os/json.h"
#include "port_names.h"
#include "scenario.h"
#include "usage_error.h"

namespace vchipctl {
namespace {

using os::Json;

constexpr size_t kShownDifferences = 20;

// A chip of this process and its children, in an image that goes with it.
class OwnChip {
 public:
  OwnChip() {
    std::string name = std::filesystem::temp_directory_path() / "vchipctl-XXXXXX";
    if (mkdtemp(name.data()) == nullptr) throw Refused(name + ": cannot be made");
    directory_ = name;
    setenv("VCHIP_IMAGE", (directory_ / "chip.img").c_str(), 1);
    vchip_close();
  }
  OwnChip(const OwnChip &) = delete;
  OwnChip &operator=(const OwnChip &) = delete;
  ~OwnChip() {
    vchip_close();
    unsetenv("VCHIP_IMAGE");
    std::error_code ignored;
    std::filesystem::remove_all(directory_, ignored);
  }

 private:
  std::filesystem::path directory_;
};

void print_frame(const char *whose, uint64_t time, const std::vector<uint8_t> &bytes) {
  printf("    %-8s  at %" PRIu64 " ns  %s\n              %s\n", whose, time,
         describe(bytes).c_str(), hex(bytes).c_str());
}

void print_difference(const Difference &each) {
  const char *what = each.expected == nullptr ? "one too many"
                     : each.got == nullptr    ? "is missing"
                                              : "differs";
  printf("  port %s, frame %zu %s\n", port_name(each.port).c_str(), each.number, what);
  if (each.expected != nullptr) print_frame("expected", each.expected->time, each.expected->bytes);
  if (each.got != nullptr) print_frame("got", each.got->time, each.got->bytes);
}

size_t frames_in(const Scenario &scenario) {
  size_t count = 0;
  for (const auto &[port, frames] : scenario.in) count += frames.size();
  return count;
}

void print_text(const Scenario &scenario, size_t frames_out, const std::vector<Difference> &all) {
  printf("%s: %zu frames in, %zu out, ", scenario.directory.c_str(), frames_in(scenario),
         frames_out);
  if (all.empty()) {
    printf("as expected\n");
    return;
  }
  printf("%zu not as expected\n", all.size());
  if (!scenario.about.empty()) printf("  %s\n", scenario.about.c_str());
  for (size_t place = 0; place < std::min(all.size(), kShownDifferences); ++place)
    print_difference(all[place]);
  if (all.size() > kShownDifferences) printf("  and %zu more\n", all.size() - kShownDifferences);
}

Json stamped_json(uint64_t time, const std::vector<uint8_t> &bytes) {
  return {{"time", time}, {"bytes", hex(bytes)}};
}

Json difference_json(const Difference &each) {
  Json json = {{"port", port_json(each.port)}, {"frame", each.number}};
  json["expected"] =
      each.expected != nullptr ? stamped_json(each.expected->time, each.expected->bytes) : Json();
  json["got"] = each.got != nullptr ? stamped_json(each.got->time, each.got->bytes) : Json();
  return json;
}

Json scenario_json(const Scenario &scenario, size_t frames_out,
                   const std::vector<Difference> &all) {
  Json list = Json::array();
  for (const Difference &each : all) list.push_back(difference_json(each));
  return {{"directory", scenario.directory},
          {"about", scenario.about},
          {"frames_in", frames_in(scenario)},
          {"frames_out", frames_out},
          {"differences", list}};
}

// Whether a scenario came out as expected. Its result is printed, or added to
// the document.
bool play_one(const std::string &directory, Json *document) {
  const OwnChip chip;
  const Scenario scenario = load_scenario(directory);
  const std::vector<Departure> departures = run_scenario(scenario);
  const std::vector<Difference> all = differences(scenario, departures);
  if (document == nullptr)
    print_text(scenario, departures.size(), all);
  else
    document->push_back(scenario_json(scenario, departures.size(), all));
  return all.empty();
}

// One that is refused does not keep the others from being played.
bool try_one(const std::string &directory, Json *document) {
  try {
    return play_one(directory, document);
  } catch (const std::exception &error) {
    fprintf(stderr, "vchipctl: %s\n", error.what());
    if (document != nullptr)
      document->push_back({{"directory", directory}, {"refused", error.what()}});
    return false;
  }
}

}  // namespace

void play(const PlayWords &words) {
  setenv("VCHIP_LOG", "none", 0);  // a log that nobody asked for would only be in the way
  Json results = Json::array();
  size_t failed = 0;
  for (const std::string &directory : words.directories)
    if (!try_one(directory, words.json ? &results : nullptr)) ++failed;
  if (words.json) printf("%s\n", os::json_text({{"scenarios", results}}).c_str());
  if (failed == 0) return;
  fflush(stdout);
  throw Refused(std::to_string(failed) + " of " + std::to_string(words.directories.size()) +
                " scenarios not as expected");
}

}  // namespace vchipctl
