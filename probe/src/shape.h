// SPDX-License-Identifier: MIT
// How the elements of an argument lie in memory.
#ifndef SWCTL_PROBE_SHAPE_H
#define SWCTL_PROBE_SHAPE_H

#include <swctl-probe/probe.h>

#include <cstddef>
#include <string_view>
#include <type_traits>
#include <utility>

namespace swprobe {

// One member of a record, or the whole element of a plain argument (then the
// name is empty).
struct Field {
  std::string_view name;
  size_t offset;
  size_t width;  // bytes of one element
  size_t count;  // elements
  bool array;
  bool is_signed;
  Form form;
  bool is_address = false;
};

template <class Member>
constexpr Field field(std::string_view name, size_t offset, Form form) {
  using Element = std::remove_all_extents_t<Member>;
  static_assert(std::is_integral_v<Element> || std::is_enum_v<Element>,
                "a field is an integer or an array of integers; name the members of an inner "
                "record one by one, as in SWPROBE_FIELD(record, inner.member, dec)");
  return {name,
          offset,
          sizeof(Element),
          sizeof(Member) / sizeof(Element),
          std::is_array_v<Member>,
          std::is_signed_v<Element>,
          form};
}

// The customisation point. A record in a list of calls is
// described once, in shapes.h, by its fields in the order to show them:
//
//     template <>
//     struct Shape<vlan_pair_t> {
//       static constexpr Field fields[] = {SWPROBE_FIELD(vlan_pair_t, vid, dec),
//                                          SWPROBE_FIELD(vlan_pair_t, mac, hex)};
//     };
template <class T>
struct Shape {
  static_assert(std::is_integral_v<T> || std::is_enum_v<T>,
                "describe this record with a Shape<> in probe/src/shapes.h");
  static constexpr Field fields[] = {field<T>("", 0, Form::dec)};
};

// An area of bytes without a type of its own.
template <>
struct Shape<void> : Shape<unsigned char> {};

template <class T>
constexpr size_t element_size() {
  if constexpr (std::is_void_v<T>) {
    return 1;
  } else {
    return sizeof(T);
  }
}

}  // namespace swprobe

#define SWPROBE_FIELD(record, member, form)                                                    \
  swprobe::field<decltype(std::declval<record &>().member)>(#member, offsetof(record, member), \
                                                            swprobe::Form::form)

#endif
