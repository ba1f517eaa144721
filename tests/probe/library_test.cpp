// SPDX-License-Identifier: MIT
// The library's own functions, seen by the probe.
#include <swctl-probe/probe.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <set>
#include <sstream>
#include <unistd.h>

#include "process.h"

namespace {

using Names = std::set<std::string>;

// Every function that the library exports.
Names exported() {
  Names names;
  for (const auto &entry : std::filesystem::recursive_directory_iterator(EXPORT_LISTS)) {
    if (entry.path().filename() != "exports.txt") continue;
    std::ifstream file(entry.path());
    for (std::string line; std::getline(file, line);) {
      std::istringstream words(line.substr(0, line.find('#')));
      std::string name;
      if (words >> name && name != "object") names.insert(name);
    }
  }
  return names;
}

// The arguments of a kind in the list that is made from the headers: "name" of
// "(upd, int32_t *, int32_t, name, 1, dec)".
std::string arguments_with(const std::string &beginning, const std::string &end) {
  std::ifstream file(LIBRARY_LIST);
  std::string found;
  for (std::string line; std::getline(file, line);) {
    const size_t open = line.find('(');
    if (!line.starts_with("SWCTL_LIBRARY_CALL")) continue;
    for (size_t at = line.find('(', open + 1); at != std::string::npos;
         at = line.find('(', at + 1)) {
      const std::string tuple = line.substr(at + 1, line.find(')', at) - at - 1);
      if (!tuple.starts_with(beginning) || !tuple.ends_with(end)) continue;
      std::istringstream parts(tuple);
      std::string part;
      for (int i = 0; i < 4; ++i) std::getline(parts, part, ',');
      found += part;
    }
  }
  return found;
}

class LibraryTest : public testing::Test {
 protected:
  const std::string file_ = testing::TempDir() + "swprobe_library_test." + std::to_string(getpid());

  void TearDown() override { std::remove(file_.c_str()); }

  static Outcome preloaded(const std::string &program, const std::string &words) {
    return run({program, "usual", PROBE_LIBRARY, {{"SWPROBE", words}}});
  }
  std::vector<std::string> traced(const std::string &words) const {
    preloaded(BOARD_PROGRAM, words + ",trace:library:" + file_);
    std::ifstream file(file_);
    std::vector<std::string> lines;
    for (std::string line; std::getline(file, line);) lines.push_back(line);
    return lines;
  }
};

TEST_F(LibraryTest, EveryFunctionIsSeen) {
  const Outcome plain = run({EVERY_FUNCTION, "", "", {{"VCHIP_LOG", "none"}}});
  ASSERT_EQ(plain.status, 0) << plain.error;
  const Outcome outcome = run({EVERY_FUNCTION,
                               "",
                               PROBE_LIBRARY,
                               {{"SWPROBE", "record:library:" + file_}, {"VCHIP_LOG", "none"}}});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.output, plain.output);
  Names seen;
  for (const swprobe::Call &call : swprobe::read_recording(file_))
    if (call.of_library) seen.insert(call.name);
  EXPECT_EQ(seen, exported());
  EXPECT_EQ(seen.size(), 409u);
}

// A header that is worded otherwise may say something else about an address.
TEST_F(LibraryTest, WhatTheHeadersSayOfAddresses) {
  std::string entries;
  for (int i = 0; i < 16; ++i) entries += " entry";
  EXPECT_EQ(arguments_with("upd", ""), entries + " limit scanIndex");
  EXPECT_EQ(arguments_with("val, void *", ""),
            " count destination reply out data data data data data data counters");
  EXPECT_EQ(arguments_with("val, const", ""), " message data mac mac");
  EXPECT_EQ(arguments_with("val, int32_t *", "") + arguments_with("val, uint", "*, 1, hex"),
            " present");
}

TEST_F(LibraryTest, CallsAreNestedOverWhatTheyDo) {
  const std::vector<std::string> lines = traced("only:user_port_link_status_get");
  ASSERT_EQ(lines.size(), 18u);
  const std::vector<std::string> first(lines.begin(), lines.begin() + 6);
  EXPECT_THAT(first, testing::ElementsAre(
                         "user_port_link_status_get(lead=0, unit=0, port=0) {",
                         "  rtk_port_link_get(unit=0, port=0, link=>0) = 0",
                         "  user_port_link_medium_get(lead=0, unit=0, port=0) {",
                         "    rtk_port_phyComboPortMedia_get(unit=0, port=0, media=>0) = 0",
                         "  } = 0, medium=>0", "} = 0, status=>0"));
}

TEST_F(LibraryTest, AFunctionWithoutCallsIsOneLine) {
  EXPECT_THAT(traced("only:user_trunk_init"), testing::ElementsAre("user_trunk_init(lead=5) = 0"));
}

// Its calls are not what was asked for, so it is one too.
TEST_F(LibraryTest, NothingIsShownThatAFilterLeavesOut) {
  EXPECT_TRUE(traced("only:user_vlan_create,port:99").empty());
}

TEST_F(LibraryTest, APlainTraceBesideItHasThePlatformsCallsAlone) {
  const Outcome outcome = preloaded(
      BOARD_PROGRAM, "trace,only:user_vlan_create,only:rtk_vlan_create,trace:library:" + file_);
  EXPECT_EQ(outcome.error, "rtk_vlan_create(unit=0, vid=10) = 0\n");
  EXPECT_EQ(text_of(file_),
            "user_vlan_create(lead=0, unit=0, vid=10) {\n"
            "  rtk_vlan_create(unit=0, vid=10) = 0\n"
            "} = 0\n");
}

TEST_F(LibraryTest, RecordsAreTakenApart) {
  const std::vector<std::string> lines = traced("only:user_vlan_port_get,only:user_stat_port_get");
  ASSERT_GE(lines.size(), 6u);
  EXPECT_EQ(lines[2],
            "} = 0, member.word=>[0x400000f 0x0 0x0 0x0 0x0 0x0 0x0 0x0], "
            "untagged.word=>[0xf 0x0 0x0 0x0 0x0 0x0 0x0 0x0]");
  EXPECT_THAT(lines.back(), testing::HasSubstr("value.high=>0, value.low=>0"));
}

TEST_F(LibraryTest, ARecordingSaysHowDeep) {
  preloaded(BOARD_PROGRAM, "record:library:" + file_ + ",only:user_port_link_status_get");
  std::string depths;
  for (const swprobe::Call &call : swprobe::read_recording(file_))
    depths += (call.of_library ? 'L' : 'p') + std::to_string(call.depth) + ' ';
  EXPECT_EQ(depths, "p1 p2 L1 L0 p1 p2 L1 L0 p1 p2 L1 L0 ");
}

// From a machine with wider addresses.
TEST_F(LibraryTest, AnyAddressCanBeRead) {
  std::ofstream(file_) << R"({"format":"swctl-calls","version":2})" << '\n'
                       << R"({"number":1,"call":"MSG_CreateMessage","arguments":{"header":null},)"
                       << R"("result":140737488355328,"made_up":false,"library":true,"depth":0})"
                       << '\n'
                       << R"({"number":2,"call":"user_stat_port_getAll","arguments":{)"
                       << R"("counters":{"in":140737488355328}},"result":-1,"made_up":false,)"
                       << R"("library":true,"depth":2})" << '\n';
  const std::vector<swprobe::Call> calls = swprobe::read_recording(file_);
  ASSERT_EQ(calls.size(), 2u);
  EXPECT_EQ(calls[0].line(), "MSG_CreateMessage(header=null) = 0x800000000000");
  EXPECT_EQ(calls[1].line(), "user_stat_port_getAll(counters=0x800000000000) = -1");
  EXPECT_EQ(calls[1].depth, 2);
}

// A probe that does nothing but record has a shorter way to the same lines.
TEST_F(LibraryTest, EitherWayOfRecordingWritesTheSame) {
  const std::string other = file_ + ".other";
  const auto record = [](const std::string &words) {
    return run({EVERY_FUNCTION, "", PROBE_LIBRARY, {{"SWPROBE", words}, {"VCHIP_LOG", "none"}}});
  };
  record("record:" + file_);
  record("trace:/dev/null,record:" + other);
  const std::string text = text_of(file_);
  EXPECT_GT(std::count(text.begin(), text.end(), '\n'), 1000);
  EXPECT_TRUE(text == text_of(other));
  std::remove(other.c_str());
}

TEST_F(LibraryTest, WithTheLibraryARecordingStillServes) {
  preloaded(BOARD_PROGRAM, "record:library:" + file_);
  const Outcome expected = preloaded(BOARD_PROGRAM, "expect-stop:" + file_);
  EXPECT_EQ(expected.status, 0);
  EXPECT_EQ(expected.error, "");
  const Outcome answered = preloaded(BOARD_PROGRAM, "answer:" + file_);
  EXPECT_EQ(answered.output, expected.output);
  EXPECT_EQ(answered.error, "");
}

}  // namespace
