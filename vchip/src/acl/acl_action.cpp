// SPDX-License-Identifier: MIT
#include "acl/acl_action.h"

#include <swctl-vchip/vchip.h>

#include <array>
#include <cstddef>

namespace vchip {
namespace {

constexpr size_t kNoWord = CHIP_ACL_ACTION_WORDS;

// Words that belong together, the first of which is 1 if they count. The last
// is what the action is about.
struct Group {
  size_t first;
  size_t value;
  const char *name;
  size_t kind = kNoWord;  // numbered variety, shown if the group has several
};
constexpr Group kMaskGroups[] = {
    {CHIP_ACL_WORD_MIRROR, CHIP_ACL_WORD_MIRROR_SESSION, "mirror to session"},
    {CHIP_ACL_WORD_COUNT, CHIP_ACL_WORD_COUNT_COUNTER, "count on counter"},
    {CHIP_ACL_WORD_METER, CHIP_ACL_WORD_METER_NUMBER, "meter"},
    {CHIP_ACL_WORD_OUTER_VLAN, CHIP_ACL_WORD_OUTER_VLAN_ID, "outer vlan"},
    {CHIP_ACL_WORD_INNER_VLAN, CHIP_ACL_WORD_INNER_VLAN_ID, "inner vlan"},
    {CHIP_ACL_WORD_PRIORITY, CHIP_ACL_WORD_PRIORITY_VALUE, "priority"},
    {CHIP_ACL_WORD_REMARK, CHIP_ACL_WORD_REMARK_VALUE, "remark kind", CHIP_ACL_WORD_REMARK_KIND},
    {CHIP_ACL_WORD_QUEUE, CHIP_ACL_WORD_QUEUE_NUMBER, "queue"},
};
constexpr size_t kForwardEnd = CHIP_ACL_WORD_FORWARD_W6 + 1;

std::string number(uint32_t value) {
  return std::to_string(value);
}

class Reader {
 public:
  explicit Reader(const chip_acl_action &action) : action_(action) {}

  std::vector<std::string> read() {
    for (size_t word = 0; word < CHIP_ACL_ACTION_WORDS; ++word)
      if (value(word) != 0 && !known_[word]) read_from(word);
    return texts_;
  }

 private:
  uint32_t value(size_t word) const { return action_.word[word]; }

  void read_from(size_t word) {
    if (word == CHIP_ACL_WORD_FORWARD && value(word) == 1) return read_forward();
    if (word == CHIP_ACL_WORD_VERDICT && value(word) == CHIP_ACL_VERDICT_DROP) return add("drop");
    if (word == CHIP_ACL_WORD_VERDICT && value(word) == CHIP_ACL_VERDICT_PERMIT)
      return add("permit");
    for (const Group &group : kMaskGroups)
      if (group.first == word && value(word) == 1) return read_group(group);
    add("word " + number(static_cast<uint32_t>(word)) + " is " + number(value(word)));
  }

  void read_forward() {
    add(forward_text() + leftovers(CHIP_ACL_WORD_FORWARD_TO + 1, kForwardEnd, kNoWord));
    mark(CHIP_ACL_WORD_FORWARD, kForwardEnd);
  }

  std::string forward_text() const {
    const std::string to = number(value(CHIP_ACL_WORD_FORWARD_TO));
    switch (value(CHIP_ACL_WORD_FORWARD_KIND)) {
      case CHIP_ACL_FORWARD_NOWHERE:
        return "forward to nothing" +
               leftovers(CHIP_ACL_WORD_FORWARD_TO, CHIP_ACL_WORD_FORWARD_TO + 1, kNoWord);
      case CHIP_ACL_FORWARD_TRAP:
        return value(CHIP_ACL_WORD_FORWARD_TO) == VCHIP_CPU_PORT ? "trap" : "trap to port " + to;
      case CHIP_ACL_FORWARD_PORT: return "redirect to port " + to;
      case CHIP_ACL_FORWARD_MASK: return "redirect to ports " + to;
      case CHIP_ACL_FORWARD_GROUP: return "redirect to group " + to;
      default: return "forward kind " + number(value(CHIP_ACL_WORD_FORWARD_KIND)) + " to " + to;
    }
  }

  void read_group(const Group &group) {
    std::string text = group.name;
    if (group.kind != kNoWord) text += ' ' + number(value(group.kind)) + " value";
    text += ' ' + number(value(group.value));
    add(text + leftovers(group.first + 1, group.value + 1, group.kind, group.value));
    mark(group.first, group.value + 1);
  }

  // Words of a group that have no name of their own, where they are not 0.
  std::string leftovers(size_t first, size_t end, size_t kind, size_t shown = kNoWord) const {
    std::string text;
    for (size_t word = first; word < end; ++word)
      if (value(word) != 0 && word != kind && word != shown)
        text += " w" + std::to_string(word) + "=" + number(value(word));
    return text;
  }

  void add(const std::string &text) { texts_.push_back(text); }
  void mark(size_t first, size_t end) {
    for (size_t word = first; word < end; ++word) known_[word] = true;
  }

  const chip_acl_action &action_;
  std::array<bool, CHIP_ACL_ACTION_WORDS> known_ = {};
  std::vector<std::string> texts_;
};

}  // namespace

std::vector<std::string> action_texts(const chip_acl_action &action) {
  return Reader(action).read();
}

}  // namespace vchip
