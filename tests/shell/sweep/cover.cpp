// SPDX-License-Identifier: MIT
#include "cover.h"

#include <cstdio>
#include <map>
#include <set>
#include <stdexcept>

namespace shell_sweep {

bool covers_everything(const Commands &commands) {
  std::map<std::string, std::set<std::string>> swept;
  for (const std::string &line : commands.swept) {
    const Given given = given_in(line);
    swept[given.command].insert(given.names.begin(), given.names.end());
  }
  bool all = true;
  for (const Given &command : all_commands()) {
    const bool is_there = swept.contains(command.command);
    if (!is_there) printf("%s is not swept\n", command.command.c_str());
    all = all && is_there;
    for (const std::string &name : command.names) {
      if (!is_there || swept[command.command].contains(name)) continue;
      printf("%s is not swept with %s\n", command.command.c_str(), name.c_str());
      all = false;
    }
  }
  return all;
}

const SharedChip &prepared_chip(const Commands &commands, uint32_t unit) {
  static SharedChip chip;
  chip.take();
  for (const std::string &line : commands.preparing) {
    chip.put_back();
    const Run done = run({.line = line, .unit = unit, .keep_in = &chip});
    if (done.status != 0) throw std::runtime_error(line + ": " + done.message);
  }
  chip.put_back();
  let_things_happen(unit);
  chip.take();
  return chip;
}

}  // namespace shell_sweep
