// SPDX-License-Identifier: MIT
#include "output/writer.h"
#include "text.h"

namespace swsh {
namespace {

std::string details_text(const std::vector<Record> &records) {
  std::vector<std::string> texts;
  for (const Record &record : records) texts.push_back(detail_text(record));
  return join(texts, "\n");
}

std::string human_text(const Answer &answer) {
  switch (answer.shape) {
    case Shape::nothing:
    case Shape::shown: return "";
    case Shape::table: return table_text(answer.records);
    case Shape::detail: return details_text(answer.records);
    case Shape::text: return answer.text;
  }
  return "";
}

Value culprit_value(const Fault &fault) {
  return fault.culprit ? Value(*fault.culprit) : Value(nullptr);
}

void add_refusal(Record &error, const Refusal &refusal) {
  error.add("function", refusal.function);
  error.add("result", int64_t{refusal.result});
  error.add("sentence", refusal.sentence ? Value(*refusal.sentence) : Value(nullptr));
}

}  // namespace

Record fault_record(const Fault &fault) {
  Record error;
  error.add("message",
            fault.context.empty() ? fault.message : fault.context + ": " + fault.message);
  error.add("culprit", culprit_value(fault));
  error.add("expected", fault.expected);
  error.add("suggestions", fault.suggestions);
  if (fault.refusal) add_refusal(error, *fault.refusal);
  if (!fault.details.empty()) error.add("details", fault.details);
  error.add("status", int64_t{fault.status});
  return Record().add("error", error);
}

std::string line_text(const Record &record, Format format) {
  // JSON a line each, whatever the indentation asked for elsewhere.
  if (format != Format::human) return json_text(Value(record), Format::json);
  std::vector<std::string> values;
  for (const Field &field : record.fields)
    if (field.in_table) values.push_back(plain_text(field));
  return join(values, "  ");
}

std::string answer_text(const Answer &answer, Format format) {
  if (format == Format::human) return human_text(answer);
  return json_text(answer.records, format) + '\n';
}

}  // namespace swsh
