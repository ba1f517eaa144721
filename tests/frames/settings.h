// SPDX-License-Identifier: MIT
// The calls that set something and change what becomes of frames: each with
// frames that go another way because of it.
#ifndef SWCTL_TESTS_FRAMES_SETTINGS_H
#define SWCTL_TESTS_FRAMES_SETTINGS_H

#include <swctl/platform/sdk.h>

#include <vector>

#include "switch.h"

namespace frames {

struct Setting {
  using Call = int32_t (*)();
  using Step = void (*)();
  Setting(const char *name, Call makes, Step before, Step after)
      : call(name), set(makes), prepare(before), traffic(after) {}

  const char *call;
  Call set;
  Step prepare;  // comes before it; null if a fresh chip will do
  Step traffic;  // comes after it
};

// A setting that does what it is named for.
#define SWCTL_SETTING(call, arguments, prepare, traffic) \
  Setting(                                               \
      #call, [] { return call arguments; }, prepare, traffic)

// By what they are about.
namespace port_setting {
std::vector<Setting> all();
}
namespace vlan_setting {
std::vector<Setting> all();
}
namespace forward_setting {
std::vector<Setting> all();
}
namespace trap_setting {
std::vector<Setting> all();
}
namespace qos_setting {
std::vector<Setting> all();
}
namespace rate_setting {
std::vector<Setting> all();
}
namespace rule_setting {
std::vector<Setting> all();
}

// A call of a preparation, which must succeed.
inline void done(int32_t result) {
  ASSERT_EQ(result, 0);
}

inline void send(int32_t port, const Bytes &frame) {
  Switch::arrive(port, frame);
}
// A broadcast comes in by port 1.
inline void flood() {
  send(1, plain(kBroadcast, station(1)));
}
inline void flood_tagged() {
  send(1, Maker(kBroadcast, station(1)).tag(20).type(0x88b5).bytes());
}
// To station 5, which is on port 5 if it is known.
inline void to_station() {
  send(1, plain(station(5), station(1)));
}
inline void from_station() {
  send(5, plain(kBroadcast, station(5)));
  Switch::left();
}

// VLAN 20 with ports as tagged members.
inline void make_vlan(uint32_t members, uint32_t untagged = 0) {
  done(rtk_vlan_create(0, 20));
  done(rtk_vlan_port_set(0, 20, &members, &untagged));
}

}  // namespace frames

#endif
