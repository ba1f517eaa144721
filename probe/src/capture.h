// SPDX-License-Identifier: MIT
// Between the caller's memory and lists of numbers.
#ifndef SWCTL_PROBE_CAPTURE_H
#define SWCTL_PROBE_CAPTURE_H

#include <span>
#include <string>
#include <vector>

#include "site.h"

namespace swprobe {

// Where an argument's elements are: at the pointer that was passed, or the
// passed value itself.
struct Address {
  const void *at;
  size_t count;
};

// What becomes one Argument: a plain argument, or one field of one record.
struct Spot {
  const ArgumentInfo *info;
  const Field *field;
  size_t record;            // which one, of an array
  const unsigned char *at;  // null if a null address was passed
  size_t count;             // elements

  bool is_field() const { return at != nullptr && info->is_record(); }
  bool is_array() const { return info->is_record() ? field->array : info->array; }
};

// Calls visit(spot) for all that a call takes and gives, in order.
template <class Visit>
void each_spot(std::span<const ArgumentInfo> infos, std::span<const Address> addresses,
               Visit visit) {
  for (size_t i = 0; i < infos.size(); ++i) {
    const ArgumentInfo &info = infos[i];
    const auto *at = static_cast<const unsigned char *>(addresses[i].at);
    if (at == nullptr || !info.is_record()) {
      visit(Spot{&info, &info.fields.front(), 0, at, addresses[i].count});
      continue;
    }
    for (size_t record = 0; record < addresses[i].count; ++record)
      for (const Field &field : info.fields)
        visit(Spot{&info, &field, record, at + record * info.stride + field.offset, field.count});
  }
}

// A spot with its name.
struct Part {
  std::string name;
  const ArgumentInfo *info;
  const Field *field;
  const unsigned char *at;
  size_t count;
};

std::vector<Part> parts_of(std::span<const ArgumentInfo> infos, std::span<const Address> addresses);

// The argument with what goes into the call.
Argument capture_before(const Part &part);
// A call with all of those. `parts` becomes where they are.
Call captured(const Site &site, std::span<const Address> addresses, std::vector<Part> &parts);
// Adds what the call has written.
void capture_after(const std::vector<Part> &parts, Call &call);
std::vector<int64_t> load(const Part &part);
int64_t load_element(const Field &field, const unsigned char *at, size_t index);
// False if the part has no such element.
bool store(const Part &part, size_t index, int64_t value);

}  // namespace swprobe

#endif
