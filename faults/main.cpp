// SPDX-License-Identifier: MIT
#include <swctl-probe/probe.h>

#include <cstdio>
#include <cstdlib>
#include <dlfcn.h>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <sys/resource.h>

#include "os/command_line.h"
#include "report.h"

namespace {

constexpr int kGood = 0;
constexpr int kBad = 2;

constexpr const char *kPurpose =
    "Runs a program once for each call of the SDK and the adapter that it makes, with that\n"
    "call failing, and once with all after it, and says what the program made of it";
constexpr const char *kFooter =
    "Each run has a virtual chip of its own: as after power-on, or a copy of the image that\n"
    "VCHIP_IMAGE names. Verdicts: told (its status or what it printed is another), silent\n"
    "(nothing is), crashed, hung, not reached.\n"
    "Exit status: 0 every failure was told, 1 wrong words or a program that cannot be tried,\n"
    "2 a run was silent, crashed or hung, or standard output cannot be written.";

struct CommandLine {
  swfaults::Settings settings;
  bool json = false;
  std::string junit;
};

void add_words(os::Command &app, CommandLine &line) {
  app.add_option("PROGRAM", line.settings.words, "The program and its words, after --").required();
  app.add_flag("-j,--json", line.json, "Print one JSON object");
  app.add_option("--junit", line.junit, "Write JUnit XML to this file too");
  app.add_option("-t,--timeout", line.settings.seconds, "Seconds that a run may take; 10")
      .within(0.01, 86400.0);
  app.add_option("-p,--processes", line.settings.processes, "Runs at a time; one for each core")
      .within(1, 1024);
  app.add_option("-r,--result", line.settings.result, "What a call that fails answers; -1")
      .within(INT32_MIN, -1);
  app.add_option("--only", line.settings.only, "Fail calls with such a name only, as rtk_vlan_*")
      .one_each();
  app.add_version("swctl-faults " SWCTL_VERSION);
  app.footer(kFooter);
}

// The probe that this program itself is linked with.
std::string probe_library() {
  Dl_info info = {};
  const auto address = reinterpret_cast<const void *>(&swprobe::forget);
  if (dladdr(address, &info) == 0 || info.dli_fname == nullptr)
    throw std::runtime_error("cannot find the probe");
  return std::filesystem::canonical(info.dli_fname).string();
}

void take_environment(swfaults::Settings &settings) {
  const char *image = getenv("VCHIP_IMAGE");
  if (image != nullptr && std::filesystem::exists(image)) settings.image = image;
  settings.probe = probe_library();
}

// A program that crashes on purpose need not leave a core each time.
void without_cores() {
  const struct rlimit none = {0, 0};
  setrlimit(RLIMIT_CORE, &none);
}

void write_file(const std::string &path, const std::string &text) {
  std::ofstream file(path);
  file << text;
  file.close();
  if (!file) throw std::runtime_error("cannot write '" + path + "'");
}

int run(CommandLine &line) {
  take_environment(line.settings);
  without_cores();
  const swfaults::Outcome outcome = swfaults::try_faults(line.settings);
  if (!line.junit.empty()) write_file(line.junit, swfaults::junit(line.settings, outcome));
  if (line.json) {
    puts(swfaults::json(line.settings, outcome).c_str());
  } else {
    printf("%s%s\n", swfaults::table(outcome).c_str(), swfaults::summary(outcome).c_str());
  }
  for (const swfaults::Run &each : outcome.runs)
    if (swfaults::is_bad(each.verdict)) return kBad;
  return kGood;
}

}  // namespace

int main(int argc, char **argv) {
  os::Command app{kPurpose, "swctl-faults"};
  CommandLine line;
  add_words(app, line);
  return os::run_program_main(app, argc, argv, [&] { return run(line); });
}
