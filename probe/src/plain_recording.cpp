// SPDX-License-Identifier: MIT
#include "plain_recording.h"

#include "of_this_thread.h"
#include "recording.h"

namespace swprobe {
namespace {

void append_name(TextBuffer &text, const Spot &spot) {
  text.add(spot.info->name);
  if (!spot.is_field()) return;
  if (spot.info->array) {
    text.add('[');
    text.add_number(static_cast<int64_t>(spot.record));
    text.add(']');
  }
  text.add('.');
  text.add(spot.field->name);
}

void append_values(TextBuffer &text, const Spot &spot) {
  const bool array = spot.is_array() || spot.count != 1;
  if (array) text.add('[');
  for (size_t i = 0; i < spot.count; ++i) {
    if (i > 0) text.add(',');
    text.add_number(load_element(*spot.field, spot.at, i));
  }
  if (array) text.add(']');
}

void append_input(TextBuffer &text, const Spot &spot) {
  text.add("\"in\":");
  if (spot.info->form == Form::text) {
    std::string quoted;
    append_json_text(quoted, reinterpret_cast<const char *>(spot.at));
    text.add(quoted);
  } else {
    append_values(text, spot);
  }
}

// All of an argument but its outputs and its end.
void append_beginning(TextBuffer &text, const Spot &spot) {
  text.add('"');
  append_name(text, spot);
  text.add("\":");
  if (spot.at == nullptr) {
    text.add("null");
    return;
  }
  text.add('{');
  if (spot.info->direction != Direction::out) append_input(text, spot);
}

void append_end(TextBuffer &text, const Spot &spot, bool has_outputs) {
  if (spot.at == nullptr) return;
  if (has_outputs && spot.info->is_output() && spot.count > 0) {
    if (spot.info->direction != Direction::out) text.add(',');
    text.add("\"out\":");
    append_values(text, spot);
  }
  text.add('}');
}

}  // namespace

PlainRecording &PlainRecording::mine() {
  return of_this_thread<PlainRecording>();
}

void PlainRecording::begin(const Site &site, std::span<const Address> addresses) {
  inputs_.clear();
  ends_.clear();
  each_spot(site.arguments, addresses, [&](const Spot &spot) {
    append_beginning(inputs_, spot);
    ends_.push_back(inputs_.size());
  });
}

void PlainRecording::end(const Site &site, std::span<const Address> addresses,
                         const Answered &answered) {
  rest_.clear();
  rest_.add(",\"call\":\"");
  rest_.add(site.name);
  rest_.add("\",\"arguments\":{");
  size_t from = 0;
  auto end = ends_.begin();
  each_spot(site.arguments, addresses, [&](const Spot &spot) {
    if (from > 0) rest_.add(',');
    rest_.add(inputs_.part(from, *end));
    from = *end++;
    append_end(rest_, spot, answered.has_outputs);
  });
  rest_.add('}');
  if (site.has_result) {
    rest_.add(",\"result\":");
    rest_.add_number(answered.result);
  }
  rest_.add(std::string_view(answered.made_up ? ",\"made_up\":true}" : ",\"made_up\":false}"));
}

std::string_view PlainRecording::line(uint64_t number) {
  line_.clear();
  line_.add("{\"number\":");
  line_.add_number(static_cast<int64_t>(number));
  line_.add(rest_.view());
  return line_.view();
}

}  // namespace swprobe
