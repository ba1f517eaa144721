// SPDX-License-Identifier: MIT
#include <cstring>

#include "document/findings.h"
#include "platform/platform_block.h"

namespace vchip {
namespace {

// A text ends with zeroes up to the end of its place.
void check_text(Findings &findings, const char *name, const char (&text)[kTraceText]) {
  const size_t length = strnlen(text, kTraceText);
  findings.rule(length < kTraceText, name, "has no end");
  bool clean = true;
  for (size_t at = length; at < kTraceText; ++at) clean = clean && text[at] == 0;
  findings.rule(clean, name, "goes on after its end");
}

}  // namespace

// The record that comes next may be what a killed call has left of it.
void PlatformBlock::check(Findings &findings) const {
  findings.any("log_lines", log_lines_);
  findings.any("trace", trace_);
  findings.at_most("next", next_, kTraceRecords - 1);
  findings.each("records", records_, [&](const Record &record, size_t index) {
    findings.any("location", record.location);
    findings.any("message", record.message);
    findings.flag("whole", record.whole);
    if (record.whole == 0 || index == next_) return;
    check_text(findings, "location", record.location);
    check_text(findings, "message", record.message);
  });
}

}  // namespace vchip
