// SPDX-License-Identifier: MIT
#include "config/change.h"

#include <set>

#include "chip/address_table.h"
#include "chip/call.h"
#include "command/walker.h"
#include "interrupt.h"
#include "mac_text.h"
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

Fault refused_step(const Step &step, Fault fault) {
  if (fault.context.empty()) fault.context = step.command;
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

std::string named_settings(const std::vector<std::string> &settings) {
  std::vector<std::string> names = settings;
  if (names.size() > kMostNamed) {
    const size_t more = names.size() - kMostNamed;
    names.resize(kMostNamed);
    names.push_back(std::to_string(more) + " more");
  }
  return join(names, ", ");
}

namespace {

constexpr uint32_t kAddressUnit = 0;

std::vector<user_l2_addr_t> learned_addresses(const Context &context) {
  std::vector<user_l2_addr_t> learned;
  if (context.unit != kAddressUnit) return learned;
  for (const user_l2_addr_t &entry : read_addresses())
    if ((entry.flags & USER_L2_FLAG_STATIC) == 0) learned.push_back(entry);
  return learned;
}

auto address_key(const user_l2_addr_t &entry) {
  return std::pair(entry.vid, mac_text(entry.mac));
}

}  // namespace

Snapshot::Snapshot(const Context &context, const Board &board)
    : context_(context),
      board_(board),
      state_(read_state(context, board)),
      learned_(learned_addresses(context)) {}

namespace {

std::string not_known(const CommandError &error) {
  return "what was put back is not known: " + fault_line(error.fault());
}

}  // namespace

std::string Snapshot::put_back() const {
  try {
    return put_back_from(read_state(context_, board_));
  } catch (const CommandError &error) {
    return not_known(error);
  }
}

// A setting that is always there is set again, whatever it reads as.
std::string Snapshot::put_back_after(const Step &refused, const State &target) const {
  try {
    State now = read_state(context_, board_);
    if (kinds(board_)[refused.kind].usual({}))
      now.contents[refused.kind] = target.contents[refused.kind];
    return put_back_from(std::move(now));
  } catch (const CommandError &error) {
    return not_known(error);
  }
}

std::string Snapshot::put_back_from(State now) const {
  for (const Step &step : plan(now, state_, board_)) take_step(step, context_);
  const auto left = differences(state_, read_state(context_, board_), board_);
  if (!left.empty()) return "not put back: " + named_settings(left);
  return put_learned_back();
}

// What reading or deleting a VLAN removes.
std::string Snapshot::put_learned_back() const {
  std::set<std::pair<uint16_t, std::string>> there;
  for (const user_l2_addr_t &entry : learned_addresses(context_)) there.insert(address_key(entry));
  size_t lost = 0;
  for (const user_l2_addr_t &entry : learned_)
    if (!there.contains(address_key(entry)) && user_mac_addr_add(kLead, entry) < 0) ++lost;
  return lost == 0 ? "" : "not put back: " + std::to_string(lost) + " learned addresses";
}

std::vector<std::string> Snapshot::unread() const {
  std::vector<std::string> names;
  for (const size_t kind : state_.unread_kinds) names.push_back(kinds(board_)[kind].title());
  return names;
}

namespace {

[[noreturn]] void fail_with(Fault fault, const Snapshot &before, const std::string &left) {
  fault.status = kRefused;
  fault.message += left.empty() ? "; all is as it was" : "; " + left;
  const std::vector<std::string> unread = before.unread();
  if (!unread.empty()) fault.message += "; cannot be read: " + named_settings(unread);
  throw CommandError(fault);
}

// The chip has to read as the target: what it did not take shows.
void expect_reads_as(const State &target, const Context &context, const Board &board) {
  const auto left = differences(target, read_state(context, board), board);
  if (left.empty()) return;
  Fault fault;
  fault.message = "the chip reads otherwise afterwards: " + named_settings(left);
  throw CommandError(fault);
}

}  // namespace

void change_from(const Snapshot &before, const State &target, const Context &context,
                 const Board &board) {
  const std::vector<Step> steps = plan(before.state(), target, board);
  for (const Step &step : steps) {
    const std::optional<Fault> fault = take_step(step, context);
    if (fault) fail_with(refused_step(step, *fault), before, before.put_back_after(step, target));
  }
  if (steps.empty()) return;
  try {
    expect_reads_as(target, context, board);
  } catch (const CommandError &error) {
    fail_with(error.fault(), before, before.put_back());
  }
}

void change_to(const State &target, const Context &context, const Board &board) {
  const BlockedSignals blocked({SIGINT, SIGTERM, SIGHUP});
  change_from(Snapshot(context, board), target, context, board);
}

}  // namespace swsh
