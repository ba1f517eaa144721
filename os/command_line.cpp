// SPDX-License-Identifier: MIT
#include "os/command_line.h"

#include <CLI/CLI.hpp>
#include <cstdio>
#include <iostream>

namespace os {
namespace {

constexpr int kWrongUsage = 1;
constexpr int kRefused = 2;

const CLI::App &last_given(const CLI::App &app) {
  const std::vector<CLI::App *> given = app.get_subcommands();
  return given.empty() ? app : last_given(*given.front());
}

void expect_printed() {
  std::cout.flush();
  if (!std::cout || fflush(stdout) != 0 || ferror(stdout) != 0)
    throw Refused("standard output cannot be written");
}

int complain(const Command &program, const std::exception &error, int status) {
  fprintf(stderr, "%s: %s\n", program.name().c_str(), error.what());
  return status;
}

}  // namespace

Option &Option::required() {
  option_->required();
  return *this;
}

Option &Option::within(int least, int most) {
  option_->check(CLI::Range(least, most));
  return *this;
}

Option &Option::within(double least, double most) {
  option_->check(CLI::Range(least, most));
  return *this;
}

Option &Option::one_each() {
  option_->allow_extra_args(false);
  return *this;
}

Option &Option::shown_as(const std::string &text) {
  option_->option_text(text);
  return *this;
}

Command::Command(const std::string &purpose, const std::string &name)
    : app_(std::make_shared<CLI::App>(purpose, name)) {}

Command Command::add_subcommand(const std::string &name, const std::string &purpose) {
  // The program owns its commands.
  return Command(
      std::shared_ptr<CLI::App>(std::shared_ptr<CLI::App>(), app_->add_subcommand(name, purpose)));
}

Option Command::add_option(const std::string &names, std::string &value,
                           const std::string &purpose) {
  return Option(*app_->add_option(names, value, purpose));
}

Option Command::add_option(const std::string &names, std::optional<std::string> &value,
                           const std::string &purpose) {
  return Option(*app_->add_option(names, value, purpose));
}

Option Command::add_option(const std::string &names, std::vector<std::string> &value,
                           const std::string &purpose) {
  return Option(*app_->add_option(names, value, purpose));
}

Option Command::add_option(const std::string &names, int32_t &value, const std::string &purpose) {
  return Option(*app_->add_option(names, value, purpose));
}

Option Command::add_option(const std::string &names, uint32_t &value, const std::string &purpose) {
  return Option(*app_->add_option(names, value, purpose));
}

Option Command::add_option(const std::string &names, double &value, const std::string &purpose) {
  return Option(*app_->add_option(names, value, purpose));
}

void Command::add_flag(const std::string &names, bool &value, const std::string &purpose) {
  app_->add_flag(names, value, purpose);
}

void Command::add_version(const std::string &text) {
  app_->set_version_flag("-V,--version", text, "Print the version and end");
}

void Command::footer(const std::string &text) {
  app_->footer(text);
}

void Command::require_subcommand() {
  app_->require_subcommand(1);
}

void Command::fallthrough(bool may) {
  app_->fallthrough(may);
}

void Command::prefix_command() {
  app_->prefix_command();
}

void Command::callback(std::function<void()> call) {
  app_->callback(std::move(call));
}

bool Command::got(const Command &subcommand) const {
  return app_->got_subcommand(subcommand.app_.get());
}

std::vector<std::string> Command::remaining() const {
  return app_->remaining();
}

std::vector<std::string> Command::remaining_in_all() const {
  return app_->remaining(true);
}

std::vector<std::string> Command::expected_subcommands() const {
  std::vector<std::string> names;
  for (const CLI::App *command : last_given(*app_).get_subcommands(nullptr))
    names.push_back(command->get_name());
  return names;
}

std::string Command::name() const {
  return app_->get_name();
}

std::string Command::whole_help() const {
  return app_->help("", CLI::AppFormatMode::All);
}

bool Command::parse(int argc, char **argv) {
  try {
    app_->parse(argc, argv);
    return true;
  } catch (const CLI::Success &success) {
    app_->exit(success);
    return false;
  } catch (const CLI::ParseError &error) {
    WrongLine fault(error.what());
    fault.missing = dynamic_cast<const CLI::RequiredError *>(&error) != nullptr;
    throw fault;
  }
}

int parse_and_run(Command &program, int argc, char **argv, const std::function<int()> &run) {
  const int status = program.parse(argc, argv) ? run() : 0;
  expect_printed();
  return status;
}

int run_program_main(Command &program, int argc, char **argv, const std::function<int()> &run) {
  try {
    return parse_and_run(program, argc, argv, run);
  } catch (const Refused &error) {
    return complain(program, error, kRefused);
  } catch (const std::exception &error) {
    return complain(program, error, kWrongUsage);
  }
}

}  // namespace os
