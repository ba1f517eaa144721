// SPDX-License-Identifier: MIT
#include <CLI/CLI.hpp>
#include <cstdio>
#include <exception>
#include <string>
#include <vector>

#include "report.h"

namespace {

constexpr int kSame = 0;
constexpr int kWrongUsage = 1;
constexpr int kDiffers = 2;

constexpr const char *kPurpose =
    "Makes the calls of recordings again, on this platform, and compares the answers";
constexpr const char *kFooter =
    "The platform is the virtual chip: VCHIP_IMAGE names its image; without one the\n"
    "chip is private and gone at the end. Calls that a fault plan answered when they\n"
    "were recorded never reached the platform; they are counted and left out.\n"
    "Exit status: 0 every answer the same, 1 wrong words or a broken recording (then\n"
    "no call is made), 2 an answer differs.";

struct CommandLine {
  std::vector<std::string> files;
  bool json = false;
  bool keep_going = false;
};

void add_words(CLI::App &app, CommandLine &line) {
  app.add_option("FILE", line.files, "A recording; several are replayed in turn")->required();
  app.add_flag("-j,--json", line.json, "Print one JSON object");
  app.add_flag("-k,--keep-going", line.keep_going, "Go on behind an answer that differs");
  app.footer(kFooter);
}

int complain(const std::string &text) {
  fprintf(stderr, "swctl-replay: %s\n", text.c_str());
  return kWrongUsage;
}

int run(const CommandLine &line) {
  std::vector<swreplay::Recording> recordings;
  for (const std::string &file : line.files) recordings.push_back(swreplay::read(file));
  swreplay::Outcome outcome;
  for (const swreplay::Recording &recording : recordings)
    if (!swreplay::replay(recording, line.keep_going, outcome)) break;
  for (const swreplay::Difference &difference : outcome.differences)
    fputs(swreplay::text_of(difference).c_str(), stderr);
  puts((line.json ? swreplay::json_of(outcome) : swreplay::summary(outcome)).c_str());
  if (fflush(stdout) != 0) return complain("standard output cannot be written");
  return outcome.differences.empty() ? kSame : kDiffers;
}

}  // namespace

int main(int argc, char **argv) {
  CLI::App app{kPurpose, "swctl-replay"};
  CommandLine line;
  add_words(app, line);
  try {
    app.parse(argc, argv);
    return run(line);
  } catch (const CLI::Success &success) {
    return app.exit(success);
  } catch (const std::exception &error) {
    return complain(error.what());
  }
}
