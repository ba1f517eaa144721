// SPDX-License-Identifier: MIT
// One capture of the frames at the ports, which somebody reads from a socket.
#ifndef VCHIPD_LIVE_CAPTURE_H
#define VCHIPD_LIVE_CAPTURE_H

#include <swctl-vchip/vchip.h>

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "os/descriptor.h"
#include "pcapng.h"

namespace vchipd {

struct CaptureWords {
  uint32_t ports = 0;  // a bit for each chip port; 0 for all
  std::string filter;  // of libpcap; empty for all frames
  bool drops = false;  // with the reasons for which frames were dropped
  uint64_t count = 0;  // it ends after so many frames; 0 for never
};

// The text about a port: what wire is there.
using Describe = std::function<std::string(int32_t port)>;

class LiveCapture {
 public:
  // Begins with the ports given, or those of `present`. Throws WrongWords for a wrong
  // filter.
  LiveCapture(CaptureWords words, uint32_t present, Describe describe);
  ~LiveCapture();
  LiveCapture(const LiveCapture &) = delete;
  LiveCapture &operator=(const LiveCapture &) = delete;

  bool wants_drops() const { return words_.drops; }
  // Frames that come faster than they are read are counted.
  void add(const SeenFrame &frame);
  // No more frames come; how many there were is added.
  void end(uint64_t time);

  bool has_ended() const { return ended_; }
  bool has_backlog() const { return begin_ < bytes_.size(); }
  // Whether it has had as many frames as were asked for.
  bool is_full() const { return words_.count != 0 && written_ >= words_.count; }
  // Writes what there is room for. False if nobody reads any more.
  bool flush(const os::Descriptor &connection);

 private:
  class Filter;
  struct Interface {
    uint32_t number;
    uint64_t seen;
    uint64_t missed;      // of those
    uint64_t missed_now;  // since the last that was written
  };

  bool is_wanted(const SeenFrame &frame) const;
  Interface &interface_of(int32_t port);

  const CaptureWords words_;
  const Describe describe_;
  std::unique_ptr<Filter> filter_;
  std::array<std::optional<Interface>, VCHIP_PORTS> interfaces_;
  uint32_t interface_count_ = 0;
  uint64_t written_ = 0;
  Bytes bytes_;
  size_t begin_ = 0;  // of what is not yet sent
  bool ended_ = false;
};

}  // namespace vchipd

#endif
