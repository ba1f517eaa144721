// SPDX-License-Identifier: MIT
// Makes an interposer of each entry of a list of calls; the words of the lists
// are those of swctl/platform/calls_begin.h. With a list included twice,
//
//     #define SWCTL_CALL(name, ...) SWPROBE_INTERPOSE(name, __VA_ARGS__)
//     #define SWCTL_CALL(name, ...) SWPROBE_SITE(name)
//
// the first gives the functions and the second the entries of their table.
// Names of our own have a prefix here, since the arguments of a call are in
// scope under their names.
#ifndef SWCTL_PROBE_INTERPOSE_H
#define SWCTL_PROBE_INTERPOSE_H

#include <iterator>

#include "observation.h"
#include "shapes.h"

namespace swprobe {

inline constexpr Direction kDirection_val = Direction::value;
inline constexpr Direction kDirection_out = Direction::out;
inline constexpr Direction kDirection_ref = Direction::ref;
inline constexpr Direction kDirection_upd = Direction::update;

// A count that is spelt 1 is a single element, any other an array.
template <class T>
constexpr ArgumentInfo info_of(std::string_view name, Direction direction, std::string_view count,
                               Form form) {
  return {name, direction, form, count != "1", element_size<T>(), Shape<T>::fields};
}

template <class Count>
Address address_of(const void *at, Count count) {
  return {at, count > Count{0} ? static_cast<size_t>(count) : 0};
}

// The short way: null if the call is to be looked at.
template <class Function>
Function idle_way(const Site &site) {
  return reinterpret_cast<Function>(site.idle.load(std::memory_order_relaxed));
}

}  // namespace swprobe

#define SWPROBE_INFO(tuple) SWPROBE_INFO_ tuple
#define SWPROBE_INFO_(direction, type, name, count, form) \
  swprobe::info_of<type>(#name, swprobe::kDirection_##direction, #count, swprobe::Form::form)

#define SWPROBE_ADDRESS(tuple) SWPROBE_ADDRESS_ tuple
#define SWPROBE_ADDRESS_(direction, type, name, count, form) \
  swprobe::address_of(SWPROBE_AT_##direction(name), count)
#define SWPROBE_AT_val(name) &name
#define SWPROBE_AT_out(name) name
#define SWPROBE_AT_ref(name) name
#define SWPROBE_AT_upd(name) name

// The long way is a function of its own, so that the short one keeps its
// arguments in registers and ends in a jump.
#define SWPROBE_INTERPOSE(name, ...)                                                          \
  static constexpr swprobe::ArgumentInfo swprobe_infos_##name[] = {                           \
      SWCTL_EACH(SWPROBE_INFO, __VA_ARGS__)};                                                 \
  static constinit swprobe::Site swprobe_site_##name{#name, swprobe_infos_##name, true};      \
  [[gnu::noinline]] static int32_t swprobe_watched_##name(SWCTL_PARAMETERS(__VA_ARGS__)) {    \
    const swprobe::Address swprobe_addresses[] = {SWCTL_EACH(SWPROBE_ADDRESS, __VA_ARGS__)};  \
    swprobe::Observation swprobe_observation(swprobe_site_##name, swprobe_addresses);         \
    const auto swprobe_next = swprobe_observation.next<decltype(&name)>();                    \
    int32_t swprobe_result = -1;                                                              \
    if (swprobe_next != nullptr) swprobe_result = swprobe_next(SWCTL_ARGUMENTS(__VA_ARGS__)); \
    return swprobe_observation.finish(swprobe_result);                                        \
  }                                                                                           \
  int32_t name(SWCTL_PARAMETERS(__VA_ARGS__)) {                                               \
    const auto swprobe_way = swprobe::idle_way<decltype(&name)>(swprobe_site_##name);         \
    if (swprobe_way != nullptr) return swprobe_way(SWCTL_ARGUMENTS(__VA_ARGS__));             \
    return swprobe_watched_##name(SWCTL_ARGUMENTS(__VA_ARGS__));                              \
  }

#define SWPROBE_SITE(name) &swprobe_site_##name,

#endif
