// SPDX-License-Identifier: MIT
// Makes a recorded call again: its arguments are built from the record, in
// memory of their own.
#ifndef SWCTL_PROBE_REPEAT_H
#define SWCTL_PROBE_REPEAT_H

#include <swctl/platform/adapter_records.h>

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

// Memory that a call updates, and what was in it when it was recorded.
struct Updated {
  Room *room;
  Room recorded;
};
void keep_updated(std::span<const ArgumentInfo> infos, std::vector<Room> &rooms,
                  std::vector<Updated> &updated);
void restore(const std::vector<Updated> &updated);

// First the values, then the addresses: how much is at those may be said
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

// A call that is ready to be made.
class PreparedCall {
 public:
  virtual ~PreparedCall() = default;
  virtual void make() = 0;
};

// With its arguments and what is at those that are addresses. What the call
// updates is as recorded each time.
template <class... Types>
class PreparedListedCall : public PreparedCall {
 public:
  using Function = int32_t (*)(Types...);
  // The call's own reading of where its arguments are and how many elements
  // they have.
  using Addresses = std::vector<Address> (*)(Types...);

  PreparedListedCall(Function function, Addresses addresses, std::span<const ArgumentInfo> infos,
                     const Call &recorded)
      : function_(function), rooms_(sizeof...(Types)) {
    fill_all(addresses, infos, recorded, std::index_sequence_for<Types...>());
    keep_updated(infos, rooms_, updated_);
  }

  void make() override {
    restore(updated_);
    std::apply([](auto &...each) { (before_call(each), ...); }, arguments_);
    std::apply(function_, arguments_);
    std::apply([](const auto &...each) { (after_call(each), ...); }, arguments_);
  }

 private:
  template <size_t... Index>
  void fill_all(Addresses addresses, std::span<const ArgumentInfo> infos, const Call &recorded,
                std::index_sequence<Index...>) {
    (fill_value(infos[Index], std::get<Index>(arguments_), recorded), ...);
    const std::vector<Address> places = std::apply(addresses, arguments_);
    (fill_address(infos[Index], std::get<Index>(arguments_), places[Index].count, rooms_[Index],
                  recorded),
     ...);
  }

  Function function_;
  std::tuple<Types...> arguments_{};
  std::vector<Room> rooms_;
  std::vector<Updated> updated_;
};

template <class... Types>
PreparedCall *new_prepared_call(int32_t (*function)(Types...),
                                std::vector<Address> (*addresses)(Types...),
                                std::span<const ArgumentInfo> infos, const Call &recorded) {
  return new PreparedListedCall<Types...>(function, addresses, infos, recorded);
}

}  // namespace swprobe

#endif
