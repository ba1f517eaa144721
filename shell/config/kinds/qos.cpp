// SPDX-License-Identifier: MIT
#include <swctl/platform/qos_read.h>
#include <swctl/platform/sdk.h>
#include <swctl/qos.h>

#include <algorithm>
#include <array>

#include "chip/call.h"
#include "chip/limits.h"
#include "chip/optional_call.h"
#include "config/kinds.h"
#include "config/plain.h"
#include "qos/commands.h"
#include "text.h"

namespace swsh {
namespace {

constexpr int64_t kTrustAtPowerOn = 3;
constexpr uint32_t kWeightAtPowerOn = 127;
constexpr uint32_t kAlgorithm0 = 0;
constexpr uint32_t kAlgorithm1 = 1;

using Weights = std::array<uint32_t, USER_QOS_QUEUES>;

std::string listed(const Weights &weights) {
  std::vector<std::string> words;
  for (const uint32_t weight : weights) words.push_back(std::to_string(weight));
  return join(words, ",");
}

std::string weighted_0(const Weights &weights) {
  return "weighted-0 weights " + listed(weights);
}

Content schedule_at_power_on(const Id &) {
  Weights weights;
  weights.fill(kWeightAtPowerOn);
  return weighted_0(weights);
}

// The words that set a schedule; all front ports are set alike.
std::string schedule_words(uint32_t algorithm, const Weights &weights) {
  const auto all = [&](uint32_t weight) {
    return std::ranges::all_of(weights, [=](uint32_t each) { return each == weight; });
  };
  if (algorithm == kAlgorithm0) return weighted_0(weights);
  if (all(0)) return "strict";
  if (all(1)) return "equal";
  return "weighted weights " + listed(weights);
}

void read_schedule(SettingReader &reader) {
  const Port port = reader.board.front().front();
  const uint32_t unit = reader.context.unit;
  Weights weights = {};
  perform(SWSH_CALL(rtk_qos_schedulingQueue_get), port, unit, port.chip, weights.data());
  const uint32_t algorithm = ask(SWSH_CALL(rtk_qos_schedulingAlgorithm_get), port, unit, port.chip);
  reader.put({}, schedule_words(algorithm, weights));
}

bool take_schedule(Statement &statement, Draft &draft) {
  const Argument &schedule = *statement.take("SCHEDULE");
  const Argument *given = statement.take("weights");
  const std::vector<uint32_t> listed = schedule_weights(static_cast<uint32_t>(schedule.number),
                                                        given == nullptr ? nullptr : &given->word);
  Weights weights = {};
  std::ranges::copy(listed, weights.begin());
  const bool is_0 = schedule.number == USER_QOS_SCHEDULE_WEIGHTED_0;
  draft.put({}, given == nullptr ? schedule.word
                                 : schedule_words(is_0 ? kAlgorithm0 : kAlgorithm1, weights));
  return true;
}

SettingKind schedule_kind() {
  SettingKind kind;
  kind.object = "qos";
  kind.name = "schedule";
  kind.on_unit_zero = true;
  kind.commands = {"qos schedule set"};
  kind.usual = schedule_at_power_on;
  kind.read = read_schedule;
  kind.take = take_schedule;
  kind.change = change_by("qos schedule set @");
  return kind;
}

}  // namespace

void add_qos_kinds(Kinds &kinds, const Board &board) {
  const std::vector<int64_t> priorities = numbers_to(kLastPriority);
  const auto number = [](const char *what, int64_t of) {
    return std::string(what) + ' ' + std::to_string(of);
  };
  kinds.push_back(plain_kind({.name = "map",
                              .command = "qos map set % queue @",
                              .ids = priorities,
                              .read = [=](const SettingReader &, int64_t id) -> int64_t {
                                return ask(SWSH_CALL(user_qos_pri_queue_map_get),
                                           number("priority", id), static_cast<uint32_t>(id));
                              },
                              .usual = 0,
                              .on_unit_zero = true}));
  kinds.push_back(plain_kind({.name = "dscp",
                              .command = "qos dscp set % priority @",
                              .ids = numbers_to(kLastCodePoint),
                              .read = [=](const SettingReader &, int64_t id) -> int64_t {
                                return ask(SWSH_CALL(user_qos_dscp_map_get),
                                           number("code point", id), static_cast<uint32_t>(id));
                              },
                              .usual = 0,
                              .on_unit_zero = true}));
  kinds.push_back(plain_kind({.name = "default",
                              .command = "qos default set % priority @",
                              .ids = board.front_interfaces(),
                              .read = [](const SettingReader &reader, int64_t id) -> int64_t {
                                const Port port = reader.board.port(id);
                                return ask(SWSH_CALL(user_qos_port_cos_get), port, port.chip);
                              },
                              .usual = 0,
                              .on_unit_zero = true}));
  kinds.push_back(plain_kind({.name = "tag",
                              .command = "qos tag set % internal @",
                              .ids = priorities,
                              .read = [=](const SettingReader &reader, int64_t id) -> int64_t {
                                return ask(SWSH_OPTIONAL_CALL(swctl_platform_qos_tag_get),
                                           number("priority", id), reader.context.unit,
                                           static_cast<uint32_t>(id));
                              },
                              .usual = 0,
                              .needs = {"swctl_platform_qos_tag_get"}}));
  kinds.push_back(plain_kind({.name = "trust",
                              .command = "qos trust set % @",
                              .ids = board.front_interfaces(),
                              .read = [](const SettingReader &reader, int64_t id) -> int64_t {
                                const Port port = reader.board.port(id);
                                return ask(SWSH_OPTIONAL_CALL(swctl_platform_qos_port_group_get),
                                           port, reader.context.unit, port.chip);
                              },
                              .usual = kTrustAtPowerOn,
                              .needs = {"swctl_platform_qos_port_group_get"},
                              .on_unit_zero = true}));
  kinds.push_back(schedule_kind());
}

}  // namespace swsh
