// SPDX-License-Identifier: MIT
// A process that is killed in the middle of a call leaves a usable chip.
#include <swctl-vchip/ability.h>
#include <swctl-vchip/frame.h>
#include <swctl-vchip/image.h>
#include <swctl-vchip/vchip.h>
#include <swctl-vchip/view.h>
#include <swctl/platform/log.h>
#include <swctl/platform/sdk.h>

#include <algorithm>
#include <signal.h>
#include <string>
#include <unistd.h>
#include <vector>

#include "child.h"

namespace {

using vchip_test::Gate;
using vchip_test::Outcome;
using vchip_test::read_file;
using vchip_test::run;
using vchip_test::set_word;
using vchip_test::word_at;
using vchip_test::write_file;

constexpr uint32_t kChanging = 1;
constexpr uint32_t kResetting = 2;

class Killed : public vchip_test::ImageTest {
 protected:
  void SetUp() override {
    ImageTest::SetUp();
    make_image();
  }

  // What a killed call leaves: the mark of a writer that is no more.
  void mark(uint32_t writer) {
    std::string bytes = read_file(image_);
    set_word(bytes, vchip_test::kWriterAt, writer);
    write_file(image_, bytes);
  }
  // Somebody who has the image open, and does nothing.
  class Other {
   public:
    explicit Other(const Killed &test) {
      Gate opened;
      process_ = vchip_test::start(test.image(), [&] {
        const bool open = vchip_open() == nullptr;
        opened.open();
        if (open) gate_.wait();
        return open ? 0 : 1;
      });
      opened.wait();
    }
    int end() {
      gate_.open();
      return vchip_test::wait_for(process_);
    }

   private:
    Gate gate_;
    pid_t process_;
  };
  uint32_t interrupted() { return word_at(read_file(image_), vchip_test::kInterruptedAt); }
  uint32_t writer() { return word_at(read_file(image_), vchip_test::kWriterAt); }
};

int plug_a_few() {
  const vchip_partner_t partner = {1, 0xf6000000u};
  for (const int32_t port : {0, 13, 27})
    if (vchip_cable_plug(1, port, &partner) != 0) return 1;
  sys_trace_add_log("f():1", "kept");
  return 0;
}

TEST_F(Killed, AnInterruptedChangeIsCountedAndTheRestIsKept) {
  ASSERT_EQ(run(image(), plug_a_few).status, 0);
  mark(kChanging);
  EXPECT_EQ(run(image(),
                [] {
                  const bool cables = vchip::port(1, 0).cable && vchip::port(1, 13).cable &&
                                      vchip::port(1, 27).cable && !vchip::port(0, 0).cable;
                  const vchip::PlatformView platform = vchip::platform();
                  return cables && platform.trace.size() == 1 && platform.trace[0].message == "kept"
                             ? 0
                             : 1;
                })
                .status,
            0);
  EXPECT_EQ(interrupted(), 1u);
  EXPECT_EQ(writer(), 0u);
}

TEST_F(Killed, AnInterruptedResetIsDoneAgain) {
  ASSERT_EQ(run(image(), plug_a_few).status, 0);
  mark(kResetting);
  EXPECT_EQ(run(image(),
                [] {
                  const bool cables = vchip::port(1, 0).cable || vchip::port(1, 13).cable ||
                                      vchip::port(1, 27).cable;
                  return cables || !vchip::platform().trace.empty() ? 1 : 0;
                })
                .status,
            0);
  EXPECT_EQ(interrupted(), 1u);
  EXPECT_EQ(writer(), 0u);
}

// Contents in which no index leads anywhere.
void ruin(std::string &bytes) {
  std::fill(bytes.begin() + vchip_test::kHeaderSize, bytes.end(), '\xff');
}

// A reset passes through states that are no chip's. The process that opens the image next
// does not look at them, alone or while others have it open.
TEST_F(Killed, AnInterruptedResetMayLeaveAnything) {
  const auto use = [] { return vchip::port(0, 0).admin ? 0 : 1; };
  std::string bytes = read_file(image_);
  ruin(bytes);
  set_word(bytes, vchip_test::kWriterAt, kResetting);
  write_file(image_, bytes);
  EXPECT_EQ(run(image(), use).status, 0);
  EXPECT_EQ(interrupted(), 1u);
  Other other(*this);
  vchip_test::overwrite_file(image_, bytes);
  EXPECT_EQ(run(image(), use).status, 0);
  EXPECT_EQ(other.end(), 0);
  EXPECT_EQ(writer(), 0u);
}

// Without the mark the same contents are refused, alone and in use.
TEST_F(Killed, WhatNoResetLeftIsDamaged) {
  std::string bytes = read_file(image_);
  ruin(bytes);
  const auto is_refused = [] { return vchip_open() == nullptr ? 1 : 0; };
  Other other(*this);
  vchip_test::overwrite_file(image_, bytes);
  EXPECT_EQ(run(image(), is_refused).status, 0);
  EXPECT_EQ(other.end(), 0);
  EXPECT_EQ(run(image(), is_refused).status, 0);
  EXPECT_EQ(interrupted(), 0u);
}

TEST_F(Killed, TheCountShowsInTheDumpAndOutlivesAReset) {
  mark(kChanging);
  ASSERT_EQ(run(image(), [] { return vchip_reset(); }).status, 0);
  mark(kResetting);
  ASSERT_EQ(run(image(), [] { return vchip_reset(); }).status, 0);
  const Outcome outcome = run(image(), [] {
    puts(vchip::dump_json(1).c_str());
    return 0;
  });
  EXPECT_NE(outcome.output.find("\"interrupted_writes\": 2,"), std::string::npos);
}

// The record that a killed writer was at is dropped, and no other.
TEST_F(Killed, AHalfWrittenTraceRecordIsDropped) {
  ASSERT_EQ(run(image(),
                [] {
                  for (int number = 0; number < 300; ++number)
                    sys_trace_add_log("f():1", std::to_string(number).c_str());
                  return 0;
                })
                .status,
            0);
  // The oldest record, 44, is what the next writer overwrites first.
  std::string bytes = read_file(image_);
  const std::string oldest("44\0", 3);
  const size_t slot = bytes.find(oldest, vchip_test::kHeaderSize);
  ASSERT_NE(slot, std::string::npos);
  ASSERT_EQ(bytes.find(oldest, slot + 1), bytes.find(std::string("144\0", 4)) + 1);
  bytes.replace(slot, 2, "#!");
  write_file(image_, bytes);
  mark(kChanging);
  EXPECT_EQ(
      run(image(),
          [] {
            const vchip::PlatformView view = vchip::platform();
            if (view.trace.size() != 255) return 1;
            for (int index = 0; index < 255; ++index)
              if (view.trace[static_cast<size_t>(index)].message != std::to_string(45 + index))
                return 2;
            return 0;
          })
          .status,
      0);
}

// Changes of every kind without end, for somebody to kill.
int write_forever() {
  for (uint32_t round = 0;; ++round) {
    const std::string text(200 + round % 50, static_cast<char>('a' + round % 26));
    const vchip_partner_t partner = {1, round % 2 == 0 ? 0x40000000u : 0x10000000u};
    sys_trace_add_log(text.c_str(), text.c_str());
    vchip_cable_plug(0, static_cast<int32_t>(round % 28), &partner);
    rtk_port_phyForceModeAbility_set(0, 3, round % 2, round % 2, round % 2);
    if (round % 8 == 7) vchip_reset();
  }
}

bool valid_port(int32_t port) {
  const vchip::PortView view = vchip::port(0, port);
  const bool none = !view.cable && view.partner_ability == 0;
  const bool one = view.cable && view.partner_autonegotiation &&
                   (view.partner_ability == 0x40000000u || view.partner_ability == 0x10000000u);
  return (none || one) && view.forced_speed <= 2 && view.admin && view.advertised == 0xf6000000u;
}

// Looks at everything and answers 0 if nothing is half-written.
int look_at_all() {
  for (int32_t port = 0; port < VCHIP_CPU_PORT; ++port)
    if (!valid_port(port)) return 1;
  for (const vchip::TraceRecord &record : vchip::platform().trace) {
    const std::string &text = record.message;
    if (text != record.location || text.size() < 200 || text.size() > 249) return 2;
    if (text != std::string(text.size(), text[0])) return 3;
  }
  return rtk_port_adminEnable_set(1, 3, 1) == 0 ? 0 : 4;
}

// With each kind of lock: what VCHIP_LOCK says.
class KilledWriters : public Killed, public testing::WithParamInterface<const char *> {
 protected:
  vchip_test::Environment image() const {
    vchip_test::Environment environment = ImageTest::image();
    environment["VCHIP_LOCK"] = GetParam();
    return environment;
  }
  void expect_nothing_half_done() {
    const Outcome outcome = run(image(), look_at_all);
    ASSERT_EQ(outcome.status, 0) << outcome.output;
  }
};

// One is killed while seven others go on; each is followed by a new one.
TEST_P(KilledWriters, ManyTimesInTheMiddle) {
  constexpr uint32_t kWanted = 10;
  constexpr size_t kWriters = 8;
  const size_t at_least = vchip_test::soaking() ? 1000 : 150;
  std::vector<pid_t> writers(kWriters);
  for (pid_t &writer : writers) writer = vchip_test::start(image(), write_forever);
  size_t kills = 0;
  for (; kills < at_least || interrupted() < kWanted; ++kills) {
    ASSERT_LT(kills, 100 * at_least) << "hit " << interrupted() << " calls";
    usleep(static_cast<useconds_t>(kills * 137 % 1500));
    pid_t &writer = writers[kills * 5 % kWriters];
    kill(writer, SIGKILL);
    EXPECT_EQ(vchip_test::wait_for(writer), 1000 + SIGKILL);
    if (kills % 20 == 0) expect_nothing_half_done();
    writer = vchip_test::start(image(), write_forever);
  }
  for (const pid_t writer : writers) {
    kill(writer, SIGKILL);
    EXPECT_EQ(vchip_test::wait_for(writer), 1000 + SIGKILL);
    expect_nothing_half_done();
  }
  EXPECT_EQ(writer(), 0u);
  RecordProperty("kills", static_cast<int>(kills));
  RecordProperty("hits", static_cast<int>(interrupted()));
}

// Batches of frames between many stations without end. They are large, so that
// most of the time is spent in one. What leaves stays: nobody lives long.
int switch_forever(Gate &begun) {
  constexpr uint32_t kBatch = 256;
  const vchip_partner_t partner = {1, VCHIP_ABILITY_USUAL};
  for (int32_t port = 0; port < 8; ++port) vchip_cable_plug(0, port, &partner);
  static uint8_t frames[kBatch][60];
  static vchip_arrival_t arrivals[kBatch];
  for (uint32_t each = 0; each < kBatch; ++each)
    arrivals[each] = {frames[each], sizeof frames[each], static_cast<int32_t>(each % 8)};
  for (uint32_t round = 0;; ++round) {
    for (uint32_t each = 0; each < kBatch; ++each) {
      const uint32_t number = round * kBatch + each;
      frames[each][4] = frames[each][11] = static_cast<uint8_t>(number);
      frames[each][5] = frames[each][10] = static_cast<uint8_t>(number >> 8 & 7);
    }
    vchip_frames_arrive(0, arrivals, kBatch);
    vchip_clock_advance(1000000000);
    if (round == 0) begun.open();
  }
}

// Nothing that no call could have left: neither an entry that is half there nor
// a frame that was received and came to no end.
int look_for_faults() {
  for (const vchip::Fault &fault : vchip::chip_faults()) {
    printf("%s %s: %s\n", fault.block.c_str(), fault.word.c_str(), fault.text.c_str());
    return 1;
  }
  vchip_drops_t drops = {};
  return vchip_drops_get(0, 3, &drops);
}

TEST_P(KilledWriters, InTheMiddleOfAFrame) {
  constexpr uint32_t kWanted = 10;
  constexpr int kMostKills = 500;
  int kills = 0;
  for (; interrupted() < kWanted; ++kills) {
    ASSERT_LT(kills, kMostKills) << "hit " << interrupted() << " batches";
    Gate begun;
    const pid_t writer = vchip_test::start(image(), [&] { return switch_forever(begun); });
    begun.wait();
    usleep(static_cast<useconds_t>(kills * 137 % 1500));
    kill(writer, SIGKILL);
    EXPECT_EQ(vchip_test::wait_for(writer), 1000 + SIGKILL);
    const Outcome outcome = run(image(), look_for_faults);
    ASSERT_EQ(outcome.status, 0) << outcome.output;
  }
  EXPECT_EQ(writer(), 0u);
  RecordProperty("kills", kills);
}

INSTANTIATE_TEST_SUITE_P(Locks, KilledWriters, testing::Values("", "record"), [](const auto &lock) {
  return std::string(lock.param).empty() ? "BestLock" : "RecordLock";
});

}  // namespace
