// SPDX-License-Identifier: MIT
#include "tap.h"

#include <fcntl.h>
#include <linux/if.h>
#include <linux/if_tun.h>
#include <sys/ioctl.h>

#include "fault.h"
#include "links.h"

namespace vchipd {
namespace {

constexpr const char *kDevice = "/dev/net/tun";
// Room for a frame of any length, and one byte by which a longer one shows.
constexpr size_t kFrameRoom = VCHIP_FRAME_MAX + 1;
// The bytes that wait for the chip at a time.
constexpr size_t kMemory = 256 * 1024;

}  // namespace

void Tap::open() {
  descriptor_ = os::Descriptor(::open(kDevice, O_RDWR | O_NONBLOCK | O_CLOEXEC));
  if (!descriptor_ && errno == EACCES)
    throw Fault(wire_ + ": no right to open " + kDevice +
                "; run as root, or use veth: inside 'unshare -Urn', or unix:, tcp: or pcap:");
  if (!descriptor_) throw system_fault(wire_ + ": " + kDevice);
  ifreq request = {};
  name_.copy(request.ifr_name, IFNAMSIZ - 1);
  request.ifr_flags = IFF_TAP | IFF_NO_PI;
  if (ioctl(descriptor_.get(), TUNSETIFF, &request) != 0) {
    if (errno == EPERM) throw no_right(wire_, "make an interface");
    if (errno == EBUSY) throw Fault(wire_ + ": another process has the interface " + name_);
    if (errno == EINVAL)
      throw Fault(wire_ + ": there is an interface " + name_ + ", and it is no tap");
    throw system_fault(wire_);
  }
  index_ = find_link(name_).value_or(Link{}).index;
  memory_.resize(kMemory);
}

bool Tap::is_up() const {
  return (find_link(name_).value_or(Link{}).flags & IFF_UP) != 0;
}

void Tap::show_carrier(bool on) {
  int carrier = on ? 1 : 0;
  if (carrier == carrier_) return;
  carrier_ = carrier;
  ioctl(descriptor_.get(), TUNSETCARRIER, &carrier);
}

bool Tap::receive(Arrivals &arrivals, uint32_t most, WireCounts &counts) {
  size_t used = 0;
  while (arrivals.size() < most && used + kFrameRoom <= memory_.size()) {
    const ssize_t length = read(descriptor_.get(), memory_.data() + used, kFrameRoom);
    if (length < 0) return false;
    if (!is_frame_length(static_cast<uint64_t>(length))) {
      ++counts.unusable;
      continue;
    }
    arrivals.push_back({memory_.data() + used, static_cast<uint32_t>(length), 0});
    used += static_cast<size_t>(length);
    ++counts.received;
  }
  return true;
}

void Tap::send(const vchip_frame_t *frames, uint32_t count, WireCounts &counts) {
  for (uint32_t place = 0; place < count; ++place) {
    const ssize_t written = write(descriptor_.get(), frames[place].bytes, frames[place].length);
    ++(written == static_cast<ssize_t>(frames[place].length) ? counts.sent : counts.lost);
  }
}

}  // namespace vchipd
