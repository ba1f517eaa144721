// SPDX-License-Identifier: MIT
#include "pcapng.h"

#include <cstring>

namespace vchipd {
namespace {

constexpr uint32_t kSectionBlock = 0x0a0d0d0a;
constexpr uint32_t kInterfaceBlock = 1;
constexpr uint32_t kStatisticsBlock = 5;
constexpr uint32_t kFrameBlock = 6;
constexpr uint32_t kByteOrder = 0x1a2b3c4d;
constexpr uint64_t kUnknownLength = UINT64_MAX;
constexpr uint16_t kEthernet = 1;

constexpr uint16_t kEndOfOptions = 0;
constexpr uint16_t kComment = 1;
constexpr uint16_t kSectionProgram = 4;
constexpr uint16_t kInterfaceName = 2;
constexpr uint16_t kInterfaceDescription = 3;
constexpr uint16_t kInterfaceResolution = 9;
constexpr uint16_t kInterfaceFilter = 11;
constexpr uint16_t kFrameFlags = 2;
constexpr uint16_t kFrameMissed = 4;
constexpr uint16_t kStatisticsSeen = 4;
constexpr uint16_t kStatisticsMissed = 5;

constexpr uint8_t kNanoseconds = 9;  // 10 to the power of -9
constexpr char kFilterIsText = 0;
constexpr uint32_t kInbound = 1;
constexpr uint32_t kOutbound = 2;
constexpr uint32_t kUnicast = 1u << 2;
constexpr uint32_t kMulticast = 2u << 2;
constexpr uint32_t kBroadcast = 3u << 2;

// A block that is being written: its length is filled in at the end.
class Block {
 public:
  Block(Bytes &out, uint32_t type) : out_(out), begin_(out.size()) {
    put(type);
    put(uint32_t{0});
  }
  Block(const Block &) = delete;
  Block &operator=(const Block &) = delete;
  ~Block() {
    const auto length = static_cast<uint32_t>(out_.size() - begin_ + sizeof(uint32_t));
    put(length);
    memcpy(out_.data() + begin_ + sizeof(uint32_t), &length, sizeof length);
  }

  template <typename Value>
  void put(Value value) {
    put(&value, sizeof value);
  }
  void put(const void *bytes, size_t size) {
    const auto *first = static_cast<const uint8_t *>(bytes);
    out_.insert(out_.end(), first, first + size);
  }
  void put_padded(const void *bytes, size_t size) {
    put(bytes, size);
    out_.resize(out_.size() + (4 - size % 4) % 4);
  }
  void put_time(uint64_t time) {
    put(static_cast<uint32_t>(time >> 32));
    put(static_cast<uint32_t>(time));
  }
  void option(uint16_t code, const void *bytes, size_t size) {
    put(code);
    put(static_cast<uint16_t>(size));
    put_padded(bytes, size);
  }
  void option(uint16_t code, const std::string &text) { option(code, text.data(), text.size()); }
  template <typename Value>
  void option_value(uint16_t code, Value value) {
    option(code, &value, sizeof value);
  }
  void end_options() { option(kEndOfOptions, nullptr, 0); }

 private:
  Bytes &out_;
  const size_t begin_;
};

uint32_t flags_of(const SeenFrame &frame) {
  constexpr uint8_t kAll[] = {0xff, 0xff, 0xff, 0xff, 0xff, 0xff};
  uint32_t cast = (frame.bytes[0] & 1) != 0 ? kMulticast : kUnicast;
  if (memcmp(frame.bytes, kAll, sizeof kAll) == 0) cast = kBroadcast;
  return (frame.outbound ? kOutbound : kInbound) | cast;
}

}  // namespace

void put_section(Bytes &out, const std::string &program) {
  Block block(out, kSectionBlock);
  block.put(kByteOrder);
  block.put(uint16_t{1});  // version 1.0
  block.put(uint16_t{0});
  block.put(kUnknownLength);
  block.option(kSectionProgram, program);
  block.end_options();
}

void put_interface(Bytes &out, const std::string &name, const std::string &description,
                   const std::string &filter) {
  Block block(out, kInterfaceBlock);
  block.put(kEthernet);
  block.put(uint16_t{0});
  block.put(uint32_t{0});  // frames are whole
  block.option(kInterfaceName, name);
  if (!description.empty()) block.option(kInterfaceDescription, description);
  block.option_value(kInterfaceResolution, kNanoseconds);
  if (!filter.empty()) block.option(kInterfaceFilter, std::string(1, kFilterIsText) + filter);
  block.end_options();
}

void put_frame(Bytes &out, uint32_t interface, const SeenFrame &frame, uint64_t missed) {
  Block block(out, kFrameBlock);
  block.put(interface);
  block.put_time(frame.time);
  block.put(frame.length);
  block.put(frame.length);
  block.put_padded(frame.bytes, frame.length);
  if (!frame.comment.empty()) block.option(kComment, frame.comment);
  block.option_value(kFrameFlags, flags_of(frame));
  if (missed != 0) block.option_value(kFrameMissed, missed);
  block.end_options();
}

void put_statistics(Bytes &out, uint32_t interface, uint64_t time, uint64_t seen, uint64_t missed) {
  Block block(out, kStatisticsBlock);
  block.put(interface);
  block.put_time(time);
  block.option_value(kStatisticsSeen, seen);
  block.option_value(kStatisticsMissed, missed);
  block.end_options();
}

}  // namespace vchipd
