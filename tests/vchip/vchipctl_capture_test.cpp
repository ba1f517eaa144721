// SPDX-License-Identifier: MIT
// vchipctl send and explain on captures.
#include "capture_file.h"
#include "vchipctl.h"

namespace {

constexpr uint64_t kSecond = 1000000000;

class VchipctlCapture : public Vchipctl {
 protected:
  void SetUp() override {
    Vchipctl::SetUp();
    expect_done("link up 1-2");
  }
  std::string file(const std::string &name) const { return directory_ + '/' + name; }
  static json clock() { return dump("--unit 0 --block time")["clock"]; }
  void expect_refused_capture(const CaptureFile &capture, const std::string &complaint,
                              size_t without = 0) {
    const std::string before = kept();
    const std::string name = capture.write(file("refused.pcap"), without);
    expect_refused("send 1 --pcap " + name, name + ": " + complaint);
    expect_refused("explain 1 --pcap " + name, name + ": " + complaint);
    EXPECT_TRUE(kept() == before);
  }
};

// The stamps of a capture count from 1970, the chip's clock from power-on: the
// first frame arrives now.
TEST_F(VchipctlCapture, StampsMoveTheClock) {
  const uint64_t today = 1700000000 * kSecond;
  const std::string name = CaptureFile()
                               .add(today, broadcast(1))
                               .add(today + 3 * kSecond + 7, broadcast(2))
                               .add(today + kSecond, broadcast(3))
                               .write(file("a.pcap"));
  const json sent = json::parse(printed("send 1 -j --pcap " + name))["frames"];
  ASSERT_EQ(sent.size(), 6u);
  for (size_t place = 0; place < 6; ++place) {
    EXPECT_EQ(sent[place]["port"], place % 2 == 0 ? 0 : 2);
    EXPECT_EQ(sent[place]["bytes"].get<std::string>().back(), "123"[place / 2]);
  }
  EXPECT_EQ(clock(), 3 * kSecond + 7);
  printed("send 1 --pcap " + name);
  EXPECT_EQ(clock(), 2 * (3 * kSecond + 7));
}

TEST_F(VchipctlCapture, AFilterChoosesFrames) {
  std::vector<uint8_t> arp = broadcast(2);
  arp[12] = 0x08;
  arp[13] = 0x06;
  const std::string name =
      CaptureFile().add(0, broadcast(1)).add(kSecond, arp).write(file("a.pcap"));
  EXPECT_EQ(json::parse(printed("send 1 -j --pcap " + name + " --filter arp"))["frames"].size(),
            2u);
  EXPECT_EQ(clock(), 0);
  const json explained =
      json::parse(printed("explain 1 -j --pcap " + name + " --filter 'arp or ip'"));
  ASSERT_EQ(explained["frames"].size(), 1u);
  EXPECT_EQ(explained["frames"][0]["number"], 2);
  EXPECT_EQ(explained["frames"][0]["dropped"], nullptr);
  EXPECT_EQ(printed("explain 1 --pcap " + name + " --filter 'vlan and arp'"), "");
  const Answer both = run("explain 1 --pcap " + name);
  EXPECT_NE(both.output.find("\n\nin port 1: "), std::string::npos) << both.output;
  expect_wrong("send 1 --pcap " + name + " --filter 'vlan arp ('",
               "bad filter 'vlan arp (': can't parse filter expression: syntax error");
  expect_wrong("send 1 00 --pcap " + name, "'00' does not belong here: --pcap gives the frames");
}

TEST_F(VchipctlCapture, WhatIsNoCaptureIsRefusedAndChangesNothing) {
  CaptureFile two = CaptureFile().add(0, broadcast(1)).add(1, broadcast(2));
  expect_refused_capture(two, "truncated dump file; tried to read 60 captured bytes, only got 55",
                         5);
  expect_refused_capture(two, "truncated dump file; tried to read 16 header bytes, only got 15",
                         61);
  expect_refused_capture(CaptureFile(101), "frames of link type RAW, not of Ethernet");
  expect_refused_capture(CaptureFile().add(0, broadcast(1)).add(0, broadcast(2), 99),
                         "frame 2 is cut off: 60 of its 99 bytes were captured");
  expect_refused_capture(CaptureFile().add(0, std::vector<uint8_t>(13)),
                         "frame 1 has 13 bytes: expected 14 to 16379");
  expect_refused_capture(CaptureFile().add(0, std::vector<uint8_t>(16380)),
                         "frame 1 has 16380 bytes: expected 14 to 16379");
  expect_refused("send 1 --pcap " + file("none"), file("none") + ": No such file or directory");
  std::ofstream(file("text")) << "hello, world, this is a text\n";
  expect_refused("send 1 --pcap " + file("text"), file("text") + ": unknown file format");
}

}  // namespace
