// SPDX-License-Identifier: MIT
#include "report.h"

#include <algorithm>
#include <array>

#include "os/format.h"
#include "os/json.h"

namespace swfaults {
namespace {

using os::Json;

constexpr std::array kVerdicts = {Verdict::told, Verdict::silent, Verdict::crashed, Verdict::hung,
                                  Verdict::not_reached};

const char *fault_word(const Fault &fault) {
  return fault.and_after ? "and all after" : "alone";
}

std::string answer_of(const End &end) {
  switch (end.kind) {
    case End::Kind::exited: return "status " + std::to_string(end.code);
    case End::Kind::killed: return "signal " + std::to_string(end.code);
    case End::Kind::timed_out: return "no end";
  }
  return "";
}

// The line that the program said last on standard error: what it ended with.
std::string said(const End &end) {
  const size_t last = end.error.find_last_not_of('\n');
  if (last == std::string::npos) return "";
  const size_t before = end.error.rfind('\n', last);
  const size_t first = before == std::string::npos ? 0 : before + 1;
  return end.error.substr(first, last + 1 - first);
}

size_t count_of(const Outcome &outcome, Verdict verdict) {
  return static_cast<size_t>(std::ranges::count(outcome.runs, verdict, &Run::verdict));
}

std::string joined(const std::vector<std::string> &words) {
  std::string text;
  for (const std::string &word : words) text += (text.empty() ? "" : " ") + word;
  return text;
}

// What XML cannot hold becomes a question mark; bytes outside ASCII too, for
// the program may write in any encoding.
std::string xml(const std::string &text) {
  std::string safe;
  for (const char character : text) {
    const auto byte = static_cast<unsigned char>(character);
    switch (character) {
      case '&': safe += "&amp;"; break;
      case '<': safe += "&lt;"; break;
      case '>': safe += "&gt;"; break;
      case '"': safe += "&quot;"; break;
      case '\n': safe += "&#10;"; break;
      case '\t': safe += "&#9;"; break;
      default: safe += byte < ' ' || byte >= 0x7f ? '?' : character;
    }
  }
  return safe;
}

std::string test_case(const Run &run) {
  std::string text =
      os::format("    <testcase classname=\"swctl-faults\" name=\"call {} {}: {}\" time=\"{:.3f}\"",
                 run.fault.call, fault_word(run.fault), xml(run.fault.line), run.end.seconds);
  const bool is_error = run.verdict == Verdict::crashed || run.verdict == Verdict::hung;
  if (run.verdict == Verdict::told) return text + "/>\n";
  text += ">\n";
  if (run.verdict == Verdict::not_reached) {
    text += "      <skipped message=\"the program did not make the call\"/>\n";
  } else {
    text +=
        os::format("      <{0} message=\"{1}: {2}\">{3}</{0}>\n", is_error ? "error" : "failure",
                   word_of(run.verdict), answer_of(run.end), xml(run.end.error));
  }
  return text + "    </testcase>\n";
}

}  // namespace

std::string table(const Outcome &outcome) {
  size_t width = std::string("what was called").size();
  for (const Run &run : outcome.runs) width = std::max(width, run.fault.line.size());
  std::string text = os::format("{:>4}  {:<13}  {:<11}  {:<10}  {:<{}}  {}\n", "call", "fails",
                                "verdict", "answer", "what was called", width, "what it said");
  for (const Run &run : outcome.runs) {
    std::string line = os::format("{:>4}  {:<13}  {:<11}  {:<10}  {:<{}}  {}", run.fault.call,
                                  fault_word(run.fault), word_of(run.verdict), answer_of(run.end),
                                  run.fault.line, width, said(run.end));
    line.erase(line.find_last_not_of(' ') + 1);
    text += line + '\n';
  }
  return text;
}

std::string summary(const Outcome &outcome) {
  std::string text =
      os::format("{} call{}, {} run{}:", outcome.calls, outcome.calls == 1 ? "" : "s",
                 outcome.runs.size(), outcome.runs.size() == 1 ? "" : "s");
  const char *between = " ";
  for (const Verdict verdict : kVerdicts) {
    const size_t count = count_of(outcome, verdict);
    if (count == 0 && verdict == Verdict::not_reached) continue;
    text += os::format("{}{} {}", between, count, word_of(verdict));
    between = ", ";
  }
  return text;
}

std::string json(const Settings &settings, const Outcome &outcome) {
  Json all = {{"program", settings.words},
              {"calls", outcome.calls},
              {"status", outcome.status},
              {"output_varies", outcome.output_varies},
              {"error_varies", outcome.error_varies},
              {"runs", Json::array()}};
  for (const Run &run : outcome.runs) {
    const bool exited = run.end.kind == End::Kind::exited;
    const bool killed = run.end.kind == End::Kind::killed;
    all["runs"].push_back({{"call", run.fault.call},
                           {"name", run.fault.name},
                           {"line", run.fault.line},
                           {"and_after", run.fault.and_after},
                           {"verdict", word_of(run.verdict)},
                           {"status", exited ? Json(run.end.code) : Json()},
                           {"signal", killed ? Json(run.end.code) : Json()},
                           {"seconds", run.end.seconds},
                           {"output", run.end.output},
                           {"error", run.end.error}});
  }
  return os::json_text(all);
}

std::string junit(const Settings &settings, const Outcome &outcome) {
  const std::string counts =
      os::format("tests=\"{}\" failures=\"{}\" errors=\"{}\" skipped=\"{}\"", outcome.runs.size(),
                 count_of(outcome, Verdict::silent),
                 count_of(outcome, Verdict::crashed) + count_of(outcome, Verdict::hung),
                 count_of(outcome, Verdict::not_reached));
  std::string text = os::format(
      "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<testsuites {0}>\n"
      "  <testsuite name=\"{1}\" {0}>\n",
      counts, xml(joined(settings.words)));
  for (const Run &run : outcome.runs) text += test_case(run);
  return text + "  </testsuite>\n</testsuites>\n";
}

}  // namespace swfaults
