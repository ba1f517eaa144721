// SPDX-License-Identifier: MIT
#include "chip/vlans.h"

#include <swctl/platform/vlan_read.h>
#include <swctl/port.h>
#include <swctl/vlan.h>

#include "chip/absent.h"
#include "chip/call.h"
#include "chip/limits.h"
#include "chip/optional_call.h"
#include "chip/ports.h"
#include "number_list.h"

namespace swsh {
namespace {

constexpr uint32_t kWordBits = 32;
constexpr auto kNextVlan = SWSH_OPTIONAL_CALL(swctl_platform_vlan_next);
constexpr auto kGet = SWSH_CALL(user_vlan_port_get);

// Reads VLANs that may not be there. The library answers alike for a VLAN that
// is not there and for a chip that refuses. Where the platform cannot say which
// it was, all VLANs that are not there have to answer alike, now and at the end,
// when one that is there has to be readable still.
class VlanReader {
 public:
  explicit VlanReader(const Context &context)
      : context_(context), usual_(read_default()), can_tell_(kNextVlan.find() != nullptr) {}

  // None if the chip has no such VLAN.
  std::optional<Vlan> read(int64_t vid) {
    if (can_tell_ && !is_there(vid)) return std::nullopt;
    Vlan vlan = {.vid = vid};
    const int32_t result = get(vlan);
    if (result == 0) return vlan;
    if (can_tell_ || (absent_.is_known() && absent_.result != result)) refuse_to_read(vid, result);
    if (!absent_.is_known()) absent_ = {vid, result};
    return std::nullopt;
  }

  // After the last one was read.
  void finish() {
    if (can_tell_ || !absent_.is_known()) return;
    Vlan again = {.vid = absent_.vid};
    Vlan usual = {.vid = usual_};
    if (get(again) != absent_.result || get(usual) != 0)
      refuse_to_read(absent_.vid, absent_.result);
  }

 private:
  // A VLAN that is not there, and what the library answers then.
  struct Absent {
    int64_t vid = 0;
    int32_t result = 0;

    bool is_known() const { return vid != 0; }
  };

  // Asked once for VLANs that follow each other.
  bool is_there(int64_t vid) {
    if (vid < asked_ || vid > next_) {
      next_ = ask(kNextVlan, vlan_text(vid), context_.unit, static_cast<int32_t>(vid)).index;
      if (next_ < vid) next_ = kLastVlanId;
      asked_ = vid;
    }
    return vid == next_;
  }

  // A unit that is not there is refused as such.
  int64_t read_default() const {
    return ask(SWSH_CALL(user_vlan_default_get), context_, kLead, context_.unit);
  }

  int32_t get(Vlan &vlan) const {
    user_pbmp_t member = {};
    user_pbmp_t untagged = {};
    const int32_t result =
        kGet.get()(kLead, context_.unit, static_cast<uint32_t>(vlan.vid), &member, &untagged);
    vlan.member = member.word[0];
    vlan.untag = untagged.word[0];
    return result;
  }

  [[noreturn]] static void refuse_to_read(int64_t vid, int32_t result) {
    refuse({kGet.name, result}, subject_of(vlan_text(vid)));
  }

  const Context &context_;
  int64_t usual_;      // the default VLAN, which is to be had
  bool can_tell_;      // whether the platform says which VLANs there are
  int64_t asked_ = 0;  // from this one on,
  int64_t next_ = -1;  // this is the first that is there
  Absent absent_;      // the first one, where the platform cannot tell
};

}  // namespace

std::string vlan_text(int64_t vid) {
  return "VLAN " + std::to_string(vid);
}

std::optional<std::set<int64_t>> vlans_there(uint32_t unit) {
  if (kNextVlan.find() == nullptr) return std::nullopt;
  std::set<int64_t> there;
  each_record(kNextVlan, "VLAN", unit, 0,
              [&](const swctl_platform_vlan &vlan) { there.insert(vlan.index); });
  return there;
}

std::vector<Vlan> read_vlans(const Context &context) {
  VlanReader reader(context);
  std::vector<Vlan> all;
  for (int64_t vid = kFirstVlan; vid <= kLastVlan; ++vid) {
    const std::optional<Vlan> vlan = reader.read(vid);
    if (vlan) all.push_back(*vlan);
  }
  reader.finish();
  return all;
}

std::vector<Vlan> vlans_of(const Context &context, const std::vector<int64_t> &vids) {
  VlanReader reader(context);
  std::vector<Vlan> all;
  std::vector<int64_t> absent;
  for (const int64_t vid : vids) {
    const std::optional<Vlan> vlan = reader.read(vid);
    if (vlan) {
      all.push_back(*vlan);
    } else {
      absent.push_back(vid);
    }
  }
  reader.finish();
  if (!absent.empty()) throw there_is_no("VLAN", number_list_text(absent));
  return all;
}

void write_vlan(const Context &context, const Vlan &vlan) {
  const user_pbmp_t member = {{vlan.member}};
  const user_pbmp_t untagged = {{vlan.untag}};
  perform(SWSH_CALL(user_vlan_port_set), vlan_text(vlan.vid), kLead, context.unit,
          static_cast<uint32_t>(vlan.vid), &member, &untagged);
}

int64_t read_pvid(const Context &context, int64_t interface) {
  return read_port(context, port_of(interface), SWSH_CALL(user_port_untagged_vlan_get));
}

user_pbmp_t interface_bitmap(const std::vector<int64_t> &interfaces) {
  user_pbmp_t map = {};
  for (const Port &port : ports_of(interfaces)) {
    const auto bit = static_cast<uint32_t>(port.interface);
    map.word[bit / kWordBits] |= 1u << (bit % kWordBits);
  }
  return map;
}

}  // namespace swsh
