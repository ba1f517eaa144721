// SPDX-License-Identifier: MIT
// vchipctl play: what it says of scenarios that are not as expected.
#include "capture_file.h"
#include "vchipctl.h"

namespace {

// The digits of a broadcast.
std::string digits(uint8_t last) {
  char end[3];
  snprintf(end, sizeof end, "%02x", last);
  return "ffffffffffff02000000000188b5" + std::string(90, '0') + end;
}

constexpr const char *kLine = "02:00:00:00:00:01 > ff:ff:ff:ff:ff:ff, length 60, type 0x88b5";

class VchipctlPlay : public Vchipctl {
 protected:
  void SetUp() override {
    Vchipctl::SetUp();
    unsetenv("VCHIP_IMAGE");
    scenario_ = directory_ + "/two";
    std::filesystem::create_directories(scenario_ + "/in");
    std::filesystem::create_directories(scenario_ + "/out");
    write("about", "Port 2 gets what port 1 sends.\n");
    write("config", "vlan add 60 untagged 1-2\nport set 1-2 vlan 60\nvlan port del 1 1-2\n");
    in().write(scenario_ + "/in/1.pcap");
  }
  void write(const std::string &name, const std::string &text) const {
    std::ofstream(scenario_ + '/' + name) << text;
  }
  static CaptureFile in() { return CaptureFile().add(5, broadcast(1)).add(9, broadcast(2)); }
  void expect(const CaptureFile &out) const { out.write(scenario_ + "/out/2.pcap"); }
  std::string expected_frame(uint64_t time, uint8_t last) const {
    return "    expected  at " + std::to_string(time) + " ns  " + kLine + "\n              " +
           digits(last) + '\n';
  }
  std::string got_frame(uint64_t time, uint8_t last) const {
    return "    got       at " + std::to_string(time) + " ns  " + kLine + "\n              " +
           digits(last) + '\n';
  }
  void expect_different(const std::string &text) const {
    const Answer answer = run("play " + scenario_);
    EXPECT_EQ(answer.status, 2);
    EXPECT_EQ(answer.output,
              scenario_ + ": " + text + "vchipctl: 1 of 1 scenarios not as expected\n");
  }

  std::string scenario_;
};

TEST_F(VchipctlPlay, NeedsNoImageAndTouchesNone) {
  expect(in());
  const std::string equal = scenario_ + ": 2 frames in, 2 out, as expected\n";
  EXPECT_EQ(printed("play " + scenario_), equal);
  setenv("VCHIP_IMAGE", image_.c_str(), 1);
  EXPECT_EQ(printed("play " + scenario_ + ' ' + scenario_), equal + equal);
  EXPECT_FALSE(std::filesystem::exists(image_));
  const json document = json::parse(printed("play -j " + scenario_))["scenarios"][0];
  EXPECT_EQ(document["about"], "Port 2 gets what port 1 sends.");
  EXPECT_EQ(document["frames_out"], 2);
  EXPECT_EQ(document["differences"], json::array());
}

TEST_F(VchipctlPlay, LeavesNothingInTheFolderForTemporaryFiles) {
  expect(in());
  const std::string temporary = directory_ + "/tmp";
  std::filesystem::create_directory(temporary);
  setenv("TMPDIR", temporary.c_str(), 1);
  printed("play " + scenario_);
  EXPECT_EQ(run("play " + directory_ + "/none").status, 2);
  unsetenv("TMPDIR");
  EXPECT_TRUE(std::filesystem::is_empty(temporary));
}

TEST_F(VchipctlPlay, OtherBytesOtherTimes) {
  expect(CaptureFile().add(5, broadcast(1)).add(9, broadcast(3)));
  expect_different(
      "2 frames in, 2 out, 1 not as expected\n  Port 2 gets what port 1 sends.\n"
      "  port 2, frame 2 differs\n" +
      expected_frame(9, 3) + got_frame(9, 2));
  expect(CaptureFile().add(5, broadcast(1)).add(8, broadcast(2)));
  expect_different(
      "2 frames in, 2 out, 1 not as expected\n  Port 2 gets what port 1 sends.\n"
      "  port 2, frame 2 differs\n" +
      expected_frame(8, 2) + got_frame(9, 2));
}

TEST_F(VchipctlPlay, FramesTooManyAndTooFew) {
  expect(CaptureFile().add(9, broadcast(2)));
  expect_different(
      "2 frames in, 2 out, 1 not as expected\n  Port 2 gets what port 1 sends.\n"
      "  port 2, frame 1 one too many\n" +
      got_frame(5, 1));
  expect(CaptureFile().add(5, broadcast(1)).add(7, broadcast(7)).add(9, broadcast(2)));
  expect_different(
      "2 frames in, 2 out, 1 not as expected\n  Port 2 gets what port 1 sends.\n"
      "  port 2, frame 2 is missing\n" +
      expected_frame(7, 7));
  std::filesystem::remove(scenario_ + "/out/2.pcap");
  expect_different(
      "2 frames in, 2 out, 2 not as expected\n  Port 2 gets what port 1 sends.\n"
      "  port 2, frame 1 one too many\n" +
      got_frame(5, 1) + "  port 2, frame 2 one too many\n" + got_frame(9, 2));
  expect(in());
  CaptureFile().add(1, broadcast(4)).write(scenario_ + "/out/0.pcap");
  expect_different(
      "2 frames in, 2 out, 1 not as expected\n  Port 2 gets what port 1 sends.\n"
      "  port 0, frame 1 is missing\n" +
      expected_frame(1, 4));
}

TEST_F(VchipctlPlay, DifferencesAsJson) {
  expect(CaptureFile().add(5, broadcast(1)));
  const Answer answer = run("play -j " + scenario_);
  EXPECT_EQ(answer.status, 2);
  const json expected = {{{"port", 2},
                          {"frame", 2},
                          {"expected", nullptr},
                          {"got", {{"time", 9}, {"bytes", digits(2)}}}}};
  EXPECT_EQ(
      json::parse(answer.output.substr(0, answer.output.find('\n')))["scenarios"][0]["differences"],
      expected);
}

// What waits leaves in its time, as far as the clock is let run.
TEST_F(VchipctlPlay, TheClockRunsUntilTheEnd) {
  write("config",
        "vlan add 60 untagged 1-2\nport set 1-2 vlan 60\nvlan port del 1 1-2\n"
        "port set 2 egress 16kbit\n");
  CaptureFile many;
  CaptureFile out;
  constexpr uint64_t kFrames = 258;  // 256 of 64 bytes fit into the bucket
  constexpr uint64_t kEach = 64 * 8 * 1000000ull / 16;
  for (uint64_t count = 0; count < kFrames; ++count) {
    many.add(0, broadcast(7));
    out.add(count < 256 ? 0 : (count - 255) * kEach, broadcast(7));
  }
  many.write(scenario_ + "/in/1.pcap");
  expect(out);
  EXPECT_EQ(run("play " + scenario_).status, 2);
  write("until", std::to_string(2 * kEach - 1));
  EXPECT_NE(run("play " + scenario_).output.find("258 frames in, 257 out, 1 not"),
            std::string::npos);
  write("until", std::to_string(2 * kEach) + "\n");
  EXPECT_EQ(printed("play " + scenario_), scenario_ + ": 258 frames in, 258 out, as expected\n");
}

TEST_F(VchipctlPlay, FramesOfOneTimeGoInByRisingInterface) {
  write("config", "vlan add 60 untagged 1-3\nport set 1-3 vlan 60\nvlan port del 1 1-3\n");
  const auto put = [&](const std::string &name, const CaptureFile &capture) {
    capture.write(scenario_ + '/' + name);
  };
  // Port 26 is chip port 26, 25 is chip port 24; 3 sends before 10 would.
  put("in/3.pcap", CaptureFile().add(0, broadcast(3)));
  put("in/1.pcap", CaptureFile().add(0, broadcast(1)).add(1, broadcast(9)));
  put("out/2.pcap", CaptureFile().add(0, broadcast(1)).add(0, broadcast(3)).add(1, broadcast(9)));
  put("out/1.pcap", CaptureFile().add(0, broadcast(3)));
  put("out/3.pcap", CaptureFile().add(0, broadcast(1)).add(1, broadcast(9)));
  EXPECT_EQ(printed("play " + scenario_), scenario_ + ": 3 frames in, 6 out, as expected\n");
}

TEST_F(VchipctlPlay, FoldersThatAreNoScenarios) {
  const std::string end = "\nvchipctl: 1 of 1 scenarios not as expected";
  expect_refused("play " + directory_ + "/none", directory_ + "/none: no such folder" + end);
  expect_refused("play " + directory_, directory_ + ": no scenario: there is no file config" + end);
  write("in/27.pcap", "");
  const std::string wrong = ": expected the number of an interface and .pcap, such as 3.pcap";
  expect_refused("play " + scenario_, scenario_ + "/in/27.pcap" + wrong + end);
  std::filesystem::remove(scenario_ + "/in/27.pcap");
  write("out/p1.pcap", "");
  expect_refused("play " + scenario_, scenario_ + "/out/p1.pcap" + wrong + end);
  std::filesystem::remove(scenario_ + "/out/p1.pcap");
  write("until", "soon\n");
  expect_refused("play " + scenario_, scenario_ +
                                          "/until: no time 'soon': expected 0 to "
                                          "18446744073709551615" +
                                          end);
  expect_wrong("play", "DIR is required");
}

// One that is refused does not keep the others from being played.
TEST_F(VchipctlPlay, AConfigurationThatIsRefused) {
  expect(in());
  const std::string other = directory_ + "/other";
  std::filesystem::copy(scenario_, other, std::filesystem::copy_options::recursive);
  write("config", "vlan show\nvlan frobnicate\n");
  const std::string output = run("play " + scenario_ + ' ' + other).output;
  EXPECT_NE(output.find(scenario_ + "/config:2: "), std::string::npos) << output;
  EXPECT_NE(output.find("vchipctl: " + scenario_ + "/config: swctl ended with status 1\n"),
            std::string::npos)
      << output;
  const std::string end = other +
                          ": 2 frames in, 2 out, as expected\n"
                          "vchipctl: 1 of 2 scenarios not as expected\n";
  EXPECT_TRUE(output.ends_with(end)) << output;
}

}  // namespace
