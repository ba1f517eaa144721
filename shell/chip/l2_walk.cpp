// SPDX-License-Identifier: MIT
#include "chip/l2_walk.h"

#include <swctl/l2.h>
#include <swctl/platform/l2_read.h>
#include <swctl/platform/sdk.h>

#include <optional>
#include <string>

#include "chip/address_table.h"
#include "chip/call.h"
#include "chip/optional_call.h"
#include "chip/progress.h"
#include "chip/vlans.h"

namespace swsh {
namespace {

constexpr int32_t kBeforeFirst = -1;
constexpr uint32_t kStaticToo = 1;

// A table: the SDK's step through it, which answers 0 for an entry, and the
// platform's, which knows where it ends.
template <typename Record, typename Step>
class TableWalk {
 public:
  using Entry = decltype(Record::entry);
  using Known = OptionalCall<int32_t(uint32_t, int32_t, Record *)>;

  TableWalk(const char *name, Step step, Known known, uint32_t unit, const char *what)
      : name_(name), step_(step), known_(known), unit_(unit), what_(what) {}

  std::vector<Entry> entries() {
    Progress progress(std::string(what_) + " read");
    std::vector<Entry> found;
    for (;;) {
      if (is_interrupted()) throw CommandError(interrupted());
      Entry entry = {};
      int32_t index = last_;
      const int32_t result = step_(&index, &entry);
      if (result != 0 || index <= last_) {
        if (!is_end()) {
          doubt(result);
          continue;
        }
        if (doubted_ && *doubted_ != result) refuse_table(*doubted_);
        return found;
      }
      before_last_ = last_;
      last_ = index;
      found.push_back(entry);
      progress.step();
    }
  }

 private:
  [[noreturn]] void refuse_table(int32_t result) const {
    refuse({name_, result}, subject_of("the table of " + what_));
  }

  // An entry that another process adds after the step has found none is there when the
  // platform is asked. The step finds it the next time, and what it said before is what
  // it says at the end, too; anything else was a refusal.
  void doubt(int32_t result) {
    if (doubted_ && (doubted_at_ == last_ || *doubted_ != result)) refuse_table(result);
    doubted_ = result;
    doubted_at_ = last_;
  }

  // Where the platform cannot tell, the chip has to say the same again, and has
  // to find the last entry once more.
  bool is_end() const {
    if (known_.find() != nullptr) return ask(known_, what_, unit_, last_ + 1).index < 0;
    Entry entry = {};
    int32_t index = last_;
    if (step_(&index, &entry) == 0) return false;
    index = before_last_;
    return last_ == kBeforeFirst || (step_(&index, &entry) == 0 && index == last_);
  }

  const char *name_;
  Step step_;
  Known known_;
  uint32_t unit_;
  std::string what_;
  int32_t last_ = kBeforeFirst;
  int32_t before_last_ = kBeforeFirst;
  std::optional<int32_t> doubted_;
  int32_t doubted_at_ = kBeforeFirst;
};

template <typename Record, typename Step>
auto walk_of(const char *name, Step step, OptionalCall<int32_t(uint32_t, int32_t, Record *)> known,
             uint32_t unit, const char *what) {
  return TableWalk<Record, Step>(name, step, known, unit, what).entries();
}

void remove_stale(std::vector<chip_l2_ucast_entry> &entries, const std::set<int64_t> &vlans) {
  std::erase_if(entries, [&](const chip_l2_ucast_entry &entry) {
    if (vlans.contains(entry.vid)) return false;
    perform(SWSH_CALL(user_mac_addr_delete), entry_text(entry.mac, entry.vid), kLead, entry.mac,
            entry.vid);
    return true;
  });
}

}  // namespace

std::vector<chip_l2_ucast_entry> read_address_entries() {
  constexpr auto kNext = SWSH_CALL(rtk_l2_nextValidAddr_get);
  constexpr uint32_t kUnit = 0;
  const auto step = [&](int32_t *index, chip_l2_ucast_entry *entry) {
    return kNext.get()(kUnit, index, kStaticToo, entry);
  };
  auto entries =
      walk_of(kNext.name, step, SWSH_OPTIONAL_CALL(swctl_platform_l2_next), kUnit, "addresses");
  for (chip_l2_ucast_entry &entry : entries)
    if ((entry.state & USER_L2_STATE_VIOLATION) != 0) entry.flags |= L2_FLAG_VIOLATION;
  const std::optional<std::set<int64_t>> vlans = vlans_there(kUnit);
  if (vlans) remove_stale(entries, *vlans);
  return entries;
}

std::vector<chip_l2_mcast_entry> read_groups(uint32_t unit) {
  constexpr auto kNext = SWSH_CALL(rtk_l2_nextValidMcastAddr_get);
  const auto step = [&](int32_t *index, chip_l2_mcast_entry *entry) {
    return kNext.get()(unit, index, entry);
  };
  return walk_of(kNext.name, step, SWSH_OPTIONAL_CALL(swctl_platform_l2_mcast_next), unit,
                 "groups");
}

}  // namespace swsh
