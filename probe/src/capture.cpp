// SPDX-License-Identifier: MIT
#include "capture.h"

#include <cstring>

namespace swprobe {
namespace {

template <class T>
int64_t load_as(const unsigned char *at) {
  T value;
  std::memcpy(&value, at, sizeof value);
  return static_cast<int64_t>(value);
}

int64_t load_signed(const unsigned char *at, size_t width) {
  switch (width) {
    case 1: return load_as<int8_t>(at);
    case 2: return load_as<int16_t>(at);
    case 4: return load_as<int32_t>(at);
    default: return load_as<int64_t>(at);
  }
}

int64_t load_unsigned(const unsigned char *at, size_t width) {
  switch (width) {
    case 1: return load_as<uint8_t>(at);
    case 2: return load_as<uint16_t>(at);
    case 4: return load_as<uint32_t>(at);
    default: return load_as<uint64_t>(at);
  }
}

template <class T>
void store_as(unsigned char *at, int64_t value) {
  const T narrow = static_cast<T>(value);
  std::memcpy(at, &narrow, sizeof narrow);
}

std::string name_of(const Spot &spot) {
  std::string name(spot.info->name);
  if (!spot.is_field()) return name;
  if (spot.info->array) name += '[' + std::to_string(spot.record) + ']';
  return name + '.' + std::string(spot.field->name);
}

}  // namespace

std::vector<Part> parts_of(std::span<const ArgumentInfo> infos,
                           std::span<const Address> addresses) {
  std::vector<Part> parts;
  each_spot(infos, addresses, [&](const Spot &spot) {
    parts.push_back({name_of(spot), spot.info, spot.field, spot.at, spot.count});
  });
  return parts;
}

Argument capture_before(const Part &part) {
  const ArgumentInfo &info = *part.info;
  const bool record = info.is_record();
  Argument argument{part.name,
                    info.direction,
                    record ? part.field->form : info.form,
                    static_cast<int>(part.field->width),
                    record ? part.field->array : info.array,
                    part.at == nullptr,
                    {},
                    {},
                    {}};
  if (argument.null) {
    if (record) argument.form = Form::dec, argument.width = 0, argument.array = false;
  } else if (info.form == Form::text) {
    argument.text = reinterpret_cast<const char *>(part.at);
  } else if (info.direction != Direction::out) {
    argument.before = load(part);
  }
  return argument;
}

Call captured(const Site &site, std::span<const Address> addresses, std::vector<Part> &parts) {
  Call call{};
  call.name = site.name;
  call.has_result = site.has_result;
  call.of_library = site.layer == Layer::library;
  call.result_form = site.result_form;
  parts = parts_of(site.arguments, addresses);
  call.arguments.reserve(parts.size());
  for (const Part &part : parts) call.arguments.push_back(capture_before(part));
  return call;
}

void capture_after(const std::vector<Part> &parts, Call &call) {
  for (size_t i = 0; i < parts.size(); ++i)
    if (parts[i].info->is_output() && parts[i].at != nullptr)
      call.arguments[i].after = load(parts[i]);
}

int64_t load_element(const Field &field, const unsigned char *at, size_t index) {
  at += index * field.width;
  return field.is_signed ? load_signed(at, field.width) : load_unsigned(at, field.width);
}

std::vector<int64_t> load(const Part &part) {
  std::vector<int64_t> values;
  values.reserve(part.count);
  for (size_t i = 0; i < part.count; ++i) values.push_back(load_element(*part.field, part.at, i));
  return values;
}

bool store(const Part &part, size_t index, int64_t value) {
  if (part.at == nullptr || index >= part.count) return false;
  // Only outputs are stored to, and their addresses came in as writable.
  auto *at = const_cast<unsigned char *>(part.at) + index * part.field->width;
  switch (part.field->width) {
    case 1: store_as<uint8_t>(at, value); break;
    case 2: store_as<uint16_t>(at, value); break;
    case 4: store_as<uint32_t>(at, value); break;
    default: store_as<int64_t>(at, value); break;
  }
  return true;
}

}  // namespace swprobe
