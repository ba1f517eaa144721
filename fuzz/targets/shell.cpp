// SPDX-License-Identifier: MIT
// A batch file, or one command line with its options.
#include <fcntl.h>
#include <getopt.h>
#include <unistd.h>

#include "library/calls.h"
#include "objects/registry.h"
#include "os/json.h"
#include "run/batch.h"
#include "run/command.h"
#include "run/options.h"
#include "support/stage.h"

namespace {

using swfuzz::Input;

constexpr uint8_t kJson = 1;
constexpr uint8_t kPretty = 2;
constexpr uint8_t kForce = 4;
constexpr uint8_t kLine = 8;

swsh::Format format_of(uint8_t options) {
  if ((options & kPretty) != 0) return swsh::Format::pretty;
  return (options & kJson) != 0 ? swsh::Format::json : swsh::Format::human;
}

swsh::Status run_batch(Input &input, uint8_t options, swsh::DataOutput &output) {
  const swfuzz::Stage stage(input.rest());
  return swsh::run_batch(swsh::command_table(),
                         {.file = swfuzz::kInputName,
                          .force = (options & kForce) != 0,
                          .style = {.format = format_of(options)},
                          .context = {}},
                         output);
}

// One word on a line.
std::vector<std::string> words_of(Input &input) {
  std::vector<std::string> words = {"swctl"};
  std::string word;
  for (const char character : input.rest()) {
    if (character == '\n') words.push_back(std::exchange(word, {}));
    if (character != '\n' && character != '\0') word += character;
  }
  if (!word.empty()) words.push_back(word);
  return words;
}

swsh::Settings settings_of(Input &input) {
  std::vector<std::string> words = words_of(input);
  std::vector<char *> arguments;
  for (std::string &word : words) arguments.push_back(word.data());
  arguments.push_back(nullptr);
  optind = 0;  // getopt() begins again
  return swsh::read_options(static_cast<int>(words.size()), arguments.data());
}

swsh::Status run_line(Input &input, swsh::DataOutput &output) {
  const swfuzz::Stage stage;
  const swsh::Settings settings = settings_of(input);
  if (settings.fault) return settings.fault->status;
  const swsh::Outcome outcome =
      swsh::run_command(swsh::command_table(), settings.words, {settings.unit, {}});
  return swsh::report(outcome, "swctl", settings.style(), output);
}

// What a program reads as JSON is JSON, whatever was asked.
void expect_json(const swfuzz::MemoryFile &file) {
  const std::string text = file.content();
  if (os::try_parse_json(text).is_discarded()) swfuzz::wrong("no JSON: " + text);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
  static swfuzz::MemoryFile file;
  file.set("");
  swfuzz::reset();
  swsh::DataOutput output(file.descriptor());
  Input input(data, size);
  const uint8_t options = input.byte();
  try {
    const bool line = (options & kLine) != 0;
    const swsh::Status status = line ? run_line(input, output) : run_batch(input, options, output);
    if (status < swsh::kDone || status > swsh::kRefused) swfuzz::wrong("no such status");
    if (!line && format_of(options) != swsh::Format::human) expect_json(file);
  } catch (const swfuzz::SleptEnough &) {
  }
  return 0;
}
