// SPDX-License-Identifier: MIT
// vchipctl as a user runs it: whole output and exit status.
#include "vchipctl.h"

#include <fstream>

namespace {

TEST_F(Vchipctl, LinksGoUpAndDown) {
  EXPECT_EQ(linked(0), "");
  expect_done("link up 3");
  EXPECT_EQ(linked(0), "2");
  EXPECT_EQ(linked(1), "");
  expect_done("link up 25,1-2,p27");
  EXPECT_EQ(linked(0), "0 1 2 24 27");
  expect_done("link down 2,p27");
  EXPECT_EQ(linked(0), "0 2 24");
  expect_done("link up p0-p2,26 --unit 1");
  EXPECT_EQ(linked(1), "0 1 2 26");
  EXPECT_EQ(linked(0), "0 2 24");
  expect_done("link up 1-26");
  EXPECT_EQ(linked(0), "0 1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16 17 18 19 20 21 22 23 24 26");
  expect_done("reset");
  EXPECT_EQ(linked(0), "");
}

TEST_F(Vchipctl, Partners) {
  const char *usual = R"({"autonegotiation":true,"ability":{"word":4127195136,"modes":
      ["10-half","10-full","100-half","100-full","1000-full","pause"]}})";
  expect_done("link up 1");
  expect_done("link up 2 --partner 10-full,100-half,pause");
  expect_done("link up 3 --forced 100-full");
  const json ports = dump("--unit 0 --block port");
  EXPECT_EQ(ports[0]["partner"], json::parse(usual));
  EXPECT_EQ(ports[1]["link"], json::parse(R"({"up":true,"speed":1,"duplex":0})"));
  EXPECT_EQ(ports[1]["partner"]["ability"]["modes"],
            json::parse(R"(["10-full","100-half","pause"])"));
  EXPECT_EQ(ports[2]["partner"]["autonegotiation"], false);
  EXPECT_EQ(ports[2]["link"], json::parse(R"({"up":true,"speed":1,"duplex":0})"));
}

TEST_F(Vchipctl, AWrongPortLeavesTheRightOnesAlone) {
  for (const char *ports :
       {"1,2,27", "1,0", "1,x", "1,p28", "1,5-3", "1,", "1-p3", "1,3-", "1,3 9"})
    EXPECT_EQ(run(std::string("link up ") + ports).status, 1) << ports;
  expect_wrong("medium 25,1 fibre", "port '1' has no fibre side: expected a combo port, 25 or 26");
  EXPECT_EQ(linked(0), "");
  EXPECT_EQ(medium(0, 24), "copper");
}

TEST_F(Vchipctl, WrongPortsAreNamed) {
  const std::string range = ": expected 1 to 26, or p0 to p27";
  expect_wrong("link up 27", "no front port '27'" + range);
  expect_wrong("link up 0", "no front port '0'" + range);
  expect_wrong("link down 1,99999999999", "no front port '99999999999'" + range);
  expect_wrong("link down 3x", "no front port '3x'" + range);
  expect_wrong("link up p29", "no chip port 'p29': expected p0 to p27");
  expect_wrong("link up p", "no chip port 'p': expected p0 to p27");
  expect_wrong("link up p28", "'p28' is the CPU port, which has no cable: expected p0 to p27");
  expect_wrong("link up 7-5", "bad port range '7-5': expected A-B or pA-pB, rising");
  expect_wrong("medium p25 fibre", "port 'p25' has no fibre side: expected a combo port, 25 or 26");
}

TEST_F(Vchipctl, WrongWordsAreNamed) {
  const std::string all =
      "expected reset, dump, status, check, convert, diff, link, medium, learn, mark, rule-count, "
      "time, pair, counter, storm, send, explain, play, drops, queues, wire, wires, capture, "
      "extcap, lab, trace, help";
  expect_wrong("", "a command is missing: " + all);
  expect_wrong("rest", "'rest' does not belong here: " + all);
  expect_wrong("link", "a command is missing: expected up, down");
  expect_wrong("link sideways 3", "'sideways' does not belong here: expected up, down");
  expect_wrong("link up", "PORTS is required");
  expect_wrong("link up 3 4", "'4' does not belong here");
  expect_wrong("link up 3 --speed 10", "'--speed' does not belong here");
  expect_wrong("link up 3 --unit 2", "no unit '2': expected 0 or 1");
  expect_wrong("dump --unit x", "no unit 'x': expected 0 or 1");
  // The rest of the sentence is every block of the unit.
  const Answer unknown_block = run("dump --block ports");
  EXPECT_EQ(unknown_block.status, 1);
  EXPECT_EQ(
      unknown_block.output.find("vchipctl: no block 'ports': expected platform, rules, acl, "), 0u)
      << unknown_block.output;
  expect_wrong("dump --unit 0 --block platform", "block 'platform' belongs to no unit");
  expect_wrong("dump --unit 0 --block rules", "block 'rules' belongs to no unit");
  expect_wrong("medium 25 glass", "no medium 'glass': expected copper or fibre");
  expect_wrong("trace maybe", "no trace command 'maybe': expected on, off or show");
}

TEST_F(Vchipctl, WrongPartnersAreNamed) {
  expect_wrong("link up 3 --partner fast",
               "no ability 'fast': expected 10-half, 10-full, 100-half, 100-full, 1000-half, "
               "1000-full, pause, asymmetric-pause");
  expect_wrong("link up 3 --partner pause",
               "no mode in 'pause': a partner needs one, such as 100-full");
  expect_wrong("link up 3 --forced pause", "'pause' is no mode: expected one such as 100-full");
  expect_wrong("link up 3 --forced 10-full --partner 10-full",
               "--partner and --forced exclude each other");
}

TEST_F(Vchipctl, Medium) {
  expect_done("medium 25 fibre");
  expect_done("medium p26 fibre --unit 1");
  EXPECT_EQ(medium(0, 24), "fibre");
  EXPECT_EQ(medium(0, 26), "copper");
  EXPECT_EQ(medium(1, 26), "fibre");
  expect_done("medium 25 copper");
  EXPECT_EQ(medium(0, 24), "copper");
}

TEST_F(Vchipctl, Trace) {
  EXPECT_EQ(run("trace show").output, "trace is off, 0 records\n");
  expect_done("trace on");
  EXPECT_EQ(run("trace show").output, "trace is on, 0 records\n");
  EXPECT_EQ(dump("--block platform")["trace_on"], true);
  expect_done("trace off");
  EXPECT_EQ(dump("--block platform")["trace_on"], false);
}

TEST_F(Vchipctl, PartsOfTheDump) {
  const json whole = dump();
  EXPECT_EQ(whole["image"], image_);
  EXPECT_EQ(dump("--unit 1"), whole["units"][1]);
  EXPECT_EQ(dump("--unit 1 --block rate"), whole["units"][1]["rate"]);
  EXPECT_EQ(dump("--block platform"), whole["platform"]);
  const json rates = dump("--block rate");
  ASSERT_EQ(rates.size(), 2u);
  EXPECT_EQ(rates[1], json({{"unit", 1}, {"rate", whole["units"][1]["rate"]}}));
  const std::string compact = run("dump --compact").output;
  EXPECT_EQ(compact.find('\n'), compact.size() - 1);
  EXPECT_EQ(json::parse(compact), whole);
}

TEST_F(Vchipctl, TheImageIsNamedByOptionOrEnvironment) {
  const std::string other = directory_ + "/other.img";
  expect_done("--image " + other + " link up 1");
  EXPECT_FALSE(std::filesystem::exists(image_));
  expect_done("link up 2 --image " + other);
  setenv("VCHIP_IMAGE", other.c_str(), 1);
  EXPECT_EQ(linked(0), "0 1");
  unsetenv("VCHIP_IMAGE");
  expect_wrong("reset", "no image: give --image FILE or set VCHIP_IMAGE");
}

TEST_F(Vchipctl, HelpNeedsNoImage) {
  unsetenv("VCHIP_IMAGE");
  const Answer help = run("help");
  EXPECT_EQ(help.status, 0);
  for (const char *word : {"reset", "dump", "link", "medium", "learn", "mark", "time", "trace",
                           "--image", "--compact"})
    EXPECT_NE(help.output.find(word), std::string::npos) << word;
  EXPECT_EQ(run("--help").status, 0);
  EXPECT_NE(run("link up --help").output.find("--forced"), std::string::npos);
}

TEST_F(Vchipctl, StationsAreLearnedMarkedAndAge) {
  expect_done("learn 02:00:5e:00:00:01 --port 3 --vlan 10 --trunk 4 --unit 1");
  expect_done("mark 02:00:5e:00:00:01 --vlan 10 --unit 1 --state 0x80000001 --aux 7");
  expect_done("time 299 --unit 1");
  const json learned = dump("--unit 1 --block l2")["addresses"];
  ASSERT_EQ(learned.size(), 1u);
  EXPECT_EQ(learned[0]["mac"], "02:00:5e:00:00:01");
  EXPECT_EQ(learned[0]["vid"], 10);
  EXPECT_EQ(learned[0]["port"], 2);
  EXPECT_EQ(learned[0]["trunk"], 4);
  EXPECT_EQ(learned[0]["state"], 0x80000001);
  EXPECT_EQ(learned[0]["aux"], 7);
  EXPECT_EQ(learned[0]["age"], 299);
  EXPECT_EQ(dump("--unit 0 --block l2")["addresses"].size(), 0u);
  expect_done("time 1 --unit 1");
  EXPECT_EQ(dump("--unit 1 --block l2")["addresses"].size(), 0u);
}

TEST_F(Vchipctl, WrongStations) {
  expect_wrong("learn 02:00:5e:00:00 --port 3",
               "no address '02:00:5e:00:00': expected one such as 02:00:5e:00:00:01");
  expect_wrong("learn 02:00:5e:00:00:+1 --port 3",
               "no address '02:00:5e:00:00:+1': expected one such as 02:00:5e:00:00:01");
  expect_wrong("learn 02:00:5e:00:00:01 --port 1-2", "a station sends into one port, not '1-2'");
  expect_wrong("learn 02:00:5e:00:00:01 --port 3 --vlan 4096",
               "no VLAN '4096': expected 0 to 4095");
  expect_wrong("time soon", "no number of seconds 'soon': expected 0 to 4294967295");
  EXPECT_EQ(run("mark 02:00:5e:00:00:01").output,
            "vchipctl: the layer-2 table has no such entry\n");
  EXPECT_EQ(run("mark 02:00:5e:00:00:01").status, 2);
}

TEST_F(Vchipctl, AFullDiskIsNotSuccess) {
  const Answer result = run("dump > /dev/full");
  EXPECT_EQ(result.status, 2);
}

TEST_F(Vchipctl, PairsOfWires) {
  expect_done("pair 3,5 A,C-D open,crosstalk --length 1250");
  const json cables = dump("--unit 0 --block cable");
  const json broken = json::parse(R"({"faults":["open","crosstalk"],"length_cm":1250})");
  const json whole = json::parse(R"({"faults":[],"length_cm":0})");
  for (const size_t port : {2u, 4u}) {
    EXPECT_EQ(cables[port]["pairs"], json::array({broken, whole, broken, broken}));
  }
  EXPECT_EQ(cables[3]["pairs"][0], whole);
  expect_done("pair 3 A none --unit 0");
  EXPECT_EQ(dump("--unit 0 --block cable")[2]["pairs"][0], whole);
  expect_wrong("pair 3 E open", "no pair 'E': expected A to D, or lists and ranges of them");
  expect_wrong("pair 3 D-B open", "bad pair range 'D-B': expected rising");
  expect_wrong("pair 3 A wet",
               "no fault 'wet': expected none, or a list of open, short, mismatch, crosstalk");
}

TEST_F(Vchipctl, CountersAndStorms) {
  expect_done("counter 3 1 set 18446744073709551615");
  expect_done("counter 3 1 add 2");
  expect_done("storm 3 4");
  EXPECT_EQ(dump("--unit 0 --block counter")[2]["counters"],
            json::parse(R"([{"counter":1,"name":"rx-unicast","value":"1"}])"));
  EXPECT_EQ(dump("--unit 0 --block rate")["ports"][2]["storm"][4]["exceeded"], true);
  expect_wrong("counter 3 1 double 2", "no counter command 'double': expected set or add");
  expect_wrong("counter 3 48 set 1", "no counter '48': expected 0 to 47");
  expect_wrong("storm 3 5", "no storm type '5': expected 0 to 4");
  expect_done("rule-count 5 18446744073709551615 0x10");
  const json counted = dump("--unit 0 --block acl_count");
  EXPECT_NE(counted.dump().find("18446744073709551615"), std::string::npos) << counted;
}

// Every place for a number, as # in a command that is right but for it.
constexpr const char *kNumberPlaces[] = {
    "counter 3 1 set #",
    "counter 3 1 add #",
    "counter 3 # set 1",
    "counter # 1 set 1",
    "counter 3 1 set 1 --unit #",
    "storm 3 #",
    "storm # 1",
    "storm 3 1 --unit #",
    "rule-count # 1 1",
    "rule-count 1 # 1",
    "rule-count 1 1 #",
    "rule-count 1 1 1 --unit #",
    "pair # A open",
    "pair 3 A open --length #",
    "pair 3 A open --unit #",
    "time #",
    "time 1 --unit #",
    "learn 02:00:5e:00:00:01 --port #",
    "learn 02:00:5e:00:00:01 --port 3 --vlan #",
    "learn 02:00:5e:00:00:01 --port 3 --trunk #",
    "learn 02:00:5e:00:00:01 --port 3 --unit #",
    "mark 02:00:5e:00:00:01 --vlan #",
    "mark 02:00:5e:00:00:01 --state #",
    "mark 02:00:5e:00:00:01 --aux #",
    "mark 02:00:5e:00:00:01 --unit #",
    "link up #",
    "link up 1-#",
    "link up p#",
    "link up 3 --unit #",
    "link down #",
    "link down 3 --unit #",
    "medium # fibre",
    "medium 25 fibre --unit #",
    "dump --unit #",
    "send # ffffffffffff0200000000010800",
    "send 1 ffffffffffff0200000000010800 --unit #",
    "explain # ffffffffffff0200000000010800",
    "explain 1 ffffffffffff0200000000010800 --unit #",
    "drops show #",
    "drops clear #",
    "drops --unit #",
    "queues #",
    "queues --unit #",
};

// A word is wrong wherever it is; that all words are told apart from
// numbers is looked at in one place, for a command takes a while to start.
TEST_F(Vchipctl, ANumberIsANumber) {
  expect_done("reset");
  const std::string before = kept();
  for (const char *place : kNumberPlaces)
    for (const char *word : {"99999999999999999999", "010", ""}) expect_no_number(place, word);
  for (const char *word : {"-1", "1e3", "1.0", "+1", "1x", "0x", "0x1g", "-0", "00"})
    expect_no_number("counter 3 1 set #", word);
  EXPECT_TRUE(kept() == before);
}

}  // namespace
