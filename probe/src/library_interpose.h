// SPDX-License-Identifier: MIT
// Makes an interposer of each function of the library, from the list that
// library_calls.py makes of the headers; its words are explained there.
#ifndef SWCTL_PROBE_LIBRARY_INTERPOSE_H
#define SWCTL_PROBE_LIBRARY_INTERPOSE_H

#include <array>

#include "interpose.h"
#include "library_call.h"

namespace swprobe {

// An address of memory that is not looked into.
template <class T>
requires std::is_pointer_v<T>
struct Shape<T> {
  static constexpr Field fields[] = {{"", 0, sizeof(T), 1, false, false, Form::hex, true}};
};

template <class... Infos>
constexpr std::array<ArgumentInfo, sizeof...(Infos)> list_of(Infos... infos) {
  return {infos...};
}

template <class Result>
constexpr Form result_form() {
  return std::is_pointer_v<Result> ? Form::hex : Form::dec;
}

// Of a function that no library has.
template <class Result>
Result missing() {
  if constexpr (std::is_pointer_v<Result>) {
    return nullptr;
  } else {
    return static_cast<Result>(-1);
  }
}

}  // namespace swprobe

// SWPROBE_LIST(M, a, b, ...) is M(a), M(b), ...; there may be none.
#define SWPROBE_LIST(M, ...) __VA_OPT__(SWPROBE_SCAN(SWPROBE_STEP(M, __VA_ARGS__)))
#define SWPROBE_STEP(M, a, ...) M(a) __VA_OPT__(, SWPROBE_AGAIN SWPROBE_EMPTY(M, __VA_ARGS__))
#define SWPROBE_AGAIN() SWPROBE_STEP
#define SWPROBE_EMPTY ()
#define SWPROBE_SCAN(...) SWPROBE_SCAN2(SWPROBE_SCAN2(SWPROBE_SCAN2(SWPROBE_SCAN2(__VA_ARGS__))))
#define SWPROBE_SCAN2(...) SWPROBE_SCAN1(SWPROBE_SCAN1(SWPROBE_SCAN1(SWPROBE_SCAN1(__VA_ARGS__))))
#define SWPROBE_SCAN1(...) __VA_ARGS__

// The fields of a record: (member, form), ...
#define SWPROBE_FIELDS(type, ...) __VA_OPT__(SWPROBE_SCAN(SWPROBE_FIELD_STEP(type, __VA_ARGS__)))
#define SWPROBE_FIELD_STEP(type, field, ...) \
  SWPROBE_FIELD_OF(type, SWPROBE_BARE field) \
  __VA_OPT__(, SWPROBE_FIELD_AGAIN SWPROBE_EMPTY(type, __VA_ARGS__))
#define SWPROBE_FIELD_AGAIN() SWPROBE_FIELD_STEP
#define SWPROBE_FIELD_OF(...) SWPROBE_FIELD(__VA_ARGS__)
#define SWPROBE_BARE(member, form) member, form

#define SWPROBE_PARAMETER(tuple) SWPROBE_PARAMETER_ tuple
#define SWPROBE_PARAMETER_(direction, declared, element, name, count, form) declared name
#define SWPROBE_NAME(tuple) SWPROBE_NAME_ tuple
#define SWPROBE_NAME_(direction, declared, element, name, count, form) name
#define SWPROBE_LIBRARY_INFO(tuple) SWPROBE_LIBRARY_INFO_ tuple
#define SWPROBE_LIBRARY_INFO_(direction, declared, element, name, count, form) \
  swprobe::info_of<element>(#name, swprobe::kDirection_##direction, #count, swprobe::Form::form)
#define SWPROBE_LIBRARY_ADDRESS(tuple) SWPROBE_LIBRARY_ADDRESS_ tuple
#define SWPROBE_LIBRARY_ADDRESS_(direction, declared, element, name, count, form) \
  swprobe::address_of(SWPROBE_AT_##direction(name), count)

#define SWPROBE_TAIL_NONE
#define SWPROBE_TAIL_OPEN , ...

// What an ellipsis takes is not handed on: the library reads none of it.
#define SWPROBE_LIBRARY_INTERPOSE(result, name, tail, ...)               \
  static constexpr auto swprobe_infos_##name =                           \
      swprobe::list_of(SWPROBE_LIST(SWPROBE_LIBRARY_INFO, __VA_ARGS__)); \
  SWPROBE_LIBRARY_FUNCTION(result, name, SWPROBE_##tail, __VA_ARGS__)
#define SWPROBE_LIBRARY_FUNCTION(result, name, tail, ...)                                          \
  static constinit swprobe::Site swprobe_site_##name{                                              \
      #name, swprobe_infos_##name, true, swprobe::Layer::library, swprobe::result_form<result>()}; \
  [[gnu::noinline]] static result swprobe_watched_##name(                                          \
      SWPROBE_LIST(SWPROBE_PARAMETER, __VA_ARGS__)) {                                              \
    const std::array<swprobe::Address, std::size(swprobe_infos_##name)> swprobe_addresses = {      \
        {SWPROBE_LIST(SWPROBE_LIBRARY_ADDRESS, __VA_ARGS__)}};                                     \
    swprobe::LibraryCall swprobe_call(swprobe_site_##name, swprobe_addresses);                     \
    const auto swprobe_next = swprobe_call.next<decltype(&name)>();                                \
    if (swprobe_next == nullptr) return swprobe_call.finish(swprobe::missing<result>());           \
    return swprobe_call.finish(swprobe_next(SWPROBE_LIST(SWPROBE_NAME, __VA_ARGS__)));             \
  }                                                                                                \
  result name(SWPROBE_LIST(SWPROBE_PARAMETER, __VA_ARGS__) tail) {                                 \
    const auto swprobe_way = swprobe::idle_way<decltype(&name)>(swprobe_site_##name);              \
    if (swprobe_way != nullptr) return swprobe_way(SWPROBE_LIST(SWPROBE_NAME, __VA_ARGS__));       \
    return swprobe_watched_##name(SWPROBE_LIST(SWPROBE_NAME, __VA_ARGS__));                        \
  }

#endif
