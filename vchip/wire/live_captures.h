// SPDX-License-Identifier: MIT
// The captures that are being taken. Without one, frames pass as if this were not
// there.
#ifndef VCHIPD_LIVE_CAPTURES_H
#define VCHIPD_LIVE_CAPTURES_H

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "live_capture.h"
#include "observer.h"

namespace vchip {
struct LostFrame;
}

namespace vchipd {

class Loop;
class Panel;

class LiveCaptures : public Observer {
 public:
  LiveCaptures(Loop &loop, Panel &panel, uint32_t unit);
  ~LiveCaptures() override;
  LiveCaptures(const LiveCaptures &) = delete;
  LiveCaptures &operator=(const LiveCaptures &) = delete;

  // A capture for begin(). Throws WrongWords.
  std::unique_ptr<LiveCapture> make(const CaptureWords &words) const;
  // It goes to a socket until the other end closes its half, or all of it.
  void begin(std::unique_ptr<LiveCapture> capture, os::Descriptor connection);
  // The frames have all passed: gives the readers so long to take what there is.
  void finish(uint64_t nanoseconds);

  void arriving(const Arrivals &arrivals) override;
  void arrived(int32_t port, const Arrivals &arrivals) override;
  void left(int32_t port, const vchip_frame_t *frames, uint32_t count) override;

 private:
  struct Reader {
    std::unique_ptr<LiveCapture> capture;
    os::Descriptor connection;
    bool waits;  // for room in the socket
  };
  // A frame that was dropped and is none of those that arrive now.
  struct Lost {
    SeenFrame frame;
    Bytes bytes;
  };

  void serve(int descriptor, uint32_t events);
  bool flush(Reader &reader);
  void flush();
  void add(const SeenFrame &frame);
  void end(Reader &reader);
  void forget(int descriptor);
  void look();
  void hear(const vchip::LostFrame &lost);
  void take_lost();
  uint64_t stamp(uint64_t clock) const;
  std::string reason_at_cpu(const vchip_frame_t &frame) const;

  Loop &loop_;
  Panel &panel_;
  const uint32_t unit_;
  const uint64_t epoch_;  // when the chip's clock was 0
  std::map<int, Reader> readers_;
  const Arrivals *arrivals_ = nullptr;  // those that arrive now
  std::map<const uint8_t *, std::string> reasons_;
  std::vector<Lost> lost_;
  bool hears_ = false;
};

}  // namespace vchipd

#endif
