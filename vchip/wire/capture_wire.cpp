// SPDX-License-Identifier: MIT
#include "capture_wire.h"

#include <algorithm>
#include <cstring>
#include <pcap.h>

#include "clock.h"
#include "fault.h"

namespace vchipd {
namespace {

struct Closing {
  void operator()(pcap_t *capture) const { pcap_close(capture); }
  void operator()(pcap_dumper_t *capture) const { pcap_dump_close(capture); }
};

// Stamps count from 1970 and the chip's clock from power-on: the first frame of all
// captures that begin together arrives at once, the others as much later as their
// stamps say.
struct Timeline {
  uint64_t first = UINT64_MAX;
  uint64_t begin = 0;
  bool runs = false;
};
std::shared_ptr<Timeline> join_timeline() {
  static std::shared_ptr<Timeline> latest = std::make_shared<Timeline>();
  if (latest->runs) latest = std::make_shared<Timeline>();
  return latest;
}

// libpcap names the file in some of its messages.
std::string with_file(const std::string &file, const std::string &message) {
  return message.starts_with(file) ? message : file + ": " + message;
}

// A capture that is read from its beginning to its end.
class CaptureReader {
 public:
  explicit CaptureReader(const std::string &file) : file_(file) {
    char fault[PCAP_ERRBUF_SIZE] = "";
    capture_.reset(
        pcap_open_offline_with_tstamp_precision(file.c_str(), PCAP_TSTAMP_PRECISION_NANO, fault));
    if (!capture_) throw Fault(with_file(file, fault));
    expect_ethernet();
  }

  // The next frame becomes the current one.
  bool next() {
    const int result = pcap_next_ex(capture_.get(), &header_, &bytes_);
    if (result == 1) return true;
    if (result != PCAP_ERROR_BREAK)
      fprintf(stderr, "vchipd: %s\n", with_file(file_, pcap_geterr(capture_.get())).c_str());
    return false;
  }
  uint64_t stamp() const {
    return static_cast<uint64_t>(header_->ts.tv_sec) * kNanosecondsPerSecond +
           static_cast<uint64_t>(header_->ts.tv_usec);
  }
  bool is_usable() const {
    return header_->caplen == header_->len && is_frame_length(header_->len);
  }
  const uint8_t *bytes() const { return bytes_; }
  uint32_t length() const { return header_->len; }

 private:
  void expect_ethernet() const {
    const int type = pcap_datalink(capture_.get());
    if (type == DLT_EN10MB) return;
    const char *name = pcap_datalink_val_to_name(type);
    throw Fault(file_ + ": frames of link type " + (name != nullptr ? name : std::to_string(type)) +
                ", not of Ethernet");
  }

  const std::string file_;
  std::unique_ptr<pcap_t, Closing> capture_;
  pcap_pkthdr *header_ = nullptr;
  const uint8_t *bytes_ = nullptr;
};

class CaptureWriter {
 public:
  explicit CaptureWriter(const std::string &file)
      : capture_(pcap_open_dead_with_tstamp_precision(DLT_EN10MB, VCHIP_FRAME_MAX,
                                                      PCAP_TSTAMP_PRECISION_NANO)),
        dumper_(pcap_dump_open(capture_.get(), file.c_str())) {
    if (!dumper_) throw Fault(with_file(file, pcap_geterr(capture_.get())));
  }

  void write(const vchip_frame_t &frame) {
    pcap_pkthdr header = {};
    header.ts.tv_sec = static_cast<time_t>(frame.time / kNanosecondsPerSecond);
    header.ts.tv_usec = static_cast<suseconds_t>(frame.time % kNanosecondsPerSecond);
    header.caplen = header.len = frame.length;
    pcap_dump(reinterpret_cast<u_char *>(dumper_.get()), &header, frame.bytes);
  }
  // Whether all of it has arrived in the file.
  bool flush() {
    return pcap_dump_flush(dumper_.get()) == 0 && ferror(pcap_dump_file(dumper_.get())) == 0;
  }

 private:
  std::unique_ptr<pcap_t, Closing> capture_;
  std::unique_ptr<pcap_dumper_t, Closing> dumper_;
};

class CaptureWire : public Wire {
 public:
  CaptureWire(std::string in, std::string out) : in_(std::move(in)), out_(std::move(out)) {}

  void start(Loop &, Socket &socket) override {
    timeline_ = join_timeline();
    if (!in_.empty()) reader_ = std::make_unique<CaptureReader>(in_);
    if (!out_.empty()) writer_ = std::make_unique<CaptureWriter>(out_);
    step();
    if (reader_) timeline_->first = std::min(timeline_->first, reader_->stamp());
    socket.carrier_is(true);
  }

  bool receive(Arrivals &arrivals, uint32_t most) override {
    bytes_.clear();
    const uint64_t now = vchip_clock();
    while (reader_ && lengths_.size() < most && next_time() <= now) {
      bytes_.insert(bytes_.end(), reader_->bytes(), reader_->bytes() + reader_->length());
      lengths_.push_back(reader_->length());
      ++counts_.received;
      step();
    }
    size_t begin = 0;
    for (const uint32_t length : lengths_) {
      arrivals.push_back({bytes_.data() + begin, length, 0});
      begin += length;
    }
    lengths_.clear();
    return reader_ && next_time() <= now;
  }

  void send(const vchip_frame_t *frames, uint32_t count) override {
    if (!writer_) {
      counts_.lost += count;
      return;
    }
    for (uint32_t place = 0; place < count; ++place) writer_->write(frames[place]);
    counts_.sent += count;
    if (!writer_->flush()) fail();
  }

  std::optional<uint64_t> next_time() const override {
    if (!reader_) return std::nullopt;
    Timeline &timeline = *timeline_;
    if (!timeline.runs) timeline.begin = vchip_clock();
    timeline.runs = true;
    const uint64_t stamp = reader_->stamp();
    return timeline.begin + (stamp > timeline.first ? stamp - timeline.first : 0);
  }
  bool is_over() const override { return !reader_; }
  std::string note() const override {
    if (failed_) return "the capture cannot be written";
    return in_.empty() ? "" : reader_ ? "reading" : "read";
  }

 private:
  // To the next frame that a port takes.
  void step() {
    while (reader_) {
      if (!reader_->next()) {
        reader_.reset();
      } else if (reader_->is_usable()) {
        return;
      } else {
        ++counts_.unusable;
      }
    }
  }
  void fail() {
    if (!failed_) fprintf(stderr, "vchipd: %s cannot be written\n", out_.c_str());
    failed_ = true;
  }

  const std::string in_;
  const std::string out_;
  std::shared_ptr<Timeline> timeline_;
  std::unique_ptr<CaptureReader> reader_;
  std::unique_ptr<CaptureWriter> writer_;
  std::vector<uint8_t> bytes_;
  std::vector<uint32_t> lengths_;
  bool failed_ = false;
};

}  // namespace

std::unique_ptr<Wire> make_capture_wire(const std::string &rest, const Place &) {
  const size_t comma = rest.find(',');
  std::string in = rest.substr(0, comma);
  std::string out = comma == rest.npos ? "" : rest.substr(comma + 1);
  if (in.empty() && out.empty())
    throw WrongWords("pcap: needs a capture to read, or after a comma one to write");
  return std::make_unique<CaptureWire>(std::move(in), std::move(out));
}

}  // namespace vchipd
