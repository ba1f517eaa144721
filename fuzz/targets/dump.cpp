// SPDX-License-Identifier: MIT
// Dump files of the address tables, by the library and by the shell.
#include <swctl/swctl.h>

#include <memory>
#include <unistd.h>

#include "library/bounds.h"
#include "objects/registry.h"
#include "run/command.h"
#include "support/input.h"
#include "support/stage.h"

namespace {

// Records as often as the file has them, and not once more.
void read_by_library(size_t bytes, uint32_t mcast) {
  const size_t each = mcast != 0 ? sizeof(chip_l2_mcast_entry) : sizeof(chip_l2_ucast_entry);
  const size_t room = mcast != 0 ? sizeof(User_mcast_addr_t) : sizeof(user_l2_addr_t);
  const auto record = std::make_unique<uint8_t[]>(room);
  FILE *file = fopen(swfuzz::kInputName, "r");
  size_t count = 0;
  while (user_l2_mactable_fread(record.get(), file, mcast) == 1) ++count;
  fclose(file);
  if (count != bytes / each) swfuzz::wrong(std::to_string(count) + " records");
}

void read_by_shell(bool groups) {
  std::vector<std::string> words = {"mac", "restore-view", swfuzz::kInputName};
  if (groups) words.push_back("groups");
  const swsh::Outcome outcome = swsh::run_command(swsh::command_table(), words, {});
  if (outcome.status() == swsh::kWrongUsage) swfuzz::wrong(outcome.fault->message);
  const swsh::Format format = groups ? swsh::Format::json : swsh::Format::human;
  static swfuzz::MemoryFile file;
  file.set("");
  swsh::DataOutput output(file.descriptor());
  swsh::report(outcome, "swctl", {format}, output);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
  swfuzz::Input input(data, size);
  const bool groups = (input.byte() & 1) != 0;
  const size_t bytes = input.left();
  const swfuzz::Stage stage(input.rest());
  read_by_library(bytes, groups ? 1 : 0);
  read_by_shell(groups);
  return 0;
}
