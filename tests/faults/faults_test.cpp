// SPDX-License-Identifier: MIT
// A program whose calls fail in turn, and what is said of it.
#include "faults.h"

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <stdexcept>

#include "os/json.h"
#include "report.h"

namespace {

using swfaults::End;
using swfaults::Outcome;
using swfaults::Settings;
using swfaults::Verdict;
using testing::HasSubstr;

Settings subject(const std::string &word = "usual") {
  Settings settings;
  settings.words = {SUBJECT, word};
  settings.seconds = 60;
  settings.probe = PROBE_LIBRARY;
  return settings;
}

std::vector<Verdict> verdicts(const Outcome &outcome, bool and_after) {
  std::vector<Verdict> all;
  for (const swfaults::Run &run : outcome.runs)
    if (run.fault.and_after == and_after) all.push_back(run.verdict);
  return all;
}

std::string error_of(const Settings &settings) {
  try {
    swfaults::try_faults(settings);
  } catch (const std::runtime_error &error) {
    return error.what();
  }
  return "no error";
}

class FaultsTest : public testing::Test {
 protected:
  static void SetUpTestSuite() {
    // A sanitizer wants its library first, which a preloaded library prevents.
    setenv("ASAN_OPTIONS", "verify_asan_link_order=0:handle_segv=0", 1);
    for (const char *name : {"VCHIP_IMAGE", "SWPROBE", "SWPROBE_FAIL"}) unsetenv(name);
  }
};

TEST_F(FaultsTest, EachWayToTakeAFailureHasItsVerdict) {
  Settings settings = subject("hangs");
  settings.seconds = 4;
  const Outcome outcome = swfaults::try_faults(settings);
  EXPECT_EQ(outcome.calls, 4u);
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(verdicts(outcome, false), (std::vector<Verdict>{Verdict::told, Verdict::crashed,
                                                            Verdict::hung, Verdict::silent}));
  EXPECT_EQ(verdicts(outcome, true), verdicts(outcome, false));
  EXPECT_EQ(outcome.runs[0].end.code, 3);
  EXPECT_EQ(outcome.runs[0].fault.line, "rtk_port_link_get(unit=0, port=0)");
  EXPECT_EQ(outcome.runs[2].end.code, SIGSEGV);
  EXPECT_GE(outcome.runs[4].end.seconds, 4.0);
}

TEST_F(FaultsTest, OnlyTheCallsThatAreWanted) {
  Settings settings = subject();
  settings.only = {"rtk_vlan_*"};
  EXPECT_TRUE(swfaults::try_faults(settings).runs.empty());
}

TEST_F(FaultsTest, RunsTakeTurnsOrGoTogether) {
  for (const unsigned processes : {1u, 8u}) {
    Settings settings = subject();
    settings.processes = processes;
    EXPECT_EQ(swfaults::try_faults(settings).runs.size(), 8u) << processes;
  }
}

// What differs from run to run cannot show that a failure was seen.
TEST_F(FaultsTest, OutputThatVariesDoesNotCount) {
  Settings settings = subject("varies");
  const Outcome outcome = swfaults::try_faults(settings);
  EXPECT_TRUE(outcome.error_varies);
  EXPECT_FALSE(outcome.output_varies);
  EXPECT_EQ(verdicts(outcome, false).back(), Verdict::silent);
  EXPECT_EQ(verdicts(outcome, false).front(), Verdict::told) << "its status is another";
}

TEST_F(FaultsTest, AProgramThatCannotBeTriedIsRefused) {
  const std::string name = std::string("'") + SUBJECT + "' ";
  EXPECT_EQ(error_of(subject("nothing")), name + "made no call that the probe can fail");
  Settings settings = subject("forever");
  settings.seconds = 0.3;
  EXPECT_THAT(error_of(settings), HasSubstr("did not end by itself without a fault"));
  settings.words = {"/nowhere/at/all"};
  EXPECT_EQ(error_of(settings), "cannot run '/nowhere/at/all': No such file or directory");
}

TEST_F(FaultsTest, NothingIsLeftBehind) {
  const auto count = [] {
    int found = 0;
    for (const auto &entry :
         std::filesystem::directory_iterator(std::filesystem::temp_directory_path()))
      found += entry.path().filename().string().starts_with("swctl-faults-");
    return found;
  };
  const int before = count();
  Settings settings = subject();
  swfaults::try_faults(settings);
  EXPECT_EQ(count(), before);
}

TEST(VerdictTest, WhatIsTheSameIsSilent) {
  const End usual = {End::Kind::exited, 0, 0, "out", "err"};
  End end = usual;
  EXPECT_EQ(verdict_of({}, usual, end, true), Verdict::silent);
  EXPECT_EQ(verdict_of({}, usual, end, false), Verdict::not_reached);
  end.output = "other";
  EXPECT_EQ(verdict_of({}, usual, end, true), Verdict::told);
  Outcome varying;
  varying.output_varies = true;
  EXPECT_EQ(verdict_of(varying, usual, end, true), Verdict::silent);
  end.code = 1;
  EXPECT_EQ(verdict_of(varying, usual, end, true), Verdict::told);
  end.kind = End::Kind::killed;
  EXPECT_EQ(verdict_of({}, usual, end, false), Verdict::crashed);
  end.kind = End::Kind::timed_out;
  EXPECT_EQ(verdict_of({}, usual, end, false), Verdict::hung);
}

Outcome two_runs() {
  Outcome outcome;
  outcome.calls = 1;
  const swfaults::Fault fault = {1, false, "rtk_x", "rtk_x(text=\"<&>\")"};
  outcome.runs = {{fault, Verdict::told, {End::Kind::exited, 3, 0.25, "", "first\nlast\n"}},
                  {{1, true, "rtk_x", "rtk_x()"},
                   Verdict::hung,
                   {End::Kind::timed_out, 0, 1, "", "a\x01\xff<b>"}}};
  return outcome;
}

TEST(ReportTest, TheTableHasALineForEachRun) {
  EXPECT_EQ(swfaults::table(two_runs()),
            "call  fails          verdict      answer      what was called    what it said\n"
            "   1  alone          told         status 3    rtk_x(text=\"<&>\")  last\n"
            "   1  and all after  hung         no end      rtk_x()            a\x01\xff<b>\n");
  EXPECT_EQ(swfaults::summary(two_runs()), "1 call, 2 runs: 1 told, 0 silent, 0 crashed, 1 hung");
}

TEST(ReportTest, JUnitHoldsOnlyWhatXmlCan) {
  Settings settings;
  settings.words = {"daemon", "a&b"};
  const std::string text = swfaults::junit(settings, two_runs());
  EXPECT_THAT(text, HasSubstr("<testsuite name=\"daemon a&amp;b\" tests=\"2\" failures=\"0\" "
                              "errors=\"1\" skipped=\"0\">"));
  EXPECT_THAT(text, HasSubstr("name=\"call 1 alone: rtk_x(text=&quot;&lt;&amp;&gt;&quot;)\""));
  EXPECT_THAT(text, HasSubstr("<error message=\"hung: no end\">a??&lt;b&gt;</error>"));
}

TEST(ReportTest, JsonIsOneObject) {
  const auto json = os::parse_json(swfaults::json({}, two_runs()));
  ASSERT_EQ(json["runs"].size(), 2u);
  EXPECT_EQ(json["runs"][0]["status"], 3);
  EXPECT_EQ(json["runs"][0]["signal"], nullptr);
  EXPECT_EQ(json["runs"][1]["verdict"], "hung");
  EXPECT_EQ(json["runs"][1]["status"], nullptr);
}

TEST(PlanTest, OneCallOrAllFromItOn) {
  EXPECT_EQ(swfaults::plan_of({3, false, "", ""}, -5), "[ra][td][kp]_* nth 3 result -5");
  EXPECT_EQ(swfaults::plan_of({3, true, "", ""}, -1), "[ra][td][kp]_* from 3 result -1");
}

}  // namespace
