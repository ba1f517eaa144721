// SPDX-License-Identifier: MIT
#include "lab_host.h"

#include <arpa/inet.h>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <net/if.h>
#include <net/if_arp.h>
#include <sys/ioctl.h>
#include <sys/socket.h>

#include "spaces.h"
#include "usage_error.h"

namespace vchipctl {
namespace {

constexpr const char *kHostInterface = "eth0";
constexpr const char *kHostLoop = "lo";
constexpr char kDone = 'y';
constexpr char kNotDone = 'n';

// Settings of one interface of the network that this process is in.
class InterfaceSettings {
 public:
  explicit InterfaceSettings(const char *name)
      : socket_(socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0)) {
    strncpy(request_.ifr_name, name, IFNAMSIZ - 1);
  }
  void set_mac(int32_t last) {
    request_.ifr_hwaddr = {};
    request_.ifr_hwaddr.sa_family = ARPHRD_ETHER;
    request_.ifr_hwaddr.sa_data[0] = 2;
    request_.ifr_hwaddr.sa_data[5] = static_cast<char>(last);
    ask(SIOCSIFHWADDR);
  }
  void set_address(unsigned long what, const std::string &address) {
    sockaddr_in internet = {};
    internet.sin_family = AF_INET;
    inet_pton(AF_INET, address.c_str(), &internet.sin_addr);
    memcpy(&request_.ifr_addr, &internet, sizeof internet);
    ask(what);
  }
  void set_up() {
    ask(SIOCGIFFLAGS);
    request_.ifr_flags = static_cast<short>(request_.ifr_flags | IFF_UP);
    ask(SIOCSIFFLAGS);
  }

 private:
  void ask(unsigned long what) {
    if (ioctl(socket_.get(), what, &request_) != 0)
      throw Refused(std::string(request_.ifr_name) + ": " + strerror(errno));
  }

  os::Descriptor socket_;
  ifreq request_ = {};
};

void set_up_network(int32_t interface) {
  InterfaceSettings(kHostLoop).set_up();
  InterfaceSettings settings(kHostInterface);
  settings.set_mac(interface);
  settings.set_address(SIOCSIFADDR, LabHost::address(interface));
  settings.set_address(SIOCSIFNETMASK, "255.255.255.0");
  settings.set_up();
}

bool tell(int control, char word) {
  return write(control, &word, 1) == 1;
}

char hear_word(int control) {
  char word = 0;
  while (read(control, &word, 1) < 0 && errno == EINTR) {
  }
  return word;
}

// Says when a thing is done, or why it cannot be.
template <typename Thing>
bool attempt(int control, Thing thing) {
  try {
    thing();
    return tell(control, kDone);
  } catch (const Refused &refusal) {
    fprintf(stderr, "vchipctl: %s\n", refusal.what());
    tell(control, kNotDone);
    return false;
  }
}

// The process that holds the host: until the lab, at the other end, is gone.
int hold(int control, int32_t interface) {
  if (!attempt(control, [&] { leave_for_further_space(LabHost::name(interface)); })) return 1;
  if (hear_word(control) != kDone) return 0;
  if (!attempt(control, [&] { set_up_network(interface); })) return 1;
  hear_word(control);
  return 0;
}

void expect_done_by(int control, const std::string &host) {
  if (hear_word(control) != kDone) throw Refused("the lab has no " + host);
}

}  // namespace

std::string LabHost::name(int32_t interface) {
  return "host" + std::to_string(interface);
}

std::string LabHost::address(int32_t interface) {
  return "10.0.0." + std::to_string(interface);
}

LabHost::LabHost(int32_t interface) {
  int pair[2] = {-1, -1};
  if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, pair) != 0)
    throw Refused(std::string("socketpair: ") + strerror(errno));
  control_ = os::Descriptor(pair[0]);
  const os::Descriptor theirs(pair[1]);
  holder_ = Child([&] {
    control_.reset();
    return hold(pair[1], interface);
  });
  expect_done_by(control_.get(), name(interface));
}

std::string LabHost::wire_end() const {
  return std::string(kHostInterface) + "@/proc/" + std::to_string(process()) + "/ns/net";
}

void LabHost::configure() {
  tell(control_.get(), kDone);
  expect_done_by(control_.get(), kHostInterface);
}

}  // namespace vchipctl
