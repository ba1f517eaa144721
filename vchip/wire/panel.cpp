// SPDX-License-Identifier: MIT
#include "panel.h"

#include <swctl-vchip/vchip.h>
#include <swctl-vchip/view.h>

#include <algorithm>
#include <sched.h>
#include <sys/prctl.h>
#include <time.h>

#include "fault.h"
#include "wire_words.h"

namespace vchipd {
namespace {

constexpr uint64_t kNever = UINT64_MAX;
// Addresses age and links change without a frame: the chip is looked at so often.
constexpr uint64_t kIdleLook = 1'000'000'000;
// While frames wait in the chip, for a setting of another process may let them go.
constexpr uint64_t kWaitingLook = 10'000'000;
// Links are looked at no more often than this.
constexpr uint64_t kLinkLook = 10'000'000;
constexpr size_t kSlotRoom = 2048;
// So often wires that show their frames are served before the system is asked.
constexpr uint32_t kTurnsOfRings = 16;
// From so many frames in such a time on frames are gathered, for so long.
constexpr uint64_t kManyFrames = 40;
constexpr uint64_t kWindow = 1'000'000;
constexpr uint64_t kRest = 40'000;
// So often at most this process leaves the processor of a sender.
constexpr uint64_t kMoveEvery = 10'000'000;
// So many need no rest.
constexpr uint32_t kGathered = 64;

void rest(uint64_t nanoseconds) {
  const timespec time = {0, static_cast<long>(nanoseconds)};
  clock_nanosleep(CLOCK_MONOTONIC, 0, &time, nullptr);
}

// To another one, if there is one; it may come back afterwards.
void leave_processor(int processor) {
  cpu_set_t all;
  if (sched_getaffinity(0, sizeof all, &all) != 0) return;
  cpu_set_t others = all;
  CPU_CLR(processor, &others);
  if (CPU_COUNT(&others) == 0 || sched_setaffinity(0, sizeof others, &others) != 0) return;
  sched_setaffinity(0, sizeof all, &all);
}

}  // namespace

// A wire in its port.
class Panel::Plugged : public Socket {
 public:
  Plugged(Panel &panel, int32_t port, std::string word)
      : panel_(panel), port_(port), word_(std::move(word)) {}
  ~Plugged() override {
    wire_.reset();
    carrier_is(false);
  }

  void start() {
    wire_ = make_wire(word_, {panel_.image_, panel_.unit_, port_});
    wire_->start(panel_.loop_, *this);
  }
  void frames_came() override {
    ready = true;
    panel_.ready_ = true;
  }
  void carrier_is(bool on) override {
    if (on == carrier_) return;
    carrier_ = on;
    if (port_ == VCHIP_CPU_PORT) return;
    if (on) {
      plug();
    } else {
      vchip_cable_pull(panel_.unit_, port_);
    }
  }
  void partner_is_new() override {
    if (carrier_ && port_ != VCHIP_CPU_PORT) plug();
  }
  bool is_due() const {
    const std::optional<uint64_t> time = wire_->next_time();
    return ready || (time && *time <= panel_.clock_.now());
  }
  Wire &wire() const { return *wire_; }
  int32_t port() const { return port_; }
  Row row() const { return {port_, word_, carrier_, wire_->note(), wire_->counts()}; }

  bool ready = false;
  uint64_t came = 0;  // frames in this window of the rate

 private:
  void plug() {
    const vchip_partner_t partner = wire_->partner();
    vchip_cable_plug(panel_.unit_, port_, &partner);
  }

  Panel &panel_;
  const int32_t port_;
  const std::string word_;
  std::unique_ptr<Wire> wire_;
  bool carrier_ = false;
};

// Places for frames that leave the chip: many of the usual size, and one of the
// largest.
struct Panel::Outbox {
  std::vector<uint8_t> memory;
  std::array<vchip_frame_t, kFramesAtATime> frames = {};
  std::array<vchip_frame_t, kFramesAtATime> lent = {};  // places of a wire
  std::vector<uint8_t> large_memory;
  vchip_frame_t large = {};

  Outbox()
      : memory(kFramesAtATime * (kHeadroom + kSlotRoom)),
        large_memory(kHeadroom + VCHIP_FRAME_MAX) {
    for (size_t place = 0; place < frames.size(); ++place) {
      frames[place].bytes = memory.data() + place * (kHeadroom + kSlotRoom) + kHeadroom;
      frames[place].room = kSlotRoom;
    }
    large.bytes = large_memory.data() + kHeadroom;
    large.room = VCHIP_FRAME_MAX;
  }
};

Panel::Panel(Loop &loop, std::string image, uint32_t unit, bool virtual_time)
    : loop_(loop),
      image_(std::move(image)),
      unit_(unit),
      clock_(virtual_time),
      outbox_(std::make_unique<Outbox>()) {
  arrivals_.reserve(kFramesAtATime);
  // Else the system makes a short rest longer.
  prctl(PR_SET_TIMERSLACK, 1000);
}

Panel::~Panel() = default;

void Panel::plug(int32_t port, const std::string &word) {
  std::unique_ptr<Plugged> &place = plugged_[static_cast<size_t>(port)];
  if (place) throw Fault("port " + port_name(port) + " has a wire already: " + place->row().word);
  auto plugged = std::make_unique<Plugged>(*this, port, word);
  plugged->start();
  place = std::move(plugged);
}

void Panel::unplug(int32_t port) {
  plugged_[static_cast<size_t>(port)].reset();
}

void Panel::take_in(Plugged &plugged) {
  arrivals_.clear();
  plugged.ready = plugged.wire().receive(arrivals_, kFramesAtATime);
  ready_ = ready_ || plugged.ready;
  if (!arrivals_.empty()) let_arrive(plugged);
  plugged.wire().arrived();
}

void Panel::let_arrive(Plugged &plugged) {
  came_ += arrivals_.size();
  plugged.came += arrivals_.size();
  if (observer_ != nullptr) observer_->arriving(arrivals_);
  plugged.wire().deliver(unit_, plugged.port(), arrivals_);
  if (observer_ != nullptr) observer_->arrived(plugged.port(), arrivals_);
  give_out();
  vchip_frames_keep(unit_);
}

bool Panel::look_at_rings() {
  for (const auto &plugged : plugged_)
    if (plugged && plugged->wire().shows_frames(1)) plugged->frames_came();
  return ready_;
}

bool Panel::shows_many() const {
  return std::any_of(plugged_.begin(), plugged_.end(), [](const auto &plugged) {
    return plugged && plugged->wire().shows_frames(kGathered);
  });
}

// At a high rate a short rest gathers frames: a few at a time cost more, for the chip as
// for the sender, who then writes where the chip is reading. The wires that show no frames
// have a turn between.
bool Panel::shows_frames() {
  if (came_ == 0 || ++turns_ >= kTurnsOfRings) return false;
  if (is_high_rate_ && !ready_ && !shows_many()) rest(kRest);
  return look_at_rings();
}

// Over a short time, for the frames of one turn are few when turns are fast.
void Panel::weigh_rate() {
  window_came_ += came_;
  const uint64_t now = monotonic_now();
  if (now - window_begin_ < kWindow) return;
  is_high_rate_ = window_came_ * kWindow >= kManyFrames * (now - window_begin_);
  if (is_high_rate_ && now >= next_move_) make_way(now);
  window_came_ = 0;
  window_begin_ = now;
  for (const auto &plugged : plugged_)
    if (plugged) plugged->came = 0;
}

// A sender wakes this process where it runs itself, and there the system may leave both by
// turns although another processor is free.
void Panel::make_way(uint64_t now) {
  const int own = sched_getcpu();
  uint64_t shared = 0;
  for (const auto &plugged : plugged_)
    if (plugged && plugged->wire().processor() == own) shared += plugged->came;
  if (shared * 2 <= window_came_) return;
  next_move_ = now + kMoveEvery;
  leave_processor(own);
}

void Panel::let_announce(bool on) {
  if (!on && !announce_) return;
  announce_ = on;
  for (const auto &plugged : plugged_)
    if (plugged) plugged->wire().announce(on);
}

// Between turns of the rings the system is only asked; else it has to tell of frames.
void Panel::wait() {
  const bool is_between = came_ != 0 && turns_ >= kTurnsOfRings;
  turns_ = 0;
  if (is_between) {
    look_at_rings();
    loop_.wait(0);
  } else {
    let_announce(true);
    look_at_rings();
    loop_.wait(time_to_wait());
  }
}

void Panel::turn() {
  if (!shows_frames()) wait();
  serve();
  weigh_rate();
  if (is_high_rate_) let_announce(false);
}

void Panel::serve() {
  clock_.follow();
  came_ = 0;
  ready_ = false;
  for (const auto &plugged : plugged_) {
    if (!plugged || !plugged->is_due()) continue;
    take_in(*plugged);
  }
  if (came_ == 0) give_out();
}

void Panel::give_out(int32_t port) {
  const auto &plugged = plugged_[static_cast<size_t>(port)];
  const auto send = [&](const vchip_frame_t *frames, uint32_t count) {
    if (observer_ != nullptr) observer_->left(port, frames, count);
    if (plugged) plugged->wire().send(frames, count);
  };
  for (;;) {
    const uint32_t lent = plugged ? plugged->wire().lend(outbox_->lent.data()) : 0;
    vchip_frame_t *places = lent != 0 ? outbox_->lent.data() : outbox_->frames.data();
    const uint32_t room = lent != 0 ? lent : kFramesAtATime;
    const int32_t count = vchip_frames_leave(unit_, port, places, room);
    if (count > 0) send(places, static_cast<uint32_t>(count));
    if (count == static_cast<int32_t>(room)) continue;
    if (vchip_frames_leave(unit_, port, &outbox_->large, 1) != 1) return;
    send(&outbox_->large, 1);
  }
}

void Panel::give_out() {
  const uint32_t ready = vchip_frames_ready(unit_);
  for (int32_t port = 0; port < VCHIP_PORTS; ++port)
    if ((ready >> port & 1u) != 0) give_out(port);
}

uint64_t Panel::next_arrival() const {
  uint64_t next = kNever;
  for (const auto &plugged : plugged_)
    if (plugged) next = std::min(next, plugged->wire().next_time().value_or(kNever));
  return next;
}

// A virtual clock jumps to the next frame of a capture, or to what still waits when
// the captures are over.
uint64_t Panel::time_to_wait() {
  if (ready_) return 0;
  show_links();
  const uint64_t departure = vchip_clock_next();
  const uint64_t arrival = next_arrival();
  const uint64_t next = std::min(departure, arrival);
  if (clock_.is_virtual()) {
    if (next == kNever || (arrival == kNever && !is_over())) return kIdleLook;
    clock_.advance_to(next);
    return 0;
  }
  const uint64_t look = departure == kNever ? kIdleLook : kWaitingLook;
  return next <= clock_.now() ? 0 : std::min(next - clock_.now(), look);
}

// What the links are at the chip's side, for wires that can show it.
void Panel::show_links() {
  const uint64_t now = monotonic_now();
  if (now < next_look_) return;
  next_look_ = now + kLinkLook;
  // A reset pulls every cable; those of the wires are still there.
  if (clock_.was_reset())
    for (const auto &plugged : plugged_)
      if (plugged) plugged->partner_is_new();
  uint32_t up = 0;
  for (int32_t port = 0; port < VCHIP_CPU_PORT; ++port)
    up |= (vchip::port(unit_, port).link ? 1u : 0u) << port;
  for (const auto &plugged : plugged_)
    if (plugged) plugged->wire().links_are(up);
}

bool Panel::is_over() const {
  const auto is_over = [](const auto &plugged) { return !plugged || plugged->wire().is_over(); };
  return std::all_of(plugged_.begin(), plugged_.end(), is_over);
}

bool Panel::is_finished() const {
  return is_over() && vchip_clock_next() == kNever;
}

bool Panel::has_backlog() const {
  return std::any_of(plugged_.begin(), plugged_.end(),
                     [](const auto &plugged) { return plugged && plugged->wire().has_backlog(); });
}

void Panel::drain(uint64_t nanoseconds) {
  const uint64_t end = monotonic_now() + nanoseconds;
  let_announce(true);
  look_at_rings();
  for (;;) {
    serve();
    const bool waits = vchip_clock_next() != kNever && !clock_.is_virtual();
    if ((!ready_ && !waits && !has_backlog()) || monotonic_now() >= end) return;
    loop_.wait(ready_ ? 0 : 1'000'000);
  }
}

std::vector<Panel::Row> Panel::rows() const {
  std::vector<Row> rows;
  for (const auto &plugged : plugged_)
    if (plugged) rows.push_back(plugged->row());
  return rows;
}

}  // namespace vchipd
