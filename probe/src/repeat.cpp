// SPDX-License-Identifier: MIT
#include "repeat.h"

#include <algorithm>
#include <cstring>
#include <map>
#include <mutex>
#include <stdexcept>

namespace swprobe {
namespace {

const Argument *recorded_argument(const Call &recorded, const std::string &name) {
  for (const Argument &argument : recorded.arguments)
    if (argument.name == name) return &argument;
  return nullptr;
}

[[noreturn]] void refuse_call(const Call &recorded, const std::string &what) {
  throw std::invalid_argument(recorded.name + ": " + what);
}

[[noreturn]] void refuse_count(const Call &recorded, const Argument &argument, size_t count) {
  refuse_call(recorded, "'" + argument.name + "' has " + std::to_string(argument.before.size()) +
                            " elements, not " + std::to_string(count));
}

// Whether the record has a null address for the argument.
bool is_null(const ArgumentInfo &info, const Call &recorded) {
  const Argument *argument = recorded_argument(recorded, std::string(info.name));
  return argument != nullptr && argument->null;
}

// Refuses a record with another number of elements than the call takes, before
// memory is made for those.
void expect_elements(const ArgumentInfo &info, size_t count, const Call &recorded) {
  if (info.is_record() || info.direction == Direction::out) return;
  const std::string name(info.name);
  const Argument *argument = recorded_argument(recorded, name);
  if (argument == nullptr) refuse_call(recorded, "'" + name + "' is missing");
  if (argument->before.size() != count) refuse_count(recorded, *argument, count);
}

// A rule that is being put together, by its kind and place.
using RuleKey = std::pair<uint32_t, uint32_t>;
std::mutex areas_mutex;
std::map<RuleKey, std::vector<uint8_t>> &areas() {
  static std::map<RuleKey, std::vector<uint8_t>> only;
  return only;
}

}  // namespace

void fill(const ArgumentInfo &info, const Address &address, const Call &recorded) {
  for (const Part &part : parts_of({&info, 1}, {&address, 1})) {
    const Argument *argument = recorded_argument(recorded, part.name);
    if (argument == nullptr) refuse_call(recorded, "'" + part.name + "' is missing");
    if (argument->before.size() != part.count) refuse_count(recorded, *argument, part.count);
    for (size_t i = 0; i < part.count; ++i) store(part, i, argument->before[i]);
  }
}

Text text_of(const char *name, const Call &recorded) {
  const Argument *argument = recorded_argument(recorded, name);
  if (argument == nullptr) refuse_call(recorded, "'" + std::string(name) + "' is missing");
  return argument->null ? Text() : Text(argument->text);
}

void ListedCall::fill_values(Places arguments, const Call &recorded) const {
  for (size_t i = 0; i < infos_.size(); ++i)
    if (infos_[i].direction == Direction::value) fill(infos_[i], {arguments[i], 1}, recorded);
}

void ListedCall::fill_addresses(Places arguments, std::span<const Address> addresses,
                                const Call &recorded) {
  rooms_.resize(infos_.size());
  for (size_t i = 0; i < infos_.size(); ++i) {
    const ArgumentInfo &info = infos_[i];
    const size_t count = addresses[i].count;
    if (info.direction == Direction::value || is_null(info, recorded)) continue;
    expect_elements(info, count, recorded);
    rooms_[i].resize(count * info.stride / sizeof(uint64_t) + 1);
    void *const room = rooms_[i].data();
    std::memcpy(arguments[i], &room, sizeof room);
    if (info.direction != Direction::out) fill(info, {room, count}, recorded);
    if (info.direction == Direction::update) updated_.push_back({i, rooms_[i]});
  }
}

void ListedCall::restore() {
  for (const Updated &each : updated_)
    std::copy(each.recorded.begin(), each.recorded.end(), rooms_[each.argument].begin());
}

void take_area(adp_fp_entity_rule_t &rule) {
  const std::lock_guard lock(areas_mutex);
  const auto found = areas().find({rule.entity, rule.index});
  if (found != areas().end()) std::memcpy(rule.area, found->second.data(), sizeof rule.area);
}

void keep_area(const adp_fp_entity_rule_t &rule, bool handed_over) {
  const std::lock_guard lock(areas_mutex);
  if (handed_over) {
    areas().erase({rule.entity, rule.index});
  } else {
    areas()[{rule.entity, rule.index}].assign(rule.area, rule.area + sizeof rule.area);
  }
}

}  // namespace swprobe
