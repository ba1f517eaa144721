// SPDX-License-Identifier: MIT
#include <algorithm>
#include <cstdio>
#include <stdexcept>
#include <string>
#include <vector>

#include "os/command_line.h"
#include "report.h"

namespace {

constexpr int kSame = 0;
constexpr int kDiffers = 2;

constexpr const char *kPurpose =
    "Makes the calls of recordings again, on this platform, and compares the answers";
constexpr const char *kFooter =
    "The platform is the virtual chip: VCHIP_IMAGE names its image; without one the\n"
    "chip is private and gone at the end. Calls that a fault plan answered when they\n"
    "were recorded never reached the platform; they are counted and left out.\n"
    "Exit status: 0 every answer the same, 1 wrong words or a broken recording (then\n"
    "no call is made), 2 an answer differs, the platform cannot be used or standard\n"
    "output cannot be written.";

struct CommandLine {
  std::vector<std::string> files;
  bool json = false;
  bool keep_going = false;
};

void add_words(os::Command &app, CommandLine &line) {
  app.add_option("FILE", line.files,
                 "A recording; several are replayed in turn; - is standard input")
      .required();
  app.add_flag("-j,--json", line.json, "Print one JSON object");
  app.add_flag("-k,--keep-going", line.keep_going, "Go on after an answer that differs");
  app.add_version("swctl-replay " SWCTL_VERSION);
  app.footer(kFooter);
}

void complain(const std::string &text) {
  fprintf(stderr, "swctl-replay: %s\n", text.c_str());
}

std::vector<swreplay::Recording> read_all(const std::vector<std::string> &files) {
  if (std::count(files.begin(), files.end(), "-") > 1)
    throw std::runtime_error("standard input can be read only once");
  std::vector<swreplay::Recording> recordings;
  for (const std::string &file : files) {
    recordings.push_back(swreplay::read(file));
    if (!recordings.back().warning.empty()) complain(recordings.back().warning);
  }
  return recordings;
}

int run(const CommandLine &line) {
  const std::vector<swreplay::Recording> recordings = read_all(line.files);
  if (const char *fault = swreplay::platform_fault()) throw os::Refused(fault);
  swreplay::Outcome outcome;
  for (const swreplay::Recording &recording : recordings)
    if (!swreplay::replay(recording, line.keep_going, outcome)) break;
  for (const swreplay::Difference &difference : outcome.differences)
    fputs(swreplay::text_of(difference).c_str(), stderr);
  puts((line.json ? swreplay::json_of(outcome) : swreplay::summary(outcome)).c_str());
  return outcome.differences.empty() ? kSame : kDiffers;
}

}  // namespace

int main(int argc, char **argv) {
  os::Command app{kPurpose, "swctl-replay"};
  CommandLine line;
  add_words(app, line);
  return os::run_program_main(app, argc, argv, [&] { return run(line); });
}
