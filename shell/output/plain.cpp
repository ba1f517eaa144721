// SPDX-License-Identifier: MIT
// The writers for people: table and detail.
#include <algorithm>

#include "number_list.h"
#include "output/writer.h"
#include "text.h"

namespace swsh {
namespace {

constexpr size_t kGap = 2;
constexpr char kNothing[] = "-";

struct PlainText {
  std::string operator()(std::nullptr_t) const { return ""; }
  std::string operator()(bool value) const { return value ? "yes" : "no"; }
  std::string operator()(int64_t value) const { return std::to_string(value); }
  std::string operator()(uint64_t value) const { return std::to_string(value); }
  std::string operator()(const std::string &value) const { return value; }
  std::string operator()(const std::vector<int64_t> &value) const {
    return number_list_text(value);
  }
  std::string operator()(const std::vector<std::string> &value) const { return join(value, ","); }
  std::string operator()(const Record &value) const { return words_text(value); }
  std::string operator()(const std::vector<Record> &value) const {
    std::vector<std::string> parts;
    for (const Record &record : value) parts.push_back(words_text(record));
    return join(parts, ", ");
  }
};

using Row = std::vector<std::string>;

std::vector<std::string> table_columns(const std::vector<Record> &records) {
  std::vector<std::string> columns;
  for (const Record &record : records) {
    for (const Field &field : record.fields) {
      const bool known = std::find(columns.begin(), columns.end(), field.key) != columns.end();
      if (field.in_table && !known) columns.push_back(field.key);
    }
  }
  return columns;
}

Row table_row(const std::vector<std::string> &columns, const Record &record) {
  Row row;
  for (const std::string &column : columns) {
    const auto field = std::find_if(record.fields.begin(), record.fields.end(),
                                    [&](const Field &each) { return each.key == column; });
    row.push_back(field == record.fields.end() ? kNothing : plain_text(*field));
  }
  return row;
}

std::vector<size_t> column_widths(const std::vector<Row> &rows) {
  std::vector<size_t> widths(rows.front().size());
  for (const Row &row : rows) {
    for (size_t i = 0; i < row.size(); ++i) widths[i] = std::max(widths[i], row[i].size());
  }
  return widths;
}

std::string row_text(const Row &row, const std::vector<size_t> &widths) {
  std::string line;
  for (size_t i = 0; i + 1 < row.size(); ++i) line += padded(row[i], widths[i] + kGap);
  return line + row.back() + '\n';
}

size_t longest_key(const Record &record) {
  size_t longest = 0;
  for (const Field &field : record.fields) longest = std::max(longest, field.key.size());
  return longest;
}

// What a detail indents below the field's name; nothing where a person reads
// something else.
std::vector<Record> nested_records(const Field &field) {
  if (!field.shown.empty()) return {};
  if (const auto *record = std::get_if<Record>(&field.value)) return {*record};
  if (const auto *records = std::get_if<std::vector<Record>>(&field.value)) return *records;
  return {};
}

}  // namespace

std::string plain_text(const Field &field) {
  if (!field.shown.empty()) return field.shown;
  const std::string text = std::visit(PlainText{}, field.value);
  return text.empty() ? kNothing : text;
}

std::string words_text(const Record &record) {
  std::vector<std::string> words;
  for (const Field &field : record.fields) words.push_back(field.key + ' ' + plain_text(field));
  return join(words, " ");
}

std::string table_text(const std::vector<Record> &records) {
  if (records.empty()) return "";
  std::vector<Row> rows = {table_columns(records)};
  if (rows.front().empty()) return "";
  for (const Record &record : records) rows.push_back(table_row(rows.front(), record));
  const std::vector<size_t> widths = column_widths(rows);
  std::string text;
  for (const Row &row : rows) text += row_text(row, widths);
  return text;
}

std::string detail_text(const Record &record, size_t indent) {
  const std::string margin(indent, ' ');
  const size_t width = longest_key(record) + kGap;
  std::string text;
  for (const Field &field : record.fields) {
    const std::vector<Record> nested = nested_records(field);
    if (nested.empty()) {
      text += margin + padded(field.key, width) + plain_text(field) + '\n';
      continue;
    }
    text += margin + field.key + '\n';
    for (const Record &each : nested) text += detail_text(each, indent + kGap);
  }
  return text;
}

}  // namespace swsh
