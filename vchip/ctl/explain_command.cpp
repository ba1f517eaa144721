// SPDX-License-Identifier: MIT
#include <swctl-vchip/explain.h>
#include <swctl-vchip/frame.h>

#include <algorithm>
#include <cstdio>

#include "describe.h"
#include "frame_commands.h"
#include "given_frames.h"
#include "os/json.h"
#include "port_names.h"
#include "usage_error.h"
#include "words.h"

namespace vchipctl {
namespace {

using os::Json;

uint32_t length_of(const CapturedFrame &frame) {
  return static_cast<uint32_t>(frame.bytes.size());
}

// In the order in which `send` prints what leaves at one time.
std::vector<vchip::ExplainedFrame> sorted_by_name(std::vector<vchip::ExplainedFrame> out) {
  std::stable_sort(out.begin(), out.end(), [](const auto &first, const auto &second) {
    return port_rank(first.port) < port_rank(second.port);
  });
  return out;
}

// How wide the columns of step and decision have to be.
struct Widths {
  size_t step = 0;
  size_t decision = 0;
};

Widths widths_of(const std::vector<vchip::ExplainedStep> &steps) {
  Widths widths;
  for (const vchip::ExplainedStep &step : steps) {
    widths.step = std::max(widths.step, step.step.size());
    widths.decision = std::max(widths.decision, step.decision.size());
  }
  return widths;
}

void print_step(const vchip::ExplainedStep &step, const Widths &widths) {
  printf("%s %-*s  %-*s  %s", step.ends ? "=>" : "  ", static_cast<int>(widths.step),
         step.step.c_str(), static_cast<int>(widths.decision), step.decision.c_str(),
         step.why.c_str());
  if (!step.setting.empty()) printf("  (%s)", step.setting.c_str());
  printf("\n");
}

void print_out(const vchip::ExplainedFrame &frame) {
  const char *reason = vchip_to_cpu_name(frame.reason);
  printf("out port %s: %s%s%s\n", port_name(frame.port).c_str(), describe(frame.bytes).c_str(),
         reason != nullptr ? ", because of " : "", reason != nullptr ? reason : "");
}

void print_explanation(int32_t port, const CapturedFrame &frame,
                       const vchip::Explanation &explanation) {
  printf("in port %s: %s\n", port_name(port).c_str(), describe(frame.bytes).c_str());
  const Widths widths = widths_of(explanation.steps);
  for (const vchip::ExplainedStep &step : explanation.steps) print_step(step, widths);
  for (const vchip::ExplainedFrame &out : sorted_by_name(explanation.out)) print_out(out);
  if (explanation.dropped)
    printf("dropped at %s: %s\n", explanation.dropped_at.c_str(), explanation.dropped_why.c_str());
  else if (explanation.out.empty())
    printf("nothing leaves now\n");
}

void explain_text(uint32_t unit, int32_t port, const std::vector<CapturedFrame> &frames) {
  const char *space = "";
  for (const CapturedFrame &frame : frames) {
    printf("%s", space);
    print_explanation(port, frame,
                      vchip::explain(unit, port, frame.bytes.data(), length_of(frame)));
    space = "\n";
  }
}

// The numbers on the box, then texts such as "p27".
bool is_port_before(const Json &first, const Json &second) {
  const Json &one = first["port"];
  const Json &other = second["port"];
  return one.type() == other.type() ? one < other : one.is_number();
}

Json explained(uint32_t unit, int32_t port, const CapturedFrame &frame) {
  Json document =
      os::parse_json(vchip::explain_json(unit, port, frame.bytes.data(), length_of(frame)));
  std::stable_sort(document["out"].begin(), document["out"].end(), is_port_before);
  return document;
}

// Of one frame the document itself; of a capture an array with its numbers.
void explain_json(uint32_t unit, int32_t port, const std::vector<CapturedFrame> &frames,
                  bool captured) {
  Json all = Json::array();
  for (const CapturedFrame &frame : frames) {
    Json one = captured ? Json{{"number", frame.number}} : Json::object();
    one.update(explained(unit, port, frame));
    all.push_back(one);
  }
  printf("%s\n", os::json_text(captured ? Json{{"frames", all}} : all[0]).c_str());
}

}  // namespace

void explain(const FrameWords &words) {
  const uint32_t unit = parse_unit(words.unit);
  const int32_t port = parse_one_port(words.port);
  const std::vector<CapturedFrame> frames = given_frames(words);
  if (frames.size() > 1 && !words.capture)
    throw UsageError("'" + words.frames[1] + "' does not belong here: explain takes one frame");
  if (words.json) return explain_json(unit, port, frames, words.capture.has_value());
  explain_text(unit, port, frames);
}

}  // namespace vchipctl
