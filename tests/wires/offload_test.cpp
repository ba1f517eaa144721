// SPDX-License-Identifier: MIT
// Packets whose sender left checksums and division to its interface.
#include "offload.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <vector>

using vchipd::OffloadHeader;
using Bytes = std::vector<uint8_t>;

namespace {

constexpr size_t kEthernet = 14;

void append16(Bytes &bytes, uint32_t value) {
  bytes.push_back(static_cast<uint8_t>(value >> 8));
  bytes.push_back(static_cast<uint8_t>(value));
}

uint32_t word(const Bytes &bytes, size_t place) {
  return uint32_t{bytes[place]} << 8 | bytes[place + 1];
}

// The sum of a header or packet with its checksum in place is 0xFFFF.
uint32_t folded_sum(const Bytes &bytes, size_t begin, size_t end, uint32_t sum = 0) {
  for (size_t place = begin; place < end; ++place)
    sum += place % 2 == begin % 2 ? uint32_t{bytes[place]} << 8 : bytes[place];
  while (sum > 0xFFFF) sum = (sum & 0xFFFF) + (sum >> 16);
  return sum;
}

struct Shape {
  bool ip4;
  bool tcp;
  size_t tag_bytes;
  size_t payload;
};

size_t network_of(const Shape &shape) {
  return kEthernet + shape.tag_bytes;
}
size_t transport_of(const Shape &shape) {
  return network_of(shape) + (shape.ip4 ? 20 : 40);
}
size_t payload_of(const Shape &shape) {
  return transport_of(shape) + (shape.tcp ? 20 : 8);
}

// FIN, PSH, ACK and CWR are set, and every checksum is wrong.
Bytes packet_of(const Shape &shape) {
  Bytes bytes(12, 0x22);
  if (shape.tag_bytes != 0) append16(bytes, 0x8100), append16(bytes, 10);
  append16(bytes, shape.ip4 ? 0x0800 : 0x86DD);
  const size_t transport = (shape.tcp ? 20 : 8) + shape.payload;
  const uint8_t protocol = shape.tcp ? 6 : 17;
  if (shape.ip4) {
    append16(bytes, 0x4500), append16(bytes, static_cast<uint32_t>(20 + transport));
    append16(bytes, 0xFFFE), append16(bytes, 0x4000);
    bytes.push_back(64), bytes.push_back(protocol), append16(bytes, 0xBAD);
    bytes.insert(bytes.end(), {10, 0, 0, 1, 10, 0, 0, 2});
  } else {
    append16(bytes, 0x6000), append16(bytes, 0);
    append16(bytes, static_cast<uint32_t>(transport));
    bytes.push_back(protocol), bytes.push_back(64);
    for (int place = 0; place < 32; ++place) bytes.push_back(static_cast<uint8_t>(0xF0 + place));
  }
  append16(bytes, 1000), append16(bytes, 2000);
  if (shape.tcp) {
    bytes.insert(bytes.end(), {0xFF, 0xFF, 0xFF, 0xF0, 0, 0, 0, 1, 0x50, 0x99, 1, 0});
    append16(bytes, 0xBAD), append16(bytes, 0);
  } else {
    append16(bytes, static_cast<uint32_t>(transport)), append16(bytes, 0xBAD);
  }
  for (size_t place = 0; place < shape.payload; ++place)
    bytes.push_back(static_cast<uint8_t>(place * 7));
  return bytes;
}

uint32_t pseudo_sum(const Shape &shape, const Bytes &frame) {
  const size_t addresses = network_of(shape) + (shape.ip4 ? 12 : 8);
  const auto length = static_cast<uint32_t>(frame.size() - transport_of(shape));
  return folded_sum(frame, addresses, addresses + (shape.ip4 ? 8 : 32),
                    length + (shape.tcp ? 6 : 17));
}

OffloadHeader header_of(const Shape &shape, uint16_t size) {
  OffloadHeader header = {};
  header.division = vchipd::kDividedUdp;
  if (shape.tcp) header.division = shape.ip4 ? vchipd::kDividedTcp4 : vchipd::kDividedTcp6;
  header.division_size = size;
  header.checksum_start = static_cast<uint16_t>(transport_of(shape));
  return header;
}

struct Divided {
  bool done;
  std::vector<Bytes> frames;
};

Divided divide(const OffloadHeader &header, const Bytes &packet) {
  Divided result = {};
  result.frames.reserve(100);  // the memory of each stays where it is
  result.done =
      vchipd::divide(header, packet.data(), static_cast<uint32_t>(packet.size()),
                     [&](uint32_t length) { return result.frames.emplace_back(length).data(); });
  return result;
}

class Division : public testing::TestWithParam<Shape> {};

TEST_P(Division, GivesWholeFramesWithRightChecksums) {
  const Shape shape = GetParam();
  const Bytes packet = packet_of(shape);
  const Divided result = divide(header_of(shape, 1000), packet);
  ASSERT_TRUE(result.done);
  ASSERT_EQ(result.frames.size(), (shape.payload + 999) / 1000);
  Bytes payload;
  for (const Bytes &frame : result.frames) {
    const size_t network = network_of(shape), transport = transport_of(shape);
    EXPECT_EQ(Bytes(frame.begin(), frame.begin() + static_cast<long>(network)),
              Bytes(packet.begin(), packet.begin() + static_cast<long>(network)));
    if (shape.ip4) {
      EXPECT_EQ(word(frame, network + 2), frame.size() - network);
      EXPECT_EQ(folded_sum(frame, network, transport), 0xFFFFu);
    } else {
      EXPECT_EQ(word(frame, network + 4), frame.size() - transport);
    }
    if (!shape.tcp) EXPECT_EQ(word(frame, transport + 4), frame.size() - transport);
    EXPECT_EQ(folded_sum(frame, transport, frame.size(), pseudo_sum(shape, frame)), 0xFFFFu);
    payload.insert(payload.end(), frame.begin() + static_cast<long>(payload_of(shape)),
                   frame.end());
  }
  EXPECT_EQ(payload, Bytes(packet.begin() + static_cast<long>(payload_of(shape)), packet.end()));
}

INSTANTIATE_TEST_SUITE_P(Packets, Division,
                         testing::Values(Shape{true, true, 0, 2500}, Shape{true, true, 4, 3000},
                                         Shape{false, true, 0, 2001}, Shape{false, true, 4, 999},
                                         Shape{true, false, 0, 2500},
                                         Shape{false, false, 4, 1001}));

TEST(Division, CountsSequenceNumbersAndIdentificationsOn) {
  const Shape shape = {true, true, 0, 2500};
  const std::vector<Bytes> frames = divide(header_of(shape, 1000), packet_of(shape)).frames;
  ASSERT_EQ(frames.size(), 3u);
  const size_t sequence = transport_of(shape) + 4, identification = network_of(shape) + 4;
  EXPECT_EQ(word(frames[0], sequence), 0xFFFFu);
  EXPECT_EQ(word(frames[0], sequence + 2), 0xFFF0u);
  EXPECT_EQ(word(frames[1], sequence), 0u);
  EXPECT_EQ(word(frames[1], sequence + 2), 984u);
  EXPECT_EQ(word(frames[2], sequence + 2), 1984u);
  EXPECT_EQ(word(frames[0], identification), 0xFFFEu);
  EXPECT_EQ(word(frames[2], identification), 0u);
}

// FIN and PSH belong to the last frame, CWR to the first.
TEST(Division, GivesFlagsToTheFrameThatTheyBelongTo) {
  const Shape shape = {true, true, 0, 2500};
  const std::vector<Bytes> frames = divide(header_of(shape, 1000), packet_of(shape)).frames;
  ASSERT_EQ(frames.size(), 3u);
  const size_t flags = transport_of(shape) + 13;
  EXPECT_EQ(frames[0][flags], 0x90);
  EXPECT_EQ(frames[1][flags], 0x10);
  EXPECT_EQ(frames[2][flags], 0x19);
}

TEST(Division, RefusesWhatItDoesNotKnow) {
  const Shape shape = {true, true, 0, 2500};
  const Bytes packet = packet_of(shape);
  OffloadHeader header = header_of(shape, 0);
  EXPECT_FALSE(divide(header, packet).done) << "no size";
  header = header_of(shape, 1000);
  header.division = 3;
  EXPECT_FALSE(divide(header, packet).done) << "fragments";
  header = header_of(shape, 1000);
  header.checksum_start = 4000;
  EXPECT_FALSE(divide(header, packet).done) << "headers beyond the end";
  header.checksum_start = 20;
  EXPECT_FALSE(divide(header, packet).done) << "headers inside the network's";
  Bytes other = packet;
  other[12] = 0x88;
  EXPECT_FALSE(divide(header_of(shape, 1000), other).done) << "no IP";
  Bytes liar = packet;
  liar[transport_of(shape) + 12] = 0xF0;
  liar.resize(payload_of(shape) + 10);
  EXPECT_FALSE(divide(header_of(shape, 1000), liar).done) << "options beyond the end";
}

// Every prefix of a packet, with any header: nothing is read or written outside.
TEST(Division, StaysInsideThePacket) {
  const Shape shape = {false, true, 4, 300};
  const Bytes packet = packet_of(shape);
  for (size_t length = 0; length < packet.size(); ++length) {
    const Bytes part(packet.begin(), packet.begin() + static_cast<long>(length));
    EXPECT_EQ(divide(header_of(shape, 100), part).done, length >= payload_of(shape)) << length;
  }
}

TEST(Checksum, IsCompleted) {
  for (const bool tcp : {true, false}) {
    const Shape shape = {true, tcp, 0, 301};
    Bytes packet = packet_of(shape);
    const size_t transport = transport_of(shape), field = transport + (tcp ? 16 : 6);
    const uint32_t pseudo = pseudo_sum(shape, packet);
    packet[field] = static_cast<uint8_t>(pseudo >> 8);
    packet[field + 1] = static_cast<uint8_t>(pseudo);
    OffloadHeader header = header_of(shape, 0);
    header.checksum_offset = static_cast<uint16_t>(field - transport);
    ASSERT_TRUE(
        vchipd::complete_checksum(header, packet.data(), static_cast<uint32_t>(packet.size())));
    EXPECT_EQ(folded_sum(packet, transport, packet.size(), pseudo), 0xFFFFu) << tcp;
  }
}

TEST(Checksum, OutsideTheFrameIsRefused) {
  Bytes frame(60, 0);
  OffloadHeader header = {};
  header.checksum_start = 50;
  header.checksum_offset = 8;
  EXPECT_TRUE(vchipd::complete_checksum(header, frame.data(), 60));
  header.checksum_offset = 9;
  EXPECT_FALSE(vchipd::complete_checksum(header, frame.data(), 60));
  header.checksum_start = 0xFFFF;
  EXPECT_FALSE(vchipd::complete_checksum(header, frame.data(), 60));
}

}  // namespace
