// SPDX-License-Identifier: MIT
// vchipctl send, explain, drops and queues on frames given as words.
#include <swctl-vchip/frame.h>

#include "vchipctl.h"

namespace {

// Broadcast, from 02:00:00:00:00:01: who-has 10.0.0.2 tell 10.0.0.1.
const std::string kArp =
    "ffffffffffff020000000001"
    "08060001080006040001"
    "020000000001"
    "0a000001"
    "000000000000"
    "0a000002";
const std::string kArpSent = kArp + std::string(36, '0');  // padded to 60 bytes
// The same in VLAN 100 with priority 5.
const std::string kTaggedArp = kArp.substr(0, 24) + "8100a064" + kArp.substr(24);
const std::string kLldp = "0180c200000e02000000000188cc" + std::string(92, '0');

class VchipctlFrames : public Vchipctl {
 protected:
  void SetUp() override {
    Vchipctl::SetUp();
    expect_done("link up 1-3");
  }
  static void configure(const std::string &line) {
    EXPECT_EQ(system((SWCTL_COMMAND " " + line).c_str()), 0) << line;
  }
  static json clock() { return dump("--unit 0 --block time")["clock"]; }
};

TEST_F(VchipctlFrames, SendPrintsALineForEachFrameThatLeaves) {
  EXPECT_EQ(printed("send 1 " + kArp),
            "0 " + kArpSent + "\n2 " + kArpSent + "\n3 " + kArpSent + "\n");
  // The next one is known and leaves by one port.
  const std::string reply = "020000000001020000000002" + kArp.substr(24);
  EXPECT_EQ(printed("send 2 " + reply), "1 " + reply + std::string(36, '0') + "\n");
  // In the order of arrival, and of capital digits too.
  const std::string both = printed("send 2 " + reply + " 020000000001020000000002ABCD");
  EXPECT_EQ(both, "1 " + reply + std::string(36, '0') + "\n1 020000000001020000000002abcd" +
                      std::string(92, '0') + "\n");
  EXPECT_EQ(printed("send 7 " + kArp), "");
}

TEST_F(VchipctlFrames, SendAsJson) {
  const json sent = json::parse(printed("send 1 -j " + kArp));
  const json expected = {{"frames",
                          {{{"port", 0}, {"bytes", kArpSent}, {"reason", nullptr}},
                           {{"port", 2}, {"bytes", kArpSent}, {"reason", nullptr}},
                           {{"port", 3}, {"bytes", kArpSent}, {"reason", nullptr}}}}};
  EXPECT_EQ(sent, expected);
  expect_done("link up p27");
  expect_done("link down 2-3");
  const json ports = json::parse(printed("send 1 --json " + kArp))["frames"];
  ASSERT_EQ(ports.size(), 2u);
  EXPECT_EQ(ports[1]["port"], "p27");
  EXPECT_EQ(json::parse(printed("send 7 -j " + kArp)), json::parse(R"({"frames":[]})"));
}

TEST_F(VchipctlFrames, TheProcessorSendsAndIsTold) {
  EXPECT_EQ(printed("send 0 " + kArp),
            "1 " + kArpSent + "\n2 " + kArpSent + "\n3 " + kArpSent + "\n");
  EXPECT_EQ(printed("send p28 " + kArp), printed("send 0 " + kArp));
  EXPECT_EQ(printed("send p0 " + kArp), printed("send 1 " + kArp));
}

TEST_F(VchipctlFrames, UnitsHaveTheirOwnFrames) {
  EXPECT_EQ(printed("send 1 --unit 1 " + kArp), "");
  EXPECT_EQ(json::parse(printed("drops -j 1"))[0]["counts"]["received"], 0);
  EXPECT_EQ(json::parse(printed("drops -j 1 --unit 1"))[0]["counts"]["port"], 1);
}

TEST_F(VchipctlFrames, WrongFramesAreNamedAndChangeNothing) {
  const std::string before = kept();
  expect_wrong("send 1", "a frame is missing: expected HEX or --pcap FILE");
  expect_wrong("send 1 abc", "no frame 'abc': an odd number of digits");
  expect_wrong("send 1 " + kArp + " 12g4",
               "no frame '12g4': expected hexadecimal digits, two a byte");
  expect_wrong("send 1 " + kArp + " 0x12",
               "no frame '0x12': expected hexadecimal digits, two a byte");
  for (const char *digit : {"@", "/", ":", "'`'", "' '", "\x19", "G"})
    EXPECT_EQ(run("send 1 " + kArp + " 0" + digit).status, 1) << digit;
  expect_wrong("send 1 " + kArp + " ''", "frame '' has 0 bytes: expected 14 to 16379");
  expect_wrong("send 1 " + kArp + " ffffffffffff02000000000108",
               "frame 'ffffffffffff02000000000108' has 13 bytes: expected 14 to 16379");
  expect_wrong("send 1 " + std::string(2 * (VCHIP_FRAME_MAX + 1), 'a'),
               "frame '" + std::string(40, 'a') + "...' has 16380 bytes: expected 14 to 16379");
  for (const char *port : {"27", "p29", "1-2", "1,2", "x"})
    EXPECT_EQ(run(std::string("send ") + port + ' ' + kArp).status, 1) << port;
  expect_wrong("send 27 " + kArp, "no port '27': expected 1 to 26, 0 the CPU, or p0 to p27");
  expect_wrong("send 1 --filter arp " + kArp, "--filter needs --pcap");
  const std::string second = "ffffffffffff0200000000010800";
  expect_wrong("explain 1 " + kArp + ' ' + second,
               "'" + second + "' does not belong here: explain takes one frame");
  EXPECT_TRUE(kept() == before);
}

// What an egress limit holds back is lost with the process, unless the clock
// is let run.
TEST_F(VchipctlFrames, FramesThatWait) {
  expect_done("link down 2-3");
  expect_done("link up 2");
  configure("port set 2 egress 64kbit");
  std::string frames;
  for (int count = 0; count < 300; ++count) frames += " " + kArp;
  const auto lines = [](const std::string &text, const std::string &wanted) {
    size_t count = 0;
    for (size_t at = 0; (at = text.find(wanted, at)) != std::string::npos; ++at) ++count;
    return count;
  };
  const std::string held = printed("send 1" + frames);
  EXPECT_EQ(lines(held, "\n2 "), 256u);  // the bucket of 16,384 bytes
  EXPECT_EQ(lines(held, "vchipctl: frames still wait in queues and are lost"), 1u);
  EXPECT_EQ(clock(), 0);
  const std::string drained = printed("send 1 --drain" + frames);
  EXPECT_EQ(lines(drained, "\n2 "), 300u);
  EXPECT_EQ(lines(drained, "vchipctl"), 0u);
  // 300 frames of 64 bytes at 64 kbit/s; the bucket was empty, and the frames
  // that were lost have taken nothing from it.
  EXPECT_EQ(clock(), 300 * 64 * 8 * 1000000ull / 64);
}

TEST_F(VchipctlFrames, ExplainIsForReading) {
  expect_done("link down 3");
  EXPECT_EQ(
      printed("explain 1 " + kArp),
      "in port 1: 02:00:00:00:00:01 > ff:ff:ff:ff:ff:ff, length 42, ARP who-has 10.0.0.2 tell "
      "10.0.0.1\n"
      "   port    pass      arrived at port 1\n"
      "   vlan    default   VLAN 1 by the default of port 1  (rtk_vlan_portPvid_set)\n"
      "   vlan    priority  internal priority 0 by the port's inner default  "
      "(rtk_qos_priSelGroup_set)\n"
      "   state   pass      port 1 forwards in instance 0  (rtk_stp_mstpState_set)\n"
      "   learn   learned   02:00:00:00:00:01 in VLAN 1 on port 1\n"
      "   lookup  flood     broadcast goes to ports 0-26,p25,p27 as far as they are in VLAN 1  "
      "(rtk_l2_lookupMissFloodPortMask_set_with_idx)\n"
      "   egress  without   port 1: where the frame came from\n"
      "   egress  without   ports 3-26,p25,p27: disabled or without a link  "
      "(rtk_port_adminEnable_set)\n"
      "=> egress  forward   leaves by ports 0,2\n"
      "   tags    untagged  port 2: untagged  (rtk_vlan_port_set)\n"
      "   tags    untagged  the CPU port: untagged  (rtk_vlan_port_set)\n"
      "out port 0: 02:00:00:00:00:01 > ff:ff:ff:ff:ff:ff, length 60, ARP who-has 10.0.0.2 tell "
      "10.0.0.1\n"
      "out port 2: 02:00:00:00:00:01 > ff:ff:ff:ff:ff:ff, length 60, ARP who-has 10.0.0.2 tell "
      "10.0.0.1\n");
  EXPECT_EQ(printed("explain 1 " + kTaggedArp),
            "in port 1: 02:00:00:00:00:01 > ff:ff:ff:ff:ff:ff, length 46, vlan 100 p 5, ARP "
            "who-has 10.0.0.2 tell 10.0.0.1\n"
            "   port    pass      arrived at port 1\n"
            "   vlan    tagged    VLAN 100 by its tag\n"
            "   vlan    priority  internal priority 0 by the inner tag  "
            "(rtk_qos_priSelGroup_set)\n"
            "=> filter  drop      there is no VLAN 100  (rtk_vlan_create)\n"
            "dropped at filter: there is no VLAN 100\n");
}

// The document, and that nothing of the chip changes; the outcome is what send
// then does.
TEST_F(VchipctlFrames, ExplainAsJsonChangesNothing) {
  const std::string before = kept();
  const json explained = json::parse(printed("explain 1 -j " + kArp));
  EXPECT_TRUE(kept() == before);
  EXPECT_EQ(explained["dropped"], nullptr);
  EXPECT_EQ(explained["steps"][0], json::parse(R"({"step":"port","decision":"pass",
      "why":"arrived at port 1","setting":null})"));
  json sent = json::parse(printed("send 1 -j " + kArp))["frames"];
  for (json &frame : sent) frame.erase("reason");
  EXPECT_EQ(explained["out"], sent);
  const json dropped = json::parse(printed("explain 1 -j " + kTaggedArp));
  EXPECT_EQ(dropped["dropped"], json::parse(R"({"step":"filter","why":"there is no VLAN 100"})"));
  EXPECT_EQ(dropped["out"], json::array());
}

TEST_F(VchipctlFrames, Drops) {
  EXPECT_EQ(printed("drops"), "port  received  forwarded\n");
  printed("send 1 " + kArp + ' ' + kTaggedArp);
  printed("send 7 " + kArp);
  printed("send 0 " + kArp);
  EXPECT_EQ(printed("drops"),
            "port  received  forwarded  filter  port\n"
            "0            1          1       0     0\n"
            "1            2          1       1     0\n"
            "7            0          0       0     1\n");
  EXPECT_EQ(printed("drops show 3,p27"),
            "port  received  forwarded\n"
            "3            0          0\n"
            "p27          0          0\n");
  const json counts = json::parse(printed("drops -j 1"));
  ASSERT_EQ(counts.size(), 1u);
  EXPECT_EQ(counts[0]["port"], 1);
  EXPECT_EQ(counts[0]["counts"], dump("--unit 0 --block drops")[0]["counts"]);
  const json all = json::parse(printed("drops -j"));
  ASSERT_EQ(all.size(), size_t{VCHIP_PORTS});
  EXPECT_EQ(all[0]["port"], 0);
  EXPECT_EQ(all[28]["port"], "p27");
  expect_done("drops clear 1");
  EXPECT_EQ(printed("drops 0-1"),
            "port  received  forwarded\n"
            "0            1          1\n"
            "1            0          0\n");
  expect_done("drops clear");
  EXPECT_EQ(printed("drops show"), "port  received  forwarded\n");
}

TEST_F(VchipctlFrames, WrongWordsForDropsAndQueues) {
  expect_wrong("drops reset 1", "no drops command 'reset': expected show or clear");
  expect_wrong("drops reset", "no port 'reset': expected 1 to 26, 0 the CPU, or p0 to p27");
  expect_wrong("drops show 1 2", "'2' does not belong here");
  expect_wrong("queues 1 2", "'2' does not belong here");
  expect_wrong("queues show", "no port 'show': expected 1 to 26, 0 the CPU, or p0 to p27");
}

TEST_F(VchipctlFrames, Queues) {
  const std::string head =
      "port  queue  waiting        sent           bytes     dropped    share\n";
  EXPECT_EQ(printed("queues"), head);
  configure("vlan add 100 tagged 1-2");
  configure("qos tag set 5 internal 5");
  configure("qos map set 5 queue 5");
  printed("send 1 " + kTaggedArp + ' ' + kTaggedArp + ' ' + kTaggedArp + ' ' + kArp);
  EXPECT_EQ(printed("queues"),
            head +
                "0         0        0           1              64           0  100.0 %  "
                "####################\n"
                "2         0        0           1              64           0   25.0 %  #####\n"
                "2         5        0           3             192           0   75.0 %  "
                "###############\n"
                "3         0        0           1              64           0  100.0 %  "
                "####################\n");
  const json ports = json::parse(printed("queues 2 -j"));
  ASSERT_EQ(ports.size(), 1u);
  EXPECT_EQ(ports[0]["port"], 2);
  EXPECT_EQ(ports[0]["paused_until"], 0);
  ASSERT_EQ(ports[0]["queues"].size(), 8u);
  EXPECT_EQ(ports[0]["queues"][5], json::parse(R"({"queue":5,"waiting":0,"sent":3,"bytes":192,
      "dropped":0,"share":0.75})"));
  EXPECT_EQ(ports[0]["queues"][6]["share"], 0);
  expect_done("drops clear 2");
  EXPECT_EQ(json::parse(printed("queues 2 -j"))[0]["queues"][5]["sent"], 0);
}

TEST_F(VchipctlFrames, AReasonStandsAtTheProcessor) {
  configure("trap set lldp cpu ports 1");
  EXPECT_EQ(printed("send 1 " + kLldp), "0 " + kLldp + " lldp\n");
}

}  // namespace
