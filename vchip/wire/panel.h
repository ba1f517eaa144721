// SPDX-License-Identifier: MIT
// The patch panel of a unit: which wire is in which port, and the frames between
// the wires and the chip.
#ifndef VCHIPD_PANEL_H
#define VCHIPD_PANEL_H

#include <array>
#include <memory>
#include <string>
#include <vector>

#include "clock.h"
#include "loop.h"
#include "observer.h"
#include "wire.h"

namespace vchipd {

class Panel {
 public:
  Panel(Loop &loop, std::string image, uint32_t unit, bool virtual_time);
  ~Panel();

  // The wire that `word` names goes into a port that has none; throws Fault, and then
  // the port has none.
  void plug(int32_t port, const std::string &word);
  // Takes the wire out; nothing happens to a port without one.
  void unplug(int32_t port);

  // Waits until there is something to do, and does it.
  void turn();
  // Takes in what has come, a part of each wire's in turn, and sends what leaves.
  void serve();
  // Sends what waits in the chip and in the wires, for so long at most.
  void drain(uint64_t nanoseconds);
  // No wire will bring a frame any more, and nothing waits.
  bool is_finished() const;

  Clock &clock() { return clock_; }
  // Shows the frames to somebody from now on, or to nobody.
  void observe(Observer *observer) { observer_ = observer; }

  struct Row {
    int32_t port;
    std::string word;
    bool carrier;
    std::string note;
    WireCounts counts;
  };
  std::vector<Row> rows() const;

 private:
  class Plugged;
  struct Outbox;

  bool look_at_rings();
  bool shows_frames();
  bool shows_many() const;
  void wait();
  void let_announce(bool on);
  void weigh_rate();
  void make_way(uint64_t now);
  uint64_t time_to_wait();
  void take_in(Plugged &plugged);
  void let_arrive(Plugged &plugged);
  void give_out();
  void give_out(int32_t port);
  void show_links();
  uint64_t next_arrival() const;
  bool has_backlog() const;
  bool is_over() const;

  Loop &loop_;
  const std::string image_;
  const uint32_t unit_;
  Clock clock_;
  std::array<std::unique_ptr<Plugged>, VCHIP_PORTS> plugged_;
  Arrivals arrivals_;
  std::unique_ptr<Outbox> outbox_;
  Observer *observer_ = nullptr;
  uint64_t next_look_ = 0;     // at the links
  bool ready_ = false;         // some wire has more to take in
  size_t came_ = 0;            // frames of the last turn
  bool is_high_rate_ = false;  // frames are gathered
  bool announce_ = true;       // wires that show their frames tell the loop too
  uint64_t window_came_ = 0;
  uint64_t window_begin_ = 0;
  uint64_t next_move_ = 0;
  uint32_t turns_ = 0;  // since the system was asked for events
};

}  // namespace vchipd

#endif
