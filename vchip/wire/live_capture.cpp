// SPDX-License-Identifier: MIT
#include "live_capture.h"

#include <swctl-vchip/frame.h>

#include <pcap.h>
#include <sys/socket.h>

#include "fault.h"
#include "wire_words.h"

namespace vchipd {
namespace {

// What waits for a slow reader.
constexpr size_t kMostBytes = 4u << 20;

std::string interface_name(int32_t port) {
  return port == VCHIP_CPU_PORT ? "cpu" : "port" + port_name(port);
}

}  // namespace

// A compiled expression.
class LiveCapture::Filter {
 public:
  explicit Filter(const std::string &expression)
      : frames_(pcap_open_dead(DLT_EN10MB, VCHIP_FRAME_MAX), pcap_close) {
    if (pcap_compile(frames_.get(), &program_, expression.c_str(), 1, PCAP_NETMASK_UNKNOWN) != 0)
      throw WrongWords("bad filter '" + expression + "': " + pcap_geterr(frames_.get()));
  }
  Filter(const Filter &) = delete;
  Filter &operator=(const Filter &) = delete;
  ~Filter() { pcap_freecode(&program_); }

  bool passes(const SeenFrame &frame) const {
    pcap_pkthdr header = {};
    header.caplen = header.len = frame.length;
    return pcap_offline_filter(&program_, &header, frame.bytes) != 0;
  }

 private:
  std::unique_ptr<pcap_t, void (*)(pcap_t *)> frames_;
  bpf_program program_ = {};
};

LiveCapture::LiveCapture(CaptureWords words, uint32_t present, Describe describe)
    : words_(std::move(words)), describe_(std::move(describe)) {
  if (!words_.filter.empty()) filter_ = std::make_unique<Filter>(words_.filter);
  put_section(bytes_, "vchipd " SWCTL_VERSION);
  const uint32_t ports = words_.ports != 0 ? words_.ports : present;
  for (int32_t port = 0; port < VCHIP_PORTS; ++port)
    if ((ports >> port & 1u) != 0) interface_of(port);
}

LiveCapture::~LiveCapture() = default;

// A port that had no wire at the beginning is described with its first frame.
LiveCapture::Interface &LiveCapture::interface_of(int32_t port) {
  std::optional<Interface> &place = interfaces_[static_cast<size_t>(port)];
  if (!place) {
    put_interface(bytes_, interface_name(port), describe_(port), words_.filter);
    place = Interface{interface_count_++, 0, 0, 0};
  }
  return *place;
}

bool LiveCapture::is_wanted(const SeenFrame &frame) const {
  const bool port = words_.ports == 0 || (words_.ports >> frame.port & 1u) != 0;
  return port && !ended_ && !is_full() && (!filter_ || filter_->passes(frame));
}

void LiveCapture::add(const SeenFrame &frame) {
  if (!is_wanted(frame)) return;
  Interface &own = interface_of(frame.port);
  ++own.seen;
  if (bytes_.size() - begin_ + frame.length > kMostBytes) {
    ++own.missed;
    ++own.missed_now;
    return;
  }
  put_frame(bytes_, own.number, frame, own.missed_now);
  own.missed_now = 0;
  ++written_;
}

void LiveCapture::end(uint64_t time) {
  if (ended_) return;
  ended_ = true;
  for (const std::optional<Interface> &own : interfaces_)
    if (own) put_statistics(bytes_, own->number, time, own->seen, own->missed);
}

bool LiveCapture::flush(const os::Descriptor &connection) {
  while (has_backlog()) {
    const ssize_t sent = send(connection.get(), bytes_.data() + begin_, bytes_.size() - begin_,
                              MSG_NOSIGNAL | MSG_DONTWAIT);
    if (sent < 0 && errno == EINTR) continue;
    if (sent < 0) break;
    begin_ += static_cast<size_t>(sent);
  }
  if (has_backlog()) {
    // Room at the end is made where little is to be moved.
    if (begin_ > bytes_.size() / 2) {
      bytes_.erase(bytes_.begin(), bytes_.begin() + static_cast<ptrdiff_t>(begin_));
      begin_ = 0;
    }
    return errno == EAGAIN;
  }
  bytes_.clear();
  begin_ = 0;
  return true;
}

}  // namespace vchipd
