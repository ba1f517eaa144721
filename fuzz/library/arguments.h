// SPDX-License-Identifier: MIT
// Arguments of any type, made of input bytes within their bounds.
#ifndef SWCTL_FUZZ_LIBRARY_ARGUMENTS_H
#define SWCTL_FUZZ_LIBRARY_ARGUMENTS_H

#include <cstdio>
#include <memory>
#include <tuple>
#include <type_traits>
#include <utility>

#include "library/bounds.h"
#include "support/input.h"

namespace swfuzz {

// A number, or a record by value.
template <class T>
class Argument {
 public:
  Argument(Input &input, const Bound *bound) {
    if constexpr (std::is_integral_v<T>) {
      const uint32_t number = input.number();
      const bool bounded = bound != nullptr && number > bound->number;
      value_ = static_cast<T>(bounded ? number % (bound->number + 1) : number);
    } else {
      input.fill(&value_, sizeof value_);
    }
  }
  T get() const { return value_; }

 private:
  T value_;
};

template <class T>
constexpr size_t usual_bytes() {
  using Element = std::remove_const_t<T>;
  if constexpr (std::is_void_v<Element>) {
    return sizeof(chip_l2_ucast_entry);
  } else if constexpr (std::is_same_v<Element, uint8_t>) {
    return SWCTL_MAC_BYTES;
  } else {
    return sizeof(Element);
  }
}

struct CloseFile {
  void operator()(FILE *file) const { fclose(file); }
};
using OpenFile = std::unique_ptr<FILE, CloseFile>;

inline OpenFile open_other() {
  return OpenFile(fopen("other", "r+"));
}

// The address of a block of exactly the bytes that belong there.
template <class T>
class Argument<T *> {
 public:
  Argument(Input &input, const Bound *bound) {
    if (bound != nullptr && bound->what == Bounded::file_behind) {
      file_ = open_other();
      return;
    }
    const size_t bytes = bound != nullptr ? bound->number : usual_bytes<T>();
    front_ = bound != nullptr && bound->what == Bounded::words_around ? sizeof(uint32_t) : 0;
    block_ = std::make_unique<uint8_t[]>(front_ + bytes);
    input.fill(block_.get() + front_, bytes);
  }
  T *get() const {
    return static_cast<T *>(file_ ? static_cast<void *>(file_.get()) : block_.get() + front_);
  }

 private:
  std::unique_ptr<uint8_t[]> block_;
  size_t front_ = 0;
  OpenFile file_;
};

template <>
class Argument<FILE *> {
 public:
  Argument(Input &, const Bound *) : file_(open_other()) {}
  FILE *get() const { return file_.get(); }

 private:
  OpenFile file_;
};

template <>
class Argument<const char *> {
 public:
  Argument(Input &input, const Bound *) : text_(input.text()) {}
  const char *get() const { return text_.c_str(); }

 private:
  std::string text_;
};

template <class Entry>
int32_t goes_on(uint32_t, Entry *, void *) {
  return 0;
}
template <class Entry>
int32_t ends(uint32_t, Entry *, void *) {
  return -1;
}
// Callbacks may delete the entry that they are shown, and change it.
template <class Entry>
int32_t removes(uint32_t, Entry *entry, void *) {
  entry->vid += static_cast<uint32_t>(user_mac_addr_delete(0, entry->mac, entry->vid));
  return 0;
}

template <class Entry>
class Argument<int32_t (*)(uint32_t, Entry *, void *)> {
 public:
  using Callback = int32_t (*)(uint32_t, Entry *, void *);
  Argument(Input &input, const Bound *) {
    static constexpr Callback kCallbacks[] = {goes_on<Entry>, ends<Entry>, removes<Entry>};
    callback_ = kCallbacks[input.byte() % std::size(kCallbacks)];
  }
  Callback get() const { return callback_; }

 private:
  Callback callback_;
};

template <class... Types, class Function, size_t... Index>
void call_with(Input &input, std::string_view name, Function function,
               std::index_sequence<Index...>) {
  // Braces: the arguments take their bytes from left to right.
  const std::tuple<Argument<Types>...> made{Argument<Types>(input, bound_of(name, Index))...};
  function(std::get<Index>(made).get()...);
}

template <class Result, class... Types>
void call_with_input(Input &input, std::string_view name, Result (*function)(Types...)) {
  call_with<Types...>(input, name, function, std::index_sequence_for<Types...>());
}

// Entry points that do not read all of their arguments take any.
template <class Result, class... Types>
void call_with_input(Input &input, std::string_view name, Result (*function)(Types..., ...)) {
  const auto call = [&](Types... named) {
    return function(named..., input.number(), input.number(), input.number());
  };
  call_with<Types...>(input, name, call, std::index_sequence_for<Types...>());
}

}  // namespace swfuzz

#endif
