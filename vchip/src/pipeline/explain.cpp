// SPDX-License-Identifier: MIT
// What would become of a frame: the way itself, on a copy of the chip.
#include <swctl-vchip/explain.h>
#include <swctl-vchip/frame.h>

#include <bit>
#include <cstring>
#include <stdexcept>

#include "chip/copy.h"
#include "chip/viewing.h"
#include "common/board.h"
#include "os/json.h"
#include "pipeline/carried.h"
#include "pipeline/run.h"

namespace vchip {
namespace {

class Recorder : public Listener {
 public:
  explicit Recorder(std::vector<ExplainedStep> &steps) : steps_(steps) {}
  void hear(const Told &told) override {
    steps_.push_back({told.step, told.decision, told.why,
                      told.setting == nullptr ? "" : told.setting, told.port, told.deciding});
  }

 private:
  std::vector<ExplainedStep> &steps_;
};

// The frames that leave in the copy alone.
void clear_left(UnitTraffic &traffic) {
  for (PortTraffic &port : traffic.ports) port.left.clear();
  traffic.left_ports = 0;
}

std::vector<ExplainedFrame> take_left(UnitTraffic &traffic) {
  std::vector<ExplainedFrame> out;
  for (uint32_t rest = traffic.left_ports; rest != 0; rest &= rest - 1) {
    const int32_t port = std::countr_zero(rest);
    FrameRing &left = traffic.ports[static_cast<size_t>(port)].left;
    for (; !left.empty(); left.pop()) {
      const uint8_t *bytes = left.front_bytes();
      out.push_back({port, {bytes, bytes + left.front().length}, left.front().reason});
    }
  }
  return out;
}

void expect_length(uint32_t length) {
  if (length < VCHIP_FRAME_MIN || length > VCHIP_FRAME_MAX)
    throw std::invalid_argument("no frame has " + std::to_string(length) + " bytes");
}

// The way of the frame itself, whatever its copies met.
void find_end(Explanation &explanation) {
  for (const ExplainedStep &step : explanation.steps) {
    if (!step.ends) continue;
    explanation.dropped = step.decision == "drop";
    if (explanation.dropped) {
      explanation.dropped_at = step.step;
      explanation.dropped_why = step.why;
    }
    return;
  }
}

using os::Json;

Json port_json(int32_t port) {
  const int32_t interface = interface_of(port);
  return interface >= 0 ? Json(interface) : Json("p" + std::to_string(port));
}

std::string hex(const std::vector<uint8_t> &bytes) {
  constexpr char kDigits[] = "0123456789abcdef";
  std::string text;
  for (const uint8_t byte : bytes) {
    text += kDigits[byte >> 4];
    text += kDigits[byte & 0xf];
  }
  return text;
}

Json step_json(const ExplainedStep &step) {
  return Json{{"step", step.step},
              {"decision", step.decision},
              {"why", step.why},
              {"setting", step.setting.empty() ? Json() : Json(step.setting)}};
}

}  // namespace

Explanation explain(uint32_t unit, int32_t port, const uint8_t *bytes, uint32_t length) {
  expect_port(port);
  expect_length(length);
  Viewing chip;
  chip.unit(unit);
  Copy copy(chip.locked());
  State &state = copy.state();
  UnitTraffic traffic = carried(unit);
  Run(state, unit, traffic);
  clear_left(traffic);
  Explanation explanation = {};
  Recorder recorder(explanation.steps);
  Run(state, unit, traffic, &recorder).arrive(port, bytes, length);
  explanation.out = take_left(traffic);
  find_end(explanation);
  return explanation;
}

std::string explain_json(uint32_t unit, int32_t port, const uint8_t *bytes, uint32_t length) {
  const Explanation explanation = explain(unit, port, bytes, length);
  Json document = {{"steps", Json::array()}, {"out", Json::array()}, {"dropped", nullptr}};
  for (const ExplainedStep &step : explanation.steps) document["steps"].push_back(step_json(step));
  for (const ExplainedFrame &frame : explanation.out)
    document["out"].push_back({{"port", port_json(frame.port)}, {"bytes", hex(frame.bytes)}});
  if (explanation.dropped)
    document["dropped"] = {{"step", explanation.dropped_at}, {"why", explanation.dropped_why}};
  return os::json_text(document);
}

}  // namespace vchip
