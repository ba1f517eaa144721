// SPDX-License-Identifier: MIT
// The probe for programs that are not written in C++: no exception leaves here.
#include <swctl-probe/probe.h>
#include <swctl-probe/process.h>

#include <cstdlib>
#include <cstring>
#include <exception>

#include "recording.h"

namespace swprobe {
namespace {

// Null only if memory runs out.
char *copied_text(const std::string &text) {
  char *const copy = static_cast<char *>(malloc(text.size() + 1));
  if (copy != nullptr) memcpy(copy, text.c_str(), text.size() + 1);
  return copy;
}

std::string documents_of(const std::vector<Call> &calls) {
  std::string all;
  for (const Call &call : calls) {
    all += recording_line(call, false);
    all.back() = ',';
    all += "\"line\":";
    append_json_text(all, call.line());
    all += "}\n";
  }
  return all;
}

}  // namespace
}  // namespace swprobe

int32_t swprobe_rule_add(const char *rule, char **text) {
  try {
    swprobe::plan(rule);
    return 0;
  } catch (const std::exception &error) {
    *text = swprobe::copied_text(error.what());
    return -1;
  }
}

void swprobe_rules_clear(void) {
  swprobe::clear_plan();
}

uint64_t swprobe_made_up(void) {
  return swprobe::made_up_count();
}

void swprobe_calls_forget(void) {
  swprobe::forget();
}

char *swprobe_calls_take(void) {
  try {
    return swprobe::copied_text(swprobe::documents_of(swprobe::take()));
  } catch (const std::exception &) {
    return nullptr;
  }
}

void swprobe_text_free(char *text) {
  free(text);
}
