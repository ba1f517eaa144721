// SPDX-License-Identifier: MIT
// shell_unit_sweep COMMANDS [EVERY]: every command of the shell works on the unit
// that it is given, or refuses that unit; every EVERYth line is tried. On a chip whose unit 0 has
// something in every table and whose unit 1 is as after power-on, a command on unit 1 leaves unit 0
// alone, and answers and does what it does on unit 0 of a fresh chip.
#include <cstdio>
#include <string>

#include "cover.h"
#include "os/json.h"
#include "run.h"
#include "world.h"

namespace {

using namespace shell_sweep;
using os::Json;

// A unit of a dump, without its number.
Json unit_of(const std::string &dump, size_t unit) {
  Json json = os::parse_json(dump).at("units").at(unit);
  json.erase("unit");
  return json;
}

bool refuses_unit(const Run &run) {
  return run.status == 1 && run.message.ends_with("expected unit 0");
}

// The message of unit 1 as that of unit 0 would be.
std::string as_of_unit_0(std::string message) {
  const size_t at = message.find("unit 1");
  return at == std::string::npos ? message : message.replace(at, 6, "unit 0");
}

std::string judge(const Run &on_1, const Run &on_0, const Json &unit_0) {
  if (refuses_unit(on_1)) return "";
  if (unit_of(on_1.chip, 0) != unit_0) return "changes unit 0";
  if (on_1.status != on_0.status || as_of_unit_0(on_1.message) != on_0.message)
    return "ends otherwise than on unit 0: " + on_1.message;
  if (on_1.status == 0 && on_1.answer != on_0.answer)
    return "answers otherwise than on unit 0: " + on_1.answer;
  if (unit_of(on_1.chip, 1) != unit_of(on_0.chip, 0)) return "leaves unit 1 otherwise than unit 0";
  return "";
}

}  // namespace

int main(int count, char **words) {
  if (count < 2) return 2;
  const Commands commands = read_commands(words[1]);
  enter_new_directory();
  if (!covers_everything(commands)) return 1;
  SharedChip fresh;
  fresh.take();
  const SharedChip &prepared = prepared_chip(commands, 0);
  prepared.put_back();
  const Json unit_0 = unit_of(run({.line = "version", .with_dump = true}).chip, 0);
  const size_t every = count > 2 ? std::stoul(words[2]) : 1;
  size_t tried = 0;
  size_t problems = 0;
  for (size_t at = 0; at < commands.swept.size(); at += every, ++tried) {
    const std::string &line = commands.swept[at];
    // Says which settings of unit 1 the library does not reach.
    if (line.starts_with("config ") || line.starts_with("monitor")) continue;
    fresh.put_back();
    const Run on_0 = run({.line = line, .with_dump = true});
    prepared.put_back();
    const std::string wrong =
        judge(run({.line = line, .unit = 1, .with_dump = true}), on_0, unit_0);
    if (!wrong.empty()) printf("%s on unit 1 %s\n", line.c_str(), wrong.c_str());
    problems += wrong.empty() ? 0 : 1;
  }
  printf("unit sweep: %zu commands, %zu problems\n", tried, problems);
  return problems == 0 ? 0 : 1;
}
