// SPDX-License-Identifier: MIT
// Makes a recorded call again: its arguments are built from the record, in
// memory of their own.
#ifndef SWCTL_PROBE_REPEAT_H
#define SWCTL_PROBE_REPEAT_H

#include <swctl/platform/adapter_records.h>

#include <algorithm>
#include <array>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <tuple>
#include <utility>

#include "capture.h"
#include "site.h"

namespace swprobe {

// Where the argument's elements lie, all parts of it filled from the record.
// Throws std::invalid_argument if the record does not hold what belongs there.
void fill(const ArgumentInfo &info, const Address &address, const Call &recorded);
// Refuses a record with another number of elements than the call takes, before
// memory is made for those.
void expect_elements(const ArgumentInfo &info, size_t count, const Call &recorded);
// Whether the record has a null address for the argument.
bool is_null(const ArgumentInfo &info, const Call &recorded);
// The text of an argument of form text.
using Text = std::optional<std::string>;  // none: a null address
Text text_of(const char *argument, const Call &recorded);

// The adapter keeps a rule's parts in an area of the caller's record that is
// not recorded: it goes from call to call until the rule is handed over.
void take_area(adp_fp_entity_rule_t &rule);
void keep_area(const adp_fp_entity_rule_t &rule, bool handed_over);

template <class T>
void before_call(T &argument) {
  if constexpr (std::is_same_v<T, adp_fp_entity_rule_t>) take_area(argument);
  if constexpr (std::is_same_v<T, adp_fp_entity_rule_t *>) take_area(*argument);
}
template <class T>
void after_call(const T &argument) {
  if constexpr (std::is_same_v<T, adp_fp_entity_rule_t>) keep_area(argument, true);
  if constexpr (std::is_same_v<T, adp_fp_entity_rule_t *>) keep_area(*argument, false);
}

// Memory of zeroes that any record may lie in.
using Room = std::vector<uint64_t>;

// First the values, then the addresses: how much is behind those may be said
// by the values.
template <class T>
void fill_value(const ArgumentInfo &info, T &argument, const Call &recorded) {
  if (info.direction == Direction::value) fill(info, {&argument, 1}, recorded);
}

template <class T>
void fill_address(const ArgumentInfo &info, T &argument, size_t count, Room &room,
                  const Call &recorded) {
  if constexpr (std::is_pointer_v<T>) {
    if (is_null(info, recorded)) return;
    expect_elements(info, count, recorded);
    room.resize(count * info.stride / sizeof(uint64_t) + 1);
    argument = reinterpret_cast<T>(room.data());
    if (info.direction != Direction::out) fill(info, {room.data(), count}, recorded);
  }
}

// A call with its arguments and what is behind those that are addresses. What
// the call updates is as recorded each time.
template <class... Types>
struct Prepared {
  int32_t (*function)(Types...);
  std::tuple<Types...> arguments{};
  std::array<Room, sizeof...(Types)> rooms;
  std::vector<std::pair<Room *, Room>> updated;

  void make() {
    for (auto &[room, recorded] : updated)
      std::copy(recorded.begin(), recorded.end(), room->begin());
    std::apply([](auto &...each) { (before_call(each), ...); }, arguments);
    std::apply(function, arguments);
    std::apply([](const auto &...each) { (after_call(each), ...); }, arguments);
  }
};

// `addresses` is the call's own reading of where its arguments are and how
// many elements they have.
template <class... Types, size_t... Index>
std::function<void()> prepare_call(int32_t (*function)(Types...),
                                   std::vector<Address> (*addresses)(Types...),
                                   std::span<const ArgumentInfo> infos, const Call &recorded,
                                   std::index_sequence<Index...>) {
  const auto call = std::make_shared<Prepared<Types...>>();
  call->function = function;
  (fill_value(infos[Index], std::get<Index>(call->arguments), recorded), ...);
  const std::vector<Address> places = std::apply(addresses, call->arguments);
  (fill_address(infos[Index], std::get<Index>(call->arguments), places[Index].count,
                call->rooms[Index], recorded),
   ...);
  for (size_t i = 0; i < sizeof...(Types); ++i)
    if (infos[i].direction == Direction::update)
      call->updated.push_back({&call->rooms[i], call->rooms[i]});
  return [call] { call->make(); };
}

template <class... Types>
std::function<void()> prepare_call(int32_t (*function)(Types...),
                                   std::vector<Address> (*addresses)(Types...),
                                   std::span<const ArgumentInfo> infos, const Call &recorded) {
  return prepare_call(function, addresses, infos, recorded, std::index_sequence_for<Types...>());
}

}  // namespace swprobe

#endif
