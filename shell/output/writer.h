// SPDX-License-Identifier: MIT
#ifndef SWCTL_SHELL_OUTPUT_WRITER_H
#define SWCTL_SHELL_OUTPUT_WRITER_H

#include <string>

#include "fault.h"
#include "output/record.h"

namespace swsh {

enum class Format { human, json, pretty };

// The value as a person reads it, in one line; nothing is "-".
std::string plain_text(const Field &field);

std::string table_text(const std::vector<Record> &records);
std::string detail_text(const Record &record, size_t indent = 0);
// The record in one line, without a line end: its values with two spaces
// between, or JSON.
std::string line_text(const Record &record, Format format);
// Keys and values as the words of a command: in-ports 1-4 ethertype 0x88cc
std::string words_text(const Record &record);
// Without a line end.
std::string json_text(const Value &value, Format format);

// {"error": {...}}
Record fault_record(const Fault &fault);

// All that a command prints on standard output, line ends included.
std::string answer_text(const Answer &answer, Format format);

}  // namespace swsh

#endif
