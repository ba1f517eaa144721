// SPDX-License-Identifier: MIT
#include "run.h"

#include <swctl-probe/probe.h>
#include <swctl-vchip/memory.h>
#include <swctl-vchip/view.h>

#include <cstdio>
#include <cstring>
#include <stdexcept>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include "command/walker.h"
#include "objects/registry.h"
#include "os/json.h"
#include "run/command.h"
#include "run/words.h"
#include "world.h"

namespace shell_sweep {
namespace {

using os::Json;

// What main() makes of a command and its outcome.
void run_command_line(const std::string &line, uint32_t unit, Run &run) {
  const swsh::Context context = {unit, [&](const swsh::Record &record) {
                                   run.answer += line_text(record, swsh::Format::json) + '\n';
                                 }};
  const swsh::Outcome outcome =
      swsh::run_command(swsh::command_table(), swsh::split_words(line).words, context);
  run.status = outcome.status();
  run.answer += swsh::json_text(swsh::outcome_value(outcome), swsh::Format::json);
  if (!outcome.fault) return;
  run.message = swsh::fault_line(*outcome.fault);
  if (!outcome.fault->refusal) return;
  run.function = outcome.fault->refusal->function;
  run.result = outcome.fault->refusal->result;
}

// A character that is not UTF-8 cannot be in JSON.
std::string hexadecimal(const std::string &bytes) {
  std::string text;
  char pair[3];
  for (const char byte : bytes) {
    snprintf(pair, sizeof pair, "%02x", static_cast<unsigned char>(byte));
    text += pair;
  }
  return text;
}

// The log and the trace have nothing to refuse.
bool can_fail(const std::string &call) {
  return call.starts_with("rtk_") || call.starts_with("adp_");
}

Run run_here(const Request &request) {
  Run run;
  unlink("dump");
  swprobe::forget();
  if (!request.plan.empty()) swprobe::plan(request.plan);
  run_command_line(request.line, request.unit, run);
  run.failed = swprobe::made_up_count();
  swprobe::clear_plan();
  for (const swprobe::Call &call : swprobe::take())
    run.calls.push_back(can_fail(call.name) ? call.name : "");
  run.file = hexadecimal(content_of("dump"));
  if (request.as != nullptr) run.is_as = request.as->is_as_now();
  if (request.keep_in != nullptr) request.keep_in->take();
  if (request.with_dump) run.chip = vchip::dump_json(-1);
  return run;
}

std::string packed(const Run &run) {
  return os::json_text({run.status, run.answer, run.message, run.function, run.result, run.file,
                        run.is_as, run.failed, run.calls, run.chip});
}

Run unpacked(const std::string &text) {
  const Json json = os::parse_json(text);
  return {json[0], json[1], json[2], json[3], json[4], json[5], json[6], json[7], json[8], json[9]};
}

[[noreturn]] void answer_as_child(const Request &request, int out) {
  // What the library prints is the affair of other tests.
  if (freopen("/dev/null", "w", stdout) == nullptr || freopen("/dev/null", "w", stderr) == nullptr)
    _exit(3);
  const std::string text = packed(run_here(request));
  size_t at = 0;
  while (at < text.size()) {
    const ssize_t written = write(out, text.data() + at, text.size() - at);
    if (written < 0) _exit(4);
    at += static_cast<size_t>(written);
  }
  _exit(0);
}

std::string read_all(int in) {
  std::string text;
  char part[4096];
  for (ssize_t length; (length = read(in, part, sizeof part)) > 0;)
    text.append(part, static_cast<size_t>(length));
  return text;
}

void add_commands(const swsh::Node &node, const std::string &path, std::vector<Given> &all) {
  for (const swsh::Node &child : node.children)
    add_commands(child, path.empty() ? child.name : path + ' ' + child.name, all);
  if (node.run == nullptr) return;
  Given command = {path, {}};
  for (const swsh::Parameter &each : node.positional) command.names.push_back(each.name);
  for (const swsh::Parameter &each : node.keywords) command.names.push_back(each.name);
  all.push_back(command);
}

}  // namespace

SharedChip::SharedChip() : size_(vchip::memory().size) {
  copy_ = mmap(nullptr, size_, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
  if (copy_ == MAP_FAILED) throw std::runtime_error("no memory for a copy of the chip");
}

void SharedChip::take() {
  memcpy(copy_, vchip::memory().start, size_);
}

void SharedChip::put_back() const {
  memcpy(vchip::memory().start, copy_, size_);
}

bool SharedChip::is_as_now() const {
  return memcmp(vchip::memory().start, copy_, size_) == 0;
}

Run run(const Request &request) {
  int ends[2];
  if (pipe(ends) != 0) throw std::runtime_error("no pipe");
  fflush(nullptr);
  const pid_t child = fork();
  if (child < 0) throw std::runtime_error("no process");
  if (child == 0) {
    close(ends[0]);
    answer_as_child(request, ends[1]);
  }
  close(ends[1]);
  const std::string text = read_all(ends[0]);
  close(ends[0]);
  int status = 0;
  waitpid(child, &status, 0);
  if (!WIFEXITED(status) || WEXITSTATUS(status) != 0)
    throw std::runtime_error(request.line + " with \"" + request.plan + "\" died");
  return unpacked(text);
}

Given given_in(const std::string &line) {
  const swsh::Node *node = &swsh::command_table();
  const swsh::Walk found = swsh::walk(*node, swsh::split_words(line).words);
  if (!found.runnable()) throw std::runtime_error(line + " is no command");
  Given given;
  for (size_t at = 0; node != found.node; ++at) {
    for (const swsh::Node &child : node->children)
      if (child.name == found.path[at]) node = &child;
    given.command += (at == 0 ? "" : " ") + found.path[at];
  }
  for (const auto *list : {&found.node->positional, &found.node->keywords})
    for (const swsh::Parameter &each : *list)
      if (found.arguments.has(each.name)) given.names.push_back(each.name);
  return given;
}

std::vector<Given> all_commands() {
  std::vector<Given> all;
  add_commands(swsh::command_table(), "", all);
  return all;
}

}  // namespace shell_sweep
