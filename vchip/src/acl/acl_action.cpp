// SPDX-License-Identifier: MIT
#include "acl/acl_action.h"

#include <swctl-vchip/vchip.h>

#include <array>
#include <cstddef>

namespace vchip {
namespace {

constexpr size_t kNoWord = CHIP_ACL_ACTION_WORDS;

// Words that belong together: the first is 1 if they count.
struct Group {
  size_t first;
  size_t end;
  const char *name;
  size_t kind;   // numbered variety, shown if the group has several
  size_t value;  // what the action is about
};
constexpr Group kGroups[] = {
    {7, 10, "mirror to session", kNoWord, 9}, {10, 13, "count on counter", kNoWord, 12},
    {13, 15, "meter", kNoWord, 14},           {15, 19, "outer vlan", kNoWord, 18},
    {19, 23, "inner vlan", kNoWord, 22},      {23, 25, "priority", kNoWord, 24},
    {29, 32, "remark kind", 30, 31},          {35, 37, "queue", kNoWord, 36},
};
// Words 0 to 6 and 25 have readings of their own.
constexpr size_t kForward = 0;
constexpr size_t kForwardKind = 1;
constexpr size_t kForwardTo = 2;
constexpr size_t kForwardEnd = 7;
constexpr size_t kVerdict = 25;

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
    if (word == kForward && value(word) == 1) return read_forward();
    if (word == kVerdict && value(word) <= 2) return add(value(word) == 1 ? "drop" : "permit");
    for (const Group &group : kGroups)
      if (group.first == word && value(word) == 1) return read_group(group);
    add("word " + number(static_cast<uint32_t>(word)) + " is " + number(value(word)));
  }

  void read_forward() {
    add(forward_text() + leftovers(kForwardTo + 1, kForwardEnd, kNoWord));
    mark(kForward, kForwardEnd);
  }

  std::string forward_text() const {
    const std::string to = number(value(kForwardTo));
    switch (value(kForwardKind)) {
      case 0: return "forward to nothing" + leftovers(kForwardTo, kForwardTo + 1, kNoWord);
      case 2: return value(kForwardTo) == VCHIP_CPU_PORT ? "trap" : "trap to port " + to;
      case 4: return "redirect to port " + to;
      case 5: return "redirect to ports " + to;
      case 6: return "redirect to group " + to;
      default: return "forward kind " + number(value(kForwardKind)) + " to " + to;
    }
  }

  void read_group(const Group &group) {
    std::string text = group.name;
    if (group.kind != kNoWord) text += ' ' + number(value(group.kind)) + " value";
    text += ' ' + number(value(group.value));
    add(text + leftovers(group.first + 1, group.end, group.kind, group.value));
    mark(group.first, group.end);
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
