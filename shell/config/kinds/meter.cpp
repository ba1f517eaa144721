// SPDX-License-Identifier: MIT
#include <set>

#include "chip/limits.h"
#include "config/kinds.h"
#include "config/kinds/words.h"
#include "objects/meter_burst.h"

namespace swsh {
namespace {

std::string meter_words(int64_t rate, int64_t burst, bool on) {
  return "rate " + std::to_string(rate) + " burst " + std::to_string(burst) + " state " +
         (on ? "on" : "off");
}

void read_meters(SettingReader &reader) {
  const chip_acl_burst bursts = read_bursts(reader.context);
  for (uint32_t meter = 0; meter <= kLastMeter; ++meter) {
    const chip_acl_meter entry = read_meter(reader.context, meter);
    if (!needs_burst(entry)) continue;
    const bool has_burst =
        entry.burst_slot < CHIP_ACL_BURST_SLOTS && bursts.size[entry.burst_slot] != 0;
    if (!has_burst) {
      reader.leave_out(std::to_string(meter), "its burst size is none that a command sets");
      continue;
    }
    reader.put({meter}, meter_words(entry.rate * kRateStep,
                                    bursts.size[entry.burst_slot] * kBurstStep, entry.enable != 0));
  }
}

// Of a meter that a file gives no burst: what slot 0 has after power-on.
constexpr int64_t kUsualBurst = 512 * kBurstStep;

bool take_meter(Statement &statement, Draft &draft) {
  if (statement.command == "meter del") {
    for (const int64_t meter : statement.take("METERS")->numbers) draft.put({meter}, std::nullopt);
    return true;
  }
  const Id id = {statement.take("METER")->number};
  const std::string before = draft.at(id).value_or("");
  const Argument *rate = statement.take("rate");
  const Argument *burst = statement.take("burst");
  const Argument *state = statement.take("state");
  bool on = word_after(before, "state", "off") == "on";
  if (rate != nullptr || burst != nullptr) on = true;
  if (state != nullptr) on = state->number != 0;
  const int64_t old_rate = std::stoll(word_after(before, "rate", "0"));
  const int64_t old_burst = std::stoll(word_after(before, "burst", std::to_string(kUsualBurst)));
  const auto stepped_down = [](const Argument *given, int64_t step, int64_t otherwise) {
    return given == nullptr ? otherwise : given->number - given->number % step;
  };
  const int64_t new_rate = stepped_down(rate, kRateStep, old_rate);
  const int64_t new_burst = stepped_down(burst, kBurstStep, old_burst);
  draft.put(id, new_rate == 0 && !on ? Content() : meter_words(new_rate, new_burst, on));
  return true;
}

void change_meter(const Change &change, Commands &commands) {
  commands.push_back(change.to ? "meter set " + change.ids + ' ' + *change.to
                               : "meter del " + change.ids);
}

// A burst size may have to make room for another.
bool has_other_burst(const std::string &from, const std::string &to) {
  return word_after(from, "burst", "") != word_after(to, "burst", "");
}

}  // namespace

void add_meter_kinds(Kinds &kinds, const Board &) {
  SettingKind kind;
  kind.object = "meter";
  kind.commands = {"meter set", "meter del"};
  kind.usual = [](const Id &) { return Content(); };
  kind.read = read_meters;
  kind.take = take_meter;
  kind.change = change_meter;
  kind.remade = has_other_burst;
  kind.check = [](const Contents &meters, const Complaint &complain) {
    std::set<std::string> bursts;
    for (const auto &[id, words] : meters) {
      bursts.insert(word_after(*words, "burst", ""));
      if (bursts.size() <= CHIP_ACL_BURST_SLOTS) continue;
      complain(id, "meters share two burst sizes, and this is a third");
      return;
    }
  };
  kind.removal_merges = true;
  kinds.push_back(std::move(kind));
}

}  // namespace swsh
