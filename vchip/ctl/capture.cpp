// SPDX-License-Identifier: MIT
#include "capture.h"

#include <swctl-vchip/frame.h>

#include <memory>
#include <pcap.h>

#include "usage_error.h"

namespace vchipctl {
namespace {

constexpr uint64_t kNanosecondsPerSecond = 1000000000;

struct Closing {
  void operator()(pcap_t *capture) const { pcap_close(capture); }
};
using Capture = std::unique_ptr<pcap_t, Closing>;

// A compiled expression.
class Filter {
 public:
  Filter(pcap_t *capture, const std::string &expression) {
    if (pcap_compile(capture, &program_, expression.c_str(), 1, PCAP_NETMASK_UNKNOWN) != 0)
      throw UsageError("bad filter '" + expression + "': " + pcap_geterr(capture));
  }
  Filter(const Filter &) = delete;
  Filter &operator=(const Filter &) = delete;
  ~Filter() { pcap_freecode(&program_); }

  bool passes(const pcap_pkthdr &header, const uint8_t *bytes) const {
    return pcap_offline_filter(&program_, &header, bytes) != 0;
  }

 private:
  bpf_program program_ = {};
};

// libpcap names the file in some of its messages.
std::string with_file(const std::string &file, const std::string &message) {
  return message.starts_with(file) ? message : file + ": " + message;
}

Capture open_capture(const std::string &file) {
  char fault[PCAP_ERRBUF_SIZE] = "";
  Capture capture(
      pcap_open_offline_with_tstamp_precision(file.c_str(), PCAP_TSTAMP_PRECISION_NANO, fault));
  if (!capture) throw Refused(with_file(file, fault));
  const int type = pcap_datalink(capture.get());
  if (type == DLT_EN10MB) return capture;
  const char *name = pcap_datalink_val_to_name(type);
  throw Refused(file + ": frames of link type " + (name != nullptr ? name : std::to_string(type)) +
                ", not of Ethernet");
}

void expect_frame(const std::string &file, size_t number, const pcap_pkthdr &header) {
  const std::string frame = file + ": frame " + std::to_string(number);
  if (header.caplen < header.len)
    throw Refused(frame + " is cut off: " + std::to_string(header.caplen) + " of its " +
                  std::to_string(header.len) + " bytes were captured");
  if (header.len < VCHIP_FRAME_MIN || header.len > VCHIP_FRAME_MAX)
    throw Refused(frame + " has " + std::to_string(header.len) + " bytes: expected " +
                  std::to_string(VCHIP_FRAME_MIN) + " to " + std::to_string(VCHIP_FRAME_MAX));
  if (header.ts.tv_sec < 0) throw Refused(frame + " has a time before 1970");
}

uint64_t time_of(const pcap_pkthdr &header) {
  return static_cast<uint64_t>(header.ts.tv_sec) * kNanosecondsPerSecond +
         static_cast<uint64_t>(header.ts.tv_usec);
}

}  // namespace

std::vector<CapturedFrame> read_capture(const std::string &file,
                                        const std::optional<std::string> &filter) {
  const Capture capture = open_capture(file);
  std::optional<Filter> wanted;
  if (filter) wanted.emplace(capture.get(), *filter);
  std::vector<CapturedFrame> frames;
  pcap_pkthdr *header = nullptr;
  const uint8_t *bytes = nullptr;
  int result = 0;
  for (size_t number = 1; (result = pcap_next_ex(capture.get(), &header, &bytes)) == 1; ++number) {
    expect_frame(file, number, *header);
    if (wanted && !wanted->passes(*header, bytes)) continue;
    frames.push_back({number, time_of(*header), {bytes, bytes + header->len}});
  }
  if (result != PCAP_ERROR_BREAK) throw Refused(with_file(file, pcap_geterr(capture.get())));
  return frames;
}

}  // namespace vchipctl
