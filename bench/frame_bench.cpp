// SPDX-License-Identifier: MIT
// What a frame costs: nanoseconds a frame in process, one thread, 60 bytes, on a
// chip with 24 ports, 64 VLANs, rules and learned addresses. What is compared is
// measured in the same run; the best of several rounds counts.
#include <swctl-vchip/ability.h>
#include <swctl-vchip/frame.h>
#include <swctl-vchip/queue_view.h>
#include <swctl/platform/sdk.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <random>
#include <string>
#include <time.h>
#include <unistd.h>
#include <vector>

namespace {

constexpr uint32_t kBatch = 256;
constexpr uint32_t kFrameBytes = 60;
constexpr int kRounds = 7;
constexpr uint32_t kFramesARound = 400000;

struct Setup {
  int32_t ports = 24;
  uint32_t addresses = 16384;
  uint32_t vlans = 64;
  uint32_t rules = 100;
  bool limits = false;  // a meter, a storm type and a queue's limit
};

int failures = 0;

void expect(int32_t result) {
  if (result != 0) ++failures;
}

uint64_t station(uint32_t number) {
  return 0x020000000000 | number;
}

void put(uint8_t *bytes, uint64_t address) {
  for (int place = 5; place >= 0; --place, address >>= 8)
    bytes[place] = static_cast<uint8_t>(address);
}

// Tagged members of every VLAN.
void make_vlans(const Setup &setup) {
  const uint32_t members = (uint32_t{1} << setup.ports) - 1;
  const uint32_t untagged = 0;
  for (uint32_t vid = 100; vid < 100 + setup.vlans; ++vid) {
    expect(rtk_vlan_create(0, vid));
    expect(rtk_vlan_port_set(0, vid, &members, &untagged));
  }
}

// Rules of five forms, of which no frame here matches one: all have to be ruled
// out.
void make_rules(const Setup &setup) {
  for (uint32_t rule = 0; rule < setup.rules; ++rule) {
    constexpr uint32_t kFields[] = {CHIP_ACL_FIELD_ETHER_TYPE, CHIP_ACL_FIELD_DST_MAC,
                                    CHIP_ACL_FIELD_SRC_IP, CHIP_ACL_FIELD_L4_DST_PORT,
                                    CHIP_ACL_FIELD_SRC_MAC};
    const uint32_t field = kFields[rule % 5];
    uint8_t data[16] = {};
    uint8_t mask[16];
    memset(mask, 0xff, sizeof mask);
    memcpy(data, &rule, sizeof rule);
    data[3] = 0x77;
    expect(rtk_acl_ruleEntryField_write(0, 0, rule, field, data, mask));
    chip_acl_action action = {};
    action.word[CHIP_ACL_WORD_VERDICT] = CHIP_ACL_VERDICT_DROP;
    expect(rtk_acl_ruleAction_set(0, 0, rule, &action));
    expect(rtk_acl_ruleValidate_set(0, 0, rule, 1));
  }
}

void make_limits(const Setup &setup) {
  const uint32_t rule = 1535;
  const uint8_t type[2] = {0xb5, 0x88};
  const uint8_t whole[2] = {0xff, 0xff};
  expect(rtk_acl_ruleEntryField_write(0, 0, rule, CHIP_ACL_FIELD_ETHER_TYPE, type, whole));
  chip_acl_action action = {};
  action.word[CHIP_ACL_WORD_METER] = 1;
  action.word[CHIP_ACL_WORD_METER_NUMBER] = 7;
  expect(rtk_acl_ruleAction_set(0, 0, rule, &action));
  expect(rtk_acl_ruleValidate_set(0, 0, rule, 1));
  const chip_acl_meter meter = {1, 0xfffff, 1};
  expect(rtk_acl_meterEntry_set(0, 7, &meter));
  for (int32_t port = 0; port < setup.ports; ++port) {
    expect(rtk_rate_stormControlRate_set(0, port, 3, 0xffffff));
    expect(rtk_rate_stormControlEnable_set(0, port, 3, 1));
    expect(rtk_rate_egrBandwidthCtrlRate_set(0, port, 0xfffff));
    expect(rtk_rate_egrBandwidthCtrlEnable_set(0, port, 1));
  }
}

// A flow between two stations. Numbered stations fill the buckets of the
// address table evenly, a VLAN after the other.
struct Flow {
  uint8_t bytes[kFrameBytes];
  int32_t port;
};

Flow flow_of(uint32_t from, uint32_t to, const Setup &setup) {
  Flow flow = {};
  put(flow.bytes, station(to));
  put(flow.bytes + 6, station(from));
  const uint8_t tag[] = {0x81, 0x00,
                         0x00, static_cast<uint8_t>(100 + from / (setup.addresses / setup.vlans)),
                         0x88, 0xb5};
  memcpy(flow.bytes + 12, tag, sizeof tag);
  flow.port = static_cast<int32_t>(from % static_cast<uint32_t>(setup.ports));
  return flow;
}

void take_all() {
  constexpr uint32_t kTaken = 32;
  uint8_t room[kTaken][64];
  vchip_frame_t frames[kTaken];
  for (uint32_t place = 0; place < kTaken; ++place) frames[place] = {room[place], 64, 0, 0, 0, 0};
  for (uint32_t ready = vchip_frames_ready(0); ready != 0; ready &= ready - 1) {
    const int32_t port = __builtin_ctz(ready);
    while (vchip_frames_leave(0, port, frames, kTaken) == static_cast<int32_t>(kTaken)) {
    }
  }
}

std::vector<Flow> make_flows(const Setup &setup) {
  std::vector<Flow> flows;
  std::mt19937 random(1);
  for (uint32_t number = 0; number < setup.addresses; ++number) {
    // In the same VLAN, on another port.
    const uint32_t group = setup.addresses / setup.vlans;
    const uint32_t ports = static_cast<uint32_t>(setup.ports);
    uint32_t to = number;
    while (to % ports == number % ports)
      to = number / group * group + static_cast<uint32_t>(random()) % group;
    flows.push_back(flow_of(number, to, setup));
  }
  for (const Flow &flow : flows) {
    expect(vchip_frame_arrive(0, flow.port, flow.bytes, kFrameBytes));
    take_all();
  }
  std::shuffle(flows.begin(), flows.end(), random);
  return flows;
}

std::vector<Flow> prepare(const Setup &setup) {
  expect(vchip_reset());
  const vchip_partner_t partner = {1, VCHIP_ABILITY_USUAL};
  for (int32_t port = 0; port < setup.ports; ++port) expect(vchip_cable_plug(0, port, &partner));
  make_vlans(setup);
  make_rules(setup);
  std::vector<Flow> flows = make_flows(setup);
  if (setup.limits) make_limits(setup);
  return flows;
}

// Of this thread, in nanoseconds: other work on the machine does not count.
double processor_time() {
  timespec now = {};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
  return static_cast<double>(now.tv_sec) * 1e9 + static_cast<double>(now.tv_nsec);
}

// Nanoseconds a frame, arrival and departure.
double round_of(const std::vector<Flow> &flows, bool advance) {
  vchip_arrival_t arrivals[kBatch];
  size_t next = 0;
  const double begin = processor_time();
  for (uint32_t sent = 0; sent < kFramesARound; sent += kBatch) {
    for (vchip_arrival_t &arrival : arrivals) {
      const Flow &flow = flows[next];
      next = next + 1 == flows.size() ? 0 : next + 1;
      arrival = {flow.bytes, kFrameBytes, flow.port};
    }
    expect(vchip_frames_arrive(0, arrivals, kBatch));
    if (advance) expect(vchip_clock_advance(10000));
    take_all();
  }
  return (processor_time() - begin) / kFramesARound;
}

double best_of(const Setup &setup) {
  const std::vector<Flow> flows = prepare(setup);
  double best = 1e9;
  for (int round = 0; round < kRounds; ++round)
    best = std::min(best, round_of(flows, setup.limits));
  return best;
}

double on_image(const Setup &setup) {
  const std::string path = "swctl-frame-bench." + std::to_string(getpid());
  setenv("VCHIP_IMAGE", path.c_str(), 1);
  vchip_close();
  const double nanoseconds = best_of(setup);
  unsetenv("VCHIP_IMAGE");
  vchip_close();
  unlink(path.c_str());
  return nanoseconds;
}

double resident_megabytes() {
  FILE *file = fopen("/proc/self/statm", "r");
  long size = 0;
  long resident = 0;
  const bool read = file != nullptr && fscanf(file, "%ld %ld", &size, &resident) == 2;
  if (file != nullptr) fclose(file);
  if (!read) ++failures;
  return static_cast<double>(resident) * static_cast<double>(sysconf(_SC_PAGESIZE)) / 1e6;
}

// Frames to all ports, of every priority, until the queues of 26 ports that send
// next to nothing are full.
double full_queues() {
  constexpr int32_t kHeld = 26;
  constexpr int kFrames = 1500;
  prepare({.ports = kHeld + 1});
  const uint32_t queues[8] = {0, 1, 2, 3, 4, 5, 6, 7};
  expect(rtk_qos_priMap_set(0, 8, queues));
  for (const uint32_t priority : queues) expect(rtk_qos_1pPriRemap_set(0, priority, priority));
  for (int32_t port = 0; port < kHeld; ++port) {
    expect(rtk_rate_egrBandwidthCtrlRate_set(0, port, 1));
    expect(rtk_rate_egrBandwidthCtrlEnable_set(0, port, 1));
  }
  const double before = resident_megabytes();
  for (int frame = 0; frame < kFrames; ++frame)
    for (uint8_t priority = 0; priority < 8; ++priority) {
      uint8_t bytes[kFrameBytes] = {0xff, 0xff, 0xff, 0xff, 0xff, 0xff, 2};
      const uint8_t tag[] = {0x81, 0x00, static_cast<uint8_t>(priority << 5), 100, 0x88, 0xb5};
      memcpy(bytes + 12, tag, sizeof tag);
      expect(vchip_frame_arrive(0, kHeld, bytes, kFrameBytes));
      take_all();
    }
  for (int32_t port = 0; port < kHeld; ++port)
    for (const vchip::QueueView &queue : vchip::port_queues(0, port).queues)
      if (queue.waiting != 1000) ++failures;
  return resident_megabytes() - before;
}

bool report(const char *what, double value, double limit, const char *unit) {
  printf("%-52s %8.2f %-10s limit %7.2f%s\n", what, value, unit, limit,
         value <= limit ? "" : "  EXCEEDED");
  return value <= limit;
}

}  // namespace

int main() {
  unsetenv("VCHIP_IMAGE");
  const double plain = best_of({});
  bool good = report("100 rules, 64 VLANs, 16,384 addresses", plain, 150, "ns/frame");
  good &= report("1,536 rules", best_of({.rules = 1535}), 250, "ns/frame");
  good &= report("on a chip in an image, of the private one", on_image({}) / plain, 1.1, "times");
  const double few = best_of({.ports = 12});
  good &= report("24 ports, of 12", plain / few, 1.2, "times");
  good &= report("64 VLANs, of 32", plain / best_of({.vlans = 32}), 1.2, "times");
  good &= report("16,384 addresses, of 8,192", plain / best_of({.addresses = 8192}), 1.2, "times");
  good &= report("a meter, a storm type and a limit, on top", best_of({.limits = true}) - plain, 60,
                 "ns/frame");
  good &= report("26 ports whose eight queues are full, 60 bytes", full_queues(), 64, "MB");
  if (failures != 0) printf("%d calls were refused\n", failures);
  return good && failures == 0 ? 0 : 1;
}
