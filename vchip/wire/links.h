// SPDX-License-Identifier: MIT
// Interfaces of Linux: made, looked at, changed and removed.
#ifndef VCHIPD_LINKS_H
#define VCHIPD_LINKS_H

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "os/descriptor.h"

namespace vchipd {

class Loop;

struct Link {
  int index;
  uint32_t flags;     // IFF_...
  std::string kind;   // "veth"; empty for hardware
  std::string alias;  // a text for people
  uint32_t mtu;
};

// The longest name of an interface.
inline constexpr size_t kLinkNameMax = 15;
// Throws WrongWords, with `wire` in front, for a name that no interface can have.
void expect_link_name(const std::string &wire, const std::string &name);

// Nothing if there is none of that name.
std::optional<Link> find_link(const std::string &name);

// Makes a pair of interfaces. Throws Fault; its text begins with `wire`.
void make_veth(const std::string &wire, const std::string &name, const std::string &peer,
               uint32_t mtu);
void remove_link(int index);
void set_alias(int index, const std::string &alias);
void set_up(int index, bool up);
// The system's own protocols leave the interface alone.
void make_silent(int index);
// Into the network namespace of a name, a path or a process, with a name there.
void move_link(const std::string &wire, int index, const std::string &space,
               const std::string &name);

// The sender's interface leaves checksums and segments to nobody: what it sends are
// frames as they would be on a cable.
void stop_sending_offloads(const std::string &name);
// Frames that were received apart stay apart.
void stop_receiving_offloads(const std::string &name);

// Tells of the changes of one interface: its flags, and 0 when it is gone.
class LinkMonitor {
 public:
  LinkMonitor(Loop &loop, int index, std::function<void(uint32_t flags)> changed);
  ~LinkMonitor();
  LinkMonitor(const LinkMonitor &) = delete;
  LinkMonitor &operator=(const LinkMonitor &) = delete;

 private:
  void read_changes();

  Loop &loop_;
  const int index_;
  const std::function<void(uint32_t)> changed_;
  os::Descriptor netlink_;
};

}  // namespace vchipd

#endif
