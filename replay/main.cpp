// SPDX-License-Identifier: MIT
#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdio>
#include <exception>
#include <iostream>
#include <stdexcept>
#include <string>
#include <vector>

#include "report.h"

namespace {

constexpr int kSame = 0;
constexpr int kWrongUsage = 1;
constexpr int kDiffers = 2;
constexpr int kRefused = 2;

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

void add_words(CLI::App &app, CommandLine &line) {
  app.add_option("FILE", line.files,
                 "A recording; several are replayed in turn; - is standard input")
      ->required();
  app.add_flag("-j,--json", line.json, "Print one JSON object");
  app.add_flag("-k,--keep-going", line.keep_going, "Go on after an answer that differs");
  app.set_version_flag("-V,--version", "swctl-replay " SWCTL_VERSION, "Print the version and end");
  app.footer(kFooter);
}

// What is no fault of the words or of a recording.
struct Refused : std::runtime_error {
  using std::runtime_error::runtime_error;
};

void complain(const std::string &text) {
  fprintf(stderr, "swctl-replay: %s\n", text.c_str());
}

int failed(const std::exception &error, int status) {
  complain(error.what());
  return status;
}

// Whether all that was printed has arrived.
void expect_printed() {
  std::cout.flush();
  if (!std::cout || fflush(stdout) != 0 || ferror(stdout) != 0)
    throw Refused("standard output cannot be written");
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
  if (const char *fault = swreplay::platform_fault()) throw Refused(fault);
  swreplay::Outcome outcome;
  for (const swreplay::Recording &recording : recordings)
    if (!swreplay::replay(recording, line.keep_going, outcome)) break;
  for (const swreplay::Difference &difference : outcome.differences)
    fputs(swreplay::text_of(difference).c_str(), stderr);
  puts((line.json ? swreplay::json_of(outcome) : swreplay::summary(outcome)).c_str());
  return outcome.differences.empty() ? kSame : kDiffers;
}

// Runs what the words ask for; help and version are printed at once.
int parse_and_run(CLI::App &app, const CommandLine &line, int argc, char **argv) {
  int status = kSame;
  try {
    app.parse(argc, argv);
    status = run(line);
  } catch (const CLI::Success &success) {
    app.exit(success);
  }
  expect_printed();
  return status;
}

}  // namespace

int main(int argc, char **argv) {
  CLI::App app{kPurpose, "swctl-replay"};
  CommandLine line;
  add_words(app, line);
  try {
    return parse_and_run(app, line, argc, argv);
  } catch (const Refused &error) {
    return failed(error, kRefused);
  } catch (const std::exception &error) {
    return failed(error, kWrongUsage);
  }
}
