// SPDX-License-Identifier: MIT
#include "os/command_line.h"

#include <cstdio>
#include <iostream>

namespace os {
namespace {

constexpr int kWrongUsage = 1;
constexpr int kRefused = 2;

void expect_printed() {
  std::cout.flush();
  if (!std::cout || fflush(stdout) != 0 || ferror(stdout) != 0)
    throw Refused("standard output cannot be written");
}

int complain(const CLI::App &app, const std::exception &error, int status) {
  fprintf(stderr, "%s: %s\n", app.get_name().c_str(), error.what());
  return status;
}

}  // namespace

int parse_and_run(CLI::App &app, int argc, char **argv, const std::function<int()> &run) {
  int status = 0;
  try {
    app.parse(argc, argv);
    status = run();
  } catch (const CLI::Success &success) {
    app.exit(success);
  }
  expect_printed();
  return status;
}

int run_program_main(CLI::App &app, int argc, char **argv, const std::function<int()> &run) {
  try {
    return parse_and_run(app, argc, argv, run);
  } catch (const Refused &error) {
    return complain(app, error, kRefused);
  } catch (const std::exception &error) {
    return complain(app, error, kWrongUsage);
  }
}

}  // namespace os
