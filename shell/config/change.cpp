// SPDX-License-Identifier: MIT
#include "config/change.h"

#include "command/walker.h"
#include "interrupt.h"
#include "objects/registry.h"
#include "run/command.h"
#include "run/words.h"
#include "text.h"

namespace swsh {
namespace {

constexpr size_t kMostNamed = 20;

std::optional<Fault> take_step(const Step &step, const Context &context) {
  return run_command(command_table(), split_words(step.command).words, context).fault;
}

// "port mtu, vlan 10, ...": settings that are not as they were.
std::string named(const std::vector<std::string> &settings) {
  std::vector<std::string> names = settings;
  if (names.size() > kMostNamed) {
    const size_t more = names.size() - kMostNamed;
    names.resize(kMostNamed);
    names.push_back(std::to_string(more) + " more");
  }
  return join(names, ", ");
}

Fault refused_step(const Step &step, Fault fault) {
  if (fault.context.empty()) fault.context = step.command;
  fault.status = kRefused;
  return fault;
}

}  // namespace

std::vector<std::string> differences(const State &one, const State &other, const Board &board) {
  std::vector<std::string> names;
  const std::vector<SettingKind> &all = kinds(board);
  for (size_t kind = 0; kind < all.size(); ++kind) {
    if (one.unread_kinds.contains(kind) || other.unread_kinds.contains(kind)) continue;
    const auto name = [&](const Id &id) {
      const std::string which = id.text.empty() ? std::to_string(id.number) : id.text;
      const bool alone = !all[kind].merges && id == Id();
      names.push_back(alone ? all[kind].title() : all[kind].title() + ' ' + which);
    };
    const Contents &here = one.contents[kind];
    const Contents &there = other.contents[kind];
    for (const auto &[id, content] : here) {
      const auto found = there.find(id);
      if (found == there.end() || found->second != content) name(id);
    }
    for (const auto &[id, content] : there)
      if (!here.contains(id)) name(id);
  }
  return names;
}

std::string put_back(const State &before, const Context &context, const Board &board) {
  try {
    for (const Step &step : plan(read_state(context, board), before, board))
      take_step(step, context);
    const auto left = differences(before, read_state(context, board), board);
    return left.empty() ? "" : "not put back: " + named(left);
  } catch (const CommandError &error) {
    return "what was put back is not known: " + fault_line(error.fault());
  }
}

namespace {

[[noreturn]] void fail_and_put_back(Fault fault, const State &before, const Context &context,
                                    const Board &board) {
  const std::string left = put_back(before, context, board);
  fault.message += left.empty() ? "; all is as it was" : "; " + left;
  throw CommandError(fault);
}

// What a platform cannot read cannot be put back either.
std::vector<std::string> blind(const State &state, const std::vector<Step> &steps,
                               const Board &board) {
  std::vector<std::string> names;
  for (const size_t kind : state.unread_kinds)
    for (const Step &step : steps)
      if (step.kind == kind) {
        names.push_back(kinds(board)[kind].title());
        break;
      }
  return names;
}

}  // namespace

size_t change_to(const State &target, const Context &context, const Board &board) {
  const BlockedSignals blocked({SIGINT, SIGTERM, SIGHUP});
  const State before = read_state(context, board);
  const std::vector<Step> steps = plan(before, target, board);
  for (const Step &step : steps) {
    const std::optional<Fault> fault = take_step(step, context);
    if (!fault) continue;
    Fault refused = refused_step(step, *fault);
    const std::vector<std::string> unknown = blind(before, steps, board);
    if (!unknown.empty()) refused.message += "; cannot be put back: " + named(unknown);
    fail_and_put_back(refused, before, context, board);
  }
  if (steps.empty()) return 0;
  const auto left = differences(target, read_state(context, board), board);
  if (left.empty()) return steps.size();
  Fault fault;
  fault.status = kRefused;
  fault.message = "the chip reads otherwise afterwards: " + named(left);
  fail_and_put_back(fault, before, context, board);
}

}  // namespace swsh
