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

// A call that is ready to be made.
class PreparedCall {
 public:
  virtual ~PreparedCall() = default;
  virtual void make() = 0;
};

// Where the arguments of a call lie, in their order.
using Places = std::span<void *const>;

// What the arguments of a listed call are made of, whatever their types.
class ListedCall : public PreparedCall {
 protected:
  explicit ListedCall(std::span<const ArgumentInfo> infos) : infos_(infos) {}

  // First the values, then the addresses: how much is at those may be said by the values.
  // Throw std::invalid_argument if the record does not hold what belongs there.
  void fill_values(Places arguments, const Call &recorded) const;
  void fill_addresses(Places arguments, std::span<const Address> addresses, const Call &recorded);
  // What the call updates is as it was recorded.
  void restore();

 private:
  // Memory of zeroes that any record may lie in.
  using Room = std::vector<uint64_t>;
  // Memory that a call updates, and what was in it when it was recorded.
  struct Updated {
    size_t argument;
    Room recorded;
  };

  std::span<const ArgumentInfo> infos_;
  std::vector<Room> rooms_;  // of each argument; empty of a value
  std::vector<Updated> updated_;
};

// With its arguments and what is at those that are addresses.
template <class... Types>
class PreparedListedCall : public ListedCall {
 public:
  using Function = int32_t (*)(Types...);
  // The call's own reading of where its arguments are and how many elements
  // they have, for as many places as it has arguments.
  using Addresses = void (*)(Address *addresses, Types...);

  PreparedListedCall(Function function, Addresses addresses, std::span<const ArgumentInfo> infos,
                     const Call &recorded)
      : ListedCall(infos), function_(function) {
    fill_all(addresses, recorded, std::index_sequence_for<Types...>());
  }

  void make() override {
    restore();
    call(std::index_sequence_for<Types...>());
  }

 private:
  template <size_t... Index>
  void fill_all(Addresses addresses, const Call &recorded, std::index_sequence<Index...>) {
    void *const places[] = {&std::get<Index>(arguments_)...};
    fill_values(places, recorded);
    Address found[sizeof...(Types)];
    addresses(found, std::get<Index>(arguments_)...);
    fill_addresses(places, found, recorded);
  }
  template <size_t... Index>
  void call(std::index_sequence<Index...>) {
    (before_call(std::get<Index>(arguments_)), ...);
    function_(std::get<Index>(arguments_)...);
    (after_call(std::get<Index>(arguments_)), ...);
  }

  Function function_;
  std::tuple<Types...> arguments_{};
};

template <class... Types>
PreparedCall *new_prepared_call(int32_t (*function)(Types...),
                                void (*addresses)(Address *addresses, Types...),
                                std::span<const ArgumentInfo> infos, const Call &recorded) {
  return new PreparedListedCall<Types...>(function, addresses, infos, recorded);
}

}  // namespace swprobe

#endif
