// SPDX-License-Identifier: MIT
#include "pipeline/run.h"

#include <algorithm>
#include <bit>

#include "pipeline/classify.h"
#include "pipeline/edit.h"
#include "pipeline/effects.h"
#include "pipeline/pipeline.h"
#include "pipeline/words.h"

namespace vchip {
namespace {

constexpr uint32_t kMirrorQueue = 0;
constexpr uint32_t kProcessorQueue = 7;

void compile(State &state, Unit &unit, UnitTraffic &traffic) {
  if (traffic.revision == state.header.revision && traffic.revision != 0) return;
  Compiled &tables = traffic.tables;
  compile_ports(tables, unit);
  compile_groups(tables, unit);
  compile_conversions(tables, unit);
  compile_classifiers(tables, state.rules);
  tables.rules.compile(unit.acl);
  traffic.revision = state.header.revision;
}

}  // namespace

Scheduler::Heads heads_of(const PortTraffic &port) {
  Scheduler::Heads heads = {};
  for (uint32_t queue = 0; queue < kQueues; ++queue)
    if (!port.queues[queue].empty()) heads[queue] = port.queues[queue].front().length + kFcsBytes;
  return heads;
}

Run::Run(State &state, uint32_t unit, UnitTraffic &traffic, Listener *listener)
    : state_(state),
      unit_(state.units[unit]),
      traffic_(traffic),
      listener_(listener),
      now_(traffic.waiting_ports == 0 ? unit_.time.clock() : traffic.clock) {
  // A clock that went back is that of a chip that was reset elsewhere.
  if (unit_.time.clock() < traffic.clock) {
    traffic = UnitTraffic();
    now_ = unit_.time.clock();
  }
  compile(state, unit_, traffic);
  advance(unit_.time.clock());
}

void Run::tell(const char *step, const char *decision, int32_t port, const char *what,
               const char *setting) const {
  if (listener_ != nullptr)
    listener_->hear({step, decision, port_text(port) + what, setting, port, false});
}

void Run::tell_lost(const char *step, const Departure &departure, const char *what,
                    const char *setting) const {
  if (listener_ == nullptr) return;
  listener_->see(departure.port, true, departure.bytes, departure.note.length);
  tell(step, "drop", departure.port, what, setting);
}

void Run::arrive(int32_t port, const uint8_t *bytes, uint32_t length, bool lent) {
  lent_ = lent ? bytes : nullptr;
  pass(port, bytes, length, false);
  lent_ = nullptr;
  turn_around();
  settle();
}

// By the VLAN that it most likely is in.
void Run::expect(int32_t port, const uint8_t *bytes, uint32_t length) const {
  const uint32_t type = half_at(bytes + kAddressBytes);
  const bool tagged = length >= kMinBytes && type == unit_.tag.inner()[0];
  const uint32_t vid = tagged ? half_at(bytes + kAddressBytes + 2) & 0xfff : unit_.vlan.pvid(port);
  unit_.l2.table().prefetch(vid, bytes);
  unit_.l2.table().prefetch(vid, bytes + kMacBytes);
}

// What a port in loopback sent arrives at it, once everything else has left.
void Run::turn_around() {
  std::array<uint8_t, kLargestSent> bytes;
  while (!traffic_.turning.empty()) {
    const FrameNote note = traffic_.turning.front();
    memcpy(bytes.data(), traffic_.turning.front_bytes(), note.length);
    traffic_.turning.pop();
    pass(note.port, bytes.data(), note.length, true);
  }
}

// A MAC pads what is too short.
void Run::pass(int32_t port, const uint8_t *bytes, uint32_t length, bool turned) {
  uint8_t padded[kMinBytes];
  Frame frame = {bytes, length};
  if (length < kMinBytes) {
    memcpy(padded, bytes, length);
    memset(padded + length, 0, kMinBytes - length);
    frame = {padded, kMinBytes};
  }
  if (listener_ != nullptr) listener_->see(port, false, bytes, length);
  Way way(unit_, state_.rules, traffic_.tables, listener_, now_, frame, port, turned);
  read_tags(way);
  walk(way);
  apply(way, unit_);
  send_all(way);
}

void Run::send_all(const Way &way) {
  const auto in = static_cast<int16_t>(way.port);
  if (way.mirror_groups != 0) mirror(way, way.mirror_groups);
  if (way.cpu_reason != 0 && (traffic_.tables.live & kCpuPortBit) != 0)
    enqueue({{0, way.frame.length, in, static_cast<uint8_t>(way.cpu_reason), 0, way.turned, false,
              false},
             way.frame.bytes,
             VCHIP_CPU_PORT,
             queue_of(way)});
  if (way.egress == 0) return;
  uint8_t bytes[kLargestSent];
  for (uint32_t rest = way.egress; rest != 0; rest &= rest - 1) {
    const int32_t port = std::countr_zero(rest);
    const Frame sent = write_frame(way, port, bytes);
    enqueue(
        {{0, sent.length, in, 0, 0, way.turned, false, false}, sent.bytes, port, queue_of(way)});
  }
}

void Run::mirror(const Way &way, uint32_t groups) {
  for (uint32_t group = 0; group < kMirrorGroups; ++group) {
    if ((groups >> group & 1) == 0) continue;
    const auto to = static_cast<int32_t>(unit_.mirror.group(group).mirroring_port);
    if ((traffic_.tables.live & port_bit(to)) == 0) continue;
    enqueue({{0, way.frame.length, static_cast<int16_t>(way.port), 0, 0, way.turned, true, false},
             way.frame.bytes,
             to,
             kMirrorQueue});
  }
}

void Run::transmit(int32_t port, const uint8_t *bytes, uint32_t length) {
  uint8_t padded[kMinBytes] = {};
  if (length < kMinBytes) bytes = static_cast<uint8_t *>(memcpy(padded, bytes, length));
  if ((traffic_.tables.live & port_bit(port)) == 0)
    unit_.drops.add(port, Fate::held);
  else
    enqueue({{0, std::max(length, kMinBytes), VCHIP_CPU_PORT, 0, 0, false, false, false},
             bytes,
             port,
             kProcessorQueue});
  turn_around();
}

uint64_t Run::departure_of(int32_t port, uint32_t wire) const {
  const uint64_t begin = std::max(now_, unit_.queue.paused_until(port));
  const Bandwidth &limit = unit_.rate.egress(port);
  if (limit.limited == 0) return begin;
  return limit.bucket.time_of(RateBlock::fill_of(limit), wire * kTokensPerByte, begin);
}

// Past the queue where nothing holds it.
void Run::enqueue(const Departure &departure) {
  PortTraffic &own = traffic_.ports[static_cast<size_t>(departure.port)];
  const uint32_t wire = departure.note.length + kFcsBytes;
  if (own.waiting == 0 && departure_of(departure.port, wire) <= now_) return depart(departure);
  QueueCounts &counts = unit_.queue.queue(departure.port, departure.queue);
  FrameRing &queue = own.queues[departure.queue];
  if (queue.count() >= kQueueFrames) {
    ++counts.dropped;
    unit_.drops.add(departure.port, Fate::queue);
    tell_lost("queue", departure, ": its queue is full", nullptr);
    return;
  }
  tell("queue", "wait", departure.port, " holds it back", "rtk_rate_egrBandwidthCtrlRate_set");
  if (queue.empty()) own.scheduler.begin(departure.queue);
  queue.push(departure.note, departure.bytes);
  counts.waiting = queue.count();
  ++own.waiting;
  traffic_.waiting_ports |= port_bit(departure.port);
}

// It leaves the port now.
void Run::depart(const Departure &departure) {
  const int32_t port = departure.port;
  const uint32_t bit = port_bit(port);
  const bool looped = (traffic_.tables.looped & bit) != 0;
  if (looped && departure.note.turned) {
    unit_.drops.add(port, Fate::loop);
    tell_lost("loop", departure, " is in loopback, and the frame has turned once",
              "rtk_diag_portMacLocalLoopbackEnable_set");
    return;
  }
  const uint32_t wire = departure.note.length + kFcsBytes;
  Bandwidth &limit = unit_.rate.egress(port);
  if (limit.limited != 0) limit.bucket.take(RateBlock::fill_of(limit), wire * kTokensPerByte, now_);
  QueueCounts &counts = unit_.queue.queue(port, departure.queue);
  ++counts.sent;
  counts.bytes += wire;
  count_sent(unit_, port, cast_of(address_at(departure.bytes)), wire);
  FrameNote note = departure.note;
  note.time = now_;
  if (looped) {
    note.port = static_cast<uint8_t>(port);
    traffic_.turning.push(note, departure.bytes);
  } else {
    FrameRing &left = traffic_.ports[static_cast<size_t>(port)].left;
    if (departure.bytes == lent_) {
      left.push_lent(note, departure.bytes);
    } else {
      left.push(note, departure.bytes);
    }
    traffic_.left_ports |= bit;
  }
  if ((traffic_.tables.mirrored_out & bit) != 0 && !note.copy) mirror_sent(departure);
}

void Run::mirror_sent(const Departure &departure) {
  for (uint32_t group = 0; group < kMirrorGroups; ++group) {
    const chip_mirror_entry &entry = unit_.mirror.group(group);
    if (entry.enable == 0 || (entry.egress & port_bit(departure.port)) == 0) continue;
    const auto to = static_cast<int32_t>(entry.mirroring_port);
    if ((traffic_.tables.live & port_bit(to)) == 0) continue;
    tell("mirror-out", "copy", departure.port, ": what it sends is mirrored",
         "rtk_mirror_group_set");
    FrameNote note = departure.note;
    note.copy = true;
    note.reason = 0;
    enqueue({note, departure.bytes, to, kMirrorQueue});
  }
}

// Sends from a port's queues whatever may leave now.
void Run::serve(int32_t port) {
  PortTraffic &own = traffic_.ports[static_cast<size_t>(port)];
  std::array<uint8_t, kLargestSent> bytes;
  while (own.waiting != 0) {
    const Scheduler::Heads heads = heads_of(own);
    const QosPort &settings = unit_.qos.port(port);
    const uint32_t queue = own.scheduler.pick(settings, heads);
    if (departure_of(port, heads[queue]) > now_) return;
    own.scheduler.sent(settings, heads, queue);
    FrameRing &ring = own.queues[queue];
    const FrameNote note = ring.front();
    memcpy(bytes.data(), ring.front_bytes(), note.length);
    ring.pop();
    if (--own.waiting == 0) traffic_.waiting_ports &= ~port_bit(port);
    unit_.queue.queue(port, queue).waiting = ring.count();
    depart({note, bytes.data(), port, queue});
  }
}

uint64_t Run::port_departure(int32_t port) const {
  const PortTraffic &own = traffic_.ports[static_cast<size_t>(port)];
  const Scheduler::Heads heads = heads_of(own);
  return departure_of(port, heads[own.scheduler.pick(unit_.qos.port(port), heads)]);
}

// A link that is gone takes what waits with it.
void Run::lose_held() {
  for (uint32_t rest = traffic_.waiting_ports & ~traffic_.tables.live; rest != 0;
       rest &= rest - 1) {
    const int32_t port = std::countr_zero(rest);
    PortTraffic &own = traffic_.ports[static_cast<size_t>(port)];
    for (; own.waiting != 0; --own.waiting) unit_.drops.add(port, Fate::held);
    for (uint32_t queue = 0; queue < kQueues; ++queue) {
      own.queues[queue].clear();
      unit_.queue.queue(port, queue).waiting = 0;
    }
  }
  traffic_.waiting_ports &= traffic_.tables.live;
}

// What leaves may come in again, or be mirrored to where others wait: until
// nothing more may leave.
void Run::settle() {
  while (traffic_.waiting_ports != 0) {
    lose_held();
    bool served = false;
    for (uint32_t rest = traffic_.waiting_ports; rest != 0; rest &= rest - 1) {
      const int32_t port = std::countr_zero(rest);
      if (port_departure(port) > now_) continue;
      serve(port);
      served = true;
    }
    turn_around();
    if (!served) return;
  }
}

uint64_t Run::next_departure() const {
  uint64_t next = kNever;
  for (uint32_t rest = traffic_.waiting_ports; rest != 0; rest &= rest - 1)
    next = std::min(next, port_departure(std::countr_zero(rest)));
  return next;
}

void Run::go_to(uint64_t clock) {
  now_ = clock;
  const uint64_t before = unit_.time.clock();
  if (clock <= before) return;
  unit_.l2.pass(clock - before);
  unit_.time.set_clock(clock);
}

// Another process may have advanced the clock meanwhile: what waited here left
// when it was its time.
void Run::advance(uint64_t clock) {
  settle();
  while (now_ < clock) {
    go_to(std::min(next_departure(), clock));
    settle();
  }
  traffic_.clock = now_;
}

}  // namespace vchip
