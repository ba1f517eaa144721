// SPDX-License-Identifier: MIT
// The state of one frame on its way through the pipeline, and what its steps
// ask for. A step reads the blocks and the frame and writes here; nothing of
// the chip changes before apply() of effects.h.
#ifndef VCHIP_PIPELINE_WAY_H
#define VCHIP_PIPELINE_WAY_H

#include <swctl-vchip/frame.h>

#include <cstdint>
#include <string>
#include <utility>

#include "l2/l2_block.h"
#include "pipeline/compiled.h"
#include "pipeline/frame.h"
#include "rules/rule_block.h"
#include "traffic/drop_block.h"

namespace vchip {

struct Unit;

// What a step looked at and what came of it, for a reader.
struct Told {
  const char *step;
  const char *decision;
  std::string why;
  const char *setting;  // the SDK's call that decided; null where none does
  int32_t port;         // of the frame
  bool deciding;        // it ended the frame's way
};

// Hears what the steps say. The way is the same with or without one.
class Listener {
 public:
  virtual ~Listener() = default;
  virtual void hear(const Told &told) = 0;
  // What is told from here on is of this frame, which arrives at a port or was to leave it.
  virtual void see(int32_t, bool /*outbound*/, const uint8_t * /*bytes*/, uint32_t /*length*/) {}
};

enum class Verdict : uint32_t { go_on, end };

// Of a number that no step has set.
inline constexpr uint32_t kUnset = UINT32_MAX;

// What the steps ask for besides sending. Applied when the way has ended.
struct Effects {
  bool received = false;
  bool oversize = false;
  bool charge_ingress = false;
  bool pause = false;
  uint32_t charged_storms = 0;   // a bit a type
  uint32_t exceeded_storms = 0;  // a bit a type
  uint32_t meter = kUnset;       // charged
  uint32_t rule_counter = kUnset;
  Learn learn = Learn::nothing;
  uint64_t meter_tokens = 0;
  uint64_t pause_until = 0;
};

// How the tags are written when the frame leaves.
struct Edit {
  uint32_t priority = kUnset;        // of the VLAN's tag, if it is added
  uint32_t inner_vid = kUnset;       // of the tag inside, in double-tag mode
  uint32_t inner_priority = kUnset;  // of that tag, if it is added
  uint32_t remark = kUnset;          // a rule's, CHIP_ACL_REMARK_*
  uint32_t remark_value = 0;
};

// One frame on its way.
struct Way {
  // What is read.
  const Unit &unit;
  const RuleBlock &rules;
  const Compiled &tables;
  Listener *listener;
  uint64_t now;
  int32_t port;
  bool from_cpu;
  bool turned;  // it came out of a loop
  Frame frame;
  uint64_t destination;
  uint64_t source;

  // What is found on the way. In double-tag mode the VLAN's tag is the outer
  // one and there may be another inside; an ordinary port knows one tag.
  bool double_tag = false;
  bool outer_removed = false;  // the outer tag came, and its port does not keep it
  Tag received = {};           // the tag in front, as it came
  Tag tag = {};                // the VLAN's tag
  Tag inner = {};              // the tag inside
  uint32_t tag_type = 0;
  uint32_t inner_type = 0;
  uint32_t type_at = kAddressBytes;  // of the EtherType after the tags
  Layers layers = {};
  uint32_t vid = kUnset;  // of the VLAN that it is in
  uint32_t assigned_priority = kUnset;
  uint32_t priority = 0;  // internal
  uint32_t queue = kUnset;
  int32_t source_index = kNoIndex;
  uint32_t source_vid = kUnset;  // of the VLAN that it is learned in, whatever a rule assigns
  uint32_t rule = kUnset;
  bool redirected = false;
  bool known = false;     // its destination was found
  uint32_t redirect = 0;  // ports, in place of a lookup
  uint32_t targets = 0;   // ports that the lookup gave

  // What is asked for.
  Effects effects;
  Edit edit;
  uint32_t mirror_groups = 0;  // copies as received, a bit a group
  uint32_t cpu_reason = 0;     // 0: no copy for the processor
  uint32_t egress = 0;         // ports that it leaves by
  Fate fate = Fate::received;  // set when the way ends

  Way(const Unit &unit_, const RuleBlock &rules_, const Compiled &tables_, Listener *listener_,
      uint64_t now_, const Frame &frame_, int32_t port_, bool turned_)
      : unit(unit_),
        rules(rules_),
        tables(tables_),
        listener(listener_),
        now(now_),
        port(port_),
        from_cpu(port_ == VCHIP_CPU_PORT),
        turned(turned_),
        frame(frame_),
        destination(frame_.destination()),
        source(frame_.source()) {}

  bool told() const { return listener != nullptr; }
  void tell(const char *step, const char *decision, std::string why, const char *setting) const {
    if (listener != nullptr) listener->hear({step, decision, std::move(why), setting, port, false});
  }

  // The frame ends here. `why` is called only if somebody listens.
  template <typename Why>
  Verdict drop(const char *step, Fate how, const char *setting, Why why) {
    return end(step, "drop", how, setting, why);
  }
  template <typename Why>
  Verdict end(const char *step, const char *decision, Fate how, const char *setting, Why why) {
    fate = how;
    if (listener != nullptr) listener->hear({step, decision, why(), setting, port, true});
    return Verdict::end;
  }
  template <typename Why>
  Verdict pass(const char *step, const char *setting, Why why) const {
    if (listener != nullptr) listener->hear({step, "pass", why(), setting, port, false});
    return Verdict::go_on;
  }

  // A copy for the processor, by the first reason.
  void copy_to_cpu(uint32_t reason) {
    if (cpu_reason == 0) cpu_reason = reason;
  }
  template <typename Why>
  Verdict to_cpu(const char *step, uint32_t reason, const char *setting, Why why) {
    copy_to_cpu(reason);
    return end(step, "to-cpu", Fate::taken, setting, why);
  }
};

inline Source source_of(const Way &way) {
  const uint8_t trunk = way.tables.trunk[static_cast<size_t>(way.port)];
  return {way.source_vid, way.frame.bytes + kMacBytes, way.port, trunk == kTrunkless ? 0 : trunk};
}

}  // namespace vchip

#endif
