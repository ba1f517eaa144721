// SPDX-License-Identifier: MIT
#include "packet_wire.h"

#include <linux/if.h>
#include <sys/epoll.h>

#include "fault.h"
#include "links.h"
#include "loop.h"
#include "packet_socket.h"

namespace vchipd {
namespace {

// The longest frame without its link header.
constexpr uint32_t kLongestMtu = VCHIP_FRAME_MAX - 14;
constexpr const char *kMark = "vchipd ";

class PacketWire : public Wire {
 public:
  PacketWire(std::string word, std::string name) : word_(std::move(word)), name_(std::move(name)) {}
  ~PacketWire() override { announce(false); }

  void start(Loop &loop, Socket &socket) override;
  bool receive(Arrivals &arrivals, uint32_t most) override {
    return frames_.receive(arrivals, most, counts_);
  }
  bool shows_frames(uint32_t count) const override { return frames_.has_frames(count); }
  int processor() const override { return frames_.processor(); }
  void announce(bool on) override;
  void arrived() override { frames_.arrived(); }
  uint32_t lend(vchip_frame_t *places) override { return frames_.lend(places); }
  void send(const vchip_frame_t *frames, uint32_t count) override {
    if (!gone_) return frames_.send(frames, count, counts_);
    counts_.lost += count;
  }
  const WireCounts &counts() override {
    counts_.missed += frames_.take_overflow();
    return counts_;
  }
  std::string note() const override;

 protected:
  // The interface is there when this returns.
  virtual Link prepare() = 0;
  // Whether it was made for the chip, so that nobody else has a use for its frames.
  virtual bool is_own() const { return false; }
  const std::string &word() const { return word_; }
  const std::string &name() const { return name_; }

 private:
  void changed(uint32_t flags);

  const std::string word_;
  const std::string name_;
  PacketSocket frames_;
  Loop *loop_ = nullptr;
  Socket *socket_ = nullptr;
  Link link_ = {};
  bool announces_ = false;
  std::unique_ptr<LinkMonitor> monitor_;
  bool gone_ = false;
};

bool has_carrier(uint32_t flags) {
  return (flags & IFF_UP) != 0 && (flags & IFF_LOWER_UP) != 0;
}

void PacketWire::start(Loop &loop, Socket &socket) {
  link_ = prepare();
  monitor_ =
      std::make_unique<LinkMonitor>(loop, link_.index, [this](uint32_t flags) { changed(flags); });
  if (link_.kind == "veth") {
    frames_.open_pair(word_, link_.index, is_own());
  } else {
    frames_.open(word_, link_.index);
  }
  loop_ = &loop;
  socket_ = &socket;
  announce(true);
  changed(find_link(name_).value_or(Link{}).flags);
}

void PacketWire::announce(bool on) {
  if (on) frames_.arm();
  if (on == announces_ || loop_ == nullptr) return;
  announces_ = on;
  if (on) {
    loop_->watch(frames_.descriptor(), EPOLLIN, [this](uint32_t) { socket_->frames_came(); });
  } else {
    loop_->forget(frames_.descriptor());
  }
}

// Only a pair's other end is known to take a frame, or to drop it, while it is sent: a
// network card may keep it for as long as it likes.
void PacketWire::changed(uint32_t flags) {
  if (flags == 0) gone_ = true;
  const bool on = has_carrier(flags);
  if (on && link_.kind == "veth") frames_.send_by_xdp(link_.index, link_.mtu);
  socket_->carrier_is(on);
}

std::string PacketWire::note() const {
  if (gone_) return kGoneNote;
  if (!frames_.xdp_refusal().empty()) return "sends without AF_XDP: " + frames_.xdp_refusal();
  return frames_.bpf_refusal().empty() ? "" : "receives without BPF: " + frames_.bpf_refusal();
}

class NetdevWire : public PacketWire {
 public:
  using PacketWire::PacketWire;

 protected:
  Link prepare() override {
    const std::optional<Link> link = find_link(name());
    if (!link) throw Fault(word() + ": there is no interface " + name());
    stop_receiving_offloads(name());
    return *link;
  }
};

class VethWire : public PacketWire {
 public:
  VethWire(std::string wire, std::string name, std::string peer, std::string space,
           const Place &place)
      : PacketWire(std::move(wire), std::move(name)),
        peer_(std::move(peer)),
        space_(std::move(space)),
        mark_(kMark + place.image + " unit " + std::to_string(place.unit)) {}
  ~VethWire() override {
    if (made_ != 0) remove_link(made_);
  }

 protected:
  Link prepare() override;
  bool is_own() const override { return made_ != 0; }

 private:
  void make();

  const std::string peer_;
  const std::string space_;
  const std::string mark_;
  int made_ = 0;  // the index of the interface that is removed at the end
};

// The host's end gets its offloads switched off before it is where they cannot be
// reached.
void VethWire::make() {
  const std::string peer = space_.empty() ? peer_ : name() + ".";
  expect_link_name(word(), peer);
  make_veth(word(), name(), peer, kLongestMtu);
  const Link link = find_link(name()).value_or(Link{});
  made_ = link.index;
  set_alias(link.index, mark_);
  make_silent(link.index);
  stop_sending_offloads(peer);
  if (!space_.empty()) move_link(word(), find_link(peer).value_or(Link{}).index, space_, peer_);
}

// One that a killed process has left is used again: the host's end may be in a
// namespace and have addresses.
Link VethWire::prepare() {
  std::optional<Link> link = find_link(name());
  if (link && link->kind != "veth")
    throw Fault(word() + ": there is an interface " + name() + " already, which is no veth" +
                "; netdev:" + name() + " would use it as it is");
  if (!link) {
    make();
  } else if (link->alias.starts_with(kMark)) {
    made_ = link->index;
  }
  link = find_link(name());
  if (!link) throw Fault(word() + ": the interface " + name() + " is gone");
  set_up(link->index, true);
  return *link;
}

// "PEER@SPACE" or "PEER".
std::string take_space(std::string &peer) {
  const size_t at = peer.find('@');
  if (at == peer.npos) return "";
  std::string space = peer.substr(at + 1);
  peer.resize(at);
  return space;
}

}  // namespace

std::unique_ptr<Wire> make_veth_wire(const std::string &rest, const Place &place) {
  const std::string word = "veth:" + rest;
  const size_t colon = rest.find(':');
  std::string name = rest.substr(0, colon);
  std::string peer = colon == rest.npos ? name + "h" : rest.substr(colon + 1);
  const std::string space = take_space(peer);
  expect_link_name(word, name);
  expect_link_name(word, peer);
  return std::make_unique<VethWire>(word, name, peer, space, place);
}

std::unique_ptr<Wire> make_netdev_wire(const std::string &rest, const Place &) {
  expect_link_name("netdev:" + rest, rest);
  return std::make_unique<NetdevWire>("netdev:" + rest, rest);
}

}  // namespace vchipd
