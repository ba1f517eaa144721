// SPDX-License-Identifier: MIT
// The words of the environment.
#include "settings.h"

#include <cstdio>
#include <fstream>
#include <stdexcept>
#include <unistd.h>

#include "sample/sample_test.h"

namespace {

using swprobe::read_settings;

class SettingsTest : public testing::Test {
 protected:
  const std::string path_ = testing::TempDir() + "swprobe_settings_test";

  void TearDown() override { std::remove(path_.c_str()); }
  static std::string error_of(const std::string &words, const char *plan = nullptr) {
    try {
      read_settings(words.c_str(), plan);
    } catch (const std::runtime_error &error) {
      return error.what();
    }
    return "no error";
  }
  static bool exists(const std::string &path) { return access(path.c_str(), F_OK) == 0; }
};

TEST_F(SettingsTest, NothingAskedIsNothingDone) {
  for (const char *words : {static_cast<const char *>(nullptr), ""}) {
    const auto settings = read_settings(words, words);
    EXPECT_TRUE(settings.traces.empty());
    EXPECT_TRUE(settings.recordings.empty());
    EXPECT_TRUE(settings.rules.empty());
  }
}

TEST_F(SettingsTest, WordsAddUp) {
  std::ofstream(path_) << "sample_result result -1\nsample_result result -2\n";
  const auto settings = read_settings(("trace,fail:" + path_).c_str(), "sample_* result -3");
  EXPECT_EQ(settings.traces.size(), 1u);
  ASSERT_EQ(settings.rules.size(), 3u);
  EXPECT_EQ(settings.rules[2].result, -3);
}

TEST_F(SettingsTest, UnknownWordsAreNamed) {
  const std::string expected =
      "' is none of trace, trace:FILE, record:FILE, fail:FILE, expect:FILE, expect-stop:FILE, "
      "answer:FILE, rules:FILE, only:NAME, port:NUMBER and rotate:SIZE";
  for (const std::string word : {"tarce", "record", "fail", "record:", "trace:", "fail:", "help",
                                 "TRACE", " trace", "tracer:x", "expect", "rules:", "only"}) {
    EXPECT_EQ(error_of(word), "SWPROBE: '" + word + expected);
    EXPECT_EQ(error_of("trace," + word), "SWPROBE: '" + word + expected);
  }
  EXPECT_EQ(error_of("trace,"), "SWPROBE: '" + expected);
  EXPECT_EQ(error_of(",trace"), "SWPROBE: '" + expected);
}

TEST_F(SettingsTest, ErrorsOfPlansKeepTheirPlace) {
  EXPECT_EQ(error_of("", "sample_result result"),
            "SWPROBE_FAIL: rule 1: a number is missing after 'result'");
  std::ofstream(path_) << "sample_result result\n";
  EXPECT_EQ(error_of("fail:" + path_), path_ + ":1: a number is missing after 'result'");
}

TEST_F(SettingsTest, FilesThatCannotBeWrittenAreNamed) {
  EXPECT_EQ(error_of("trace:/nowhere/at/all"),
            "cannot write '/nowhere/at/all': No such file or directory");
  EXPECT_EQ(error_of("record:" + testing::TempDir()),
            "cannot write '" + testing::TempDir() + "': Is a directory");
}

TEST_F(SettingsTest, NoFileIsTouchedForAWrongWord) {
  EXPECT_NE(error_of("record:" + path_ + ",x"), "no error");
  EXPECT_FALSE(exists(path_));
  EXPECT_NE(error_of("record:" + path_, "x"), "no error");
  EXPECT_FALSE(exists(path_));
}

TEST_F(SettingsTest, SeveralDestinations) {
  const auto settings =
      read_settings(("record:" + path_ + ",trace:stderr,trace:" + path_ + ".2").c_str(), nullptr);
  EXPECT_EQ(settings.recordings.size(), 1u);
  EXPECT_EQ(settings.traces.size(), 2u);
  std::remove((path_ + ".2").c_str());
}

TEST_F(SettingsTest, WordsThatLackTheirOther) {
  EXPECT_EQ(error_of("trace,rules:x"), "SWPROBE: 'rules' without expect or answer");
  EXPECT_EQ(error_of("trace,rotate:1K"), "SWPROBE: 'rotate' without a file to write");
  EXPECT_EQ(error_of("expect:a,expect-stop:b"), "SWPROBE: 'expect' is there twice");
  EXPECT_EQ(error_of("answer:a,answer:b"), "SWPROBE: 'answer' is there twice");
}

TEST_F(SettingsTest, SizesAndCountsOfARotation) {
  const std::string record = "record:" + path_ + ",";
  for (const std::string size : {"", "0", "-1", "x", "K", "1T", "1.5M", "99999999999"}) {
    const std::string expected =
        size.empty() ? "SWPROBE: 'rotate:' is none of trace" : "SWPROBE: '" + size + "' is no size";
    EXPECT_EQ(error_of(record + "rotate:" + size).substr(0, expected.size()), expected);
  }
  EXPECT_EQ(error_of(record + "rotate:1K:x"), "SWPROBE: 'x' is no number of files, 0 to 999");
  EXPECT_EQ(error_of(record + "rotate:1K:-1"), "SWPROBE: '-1' is no number of files, 0 to 999");
  for (const std::string word : {"1", "10k", "1K:0", "2M:999", "1G"})
    EXPECT_EQ(error_of(record + "rotate:" + word),
              word == "10k" ? "SWPROBE: '10k' is no size such as 10M" : "no error");
}

TEST_F(SettingsTest, FiltersNameWhatIsKnown) {
  EXPECT_EQ(error_of("trace,only:samples"),
            "SWPROBE: no call is named 'samples' or belongs to such a family");
  EXPECT_EQ(error_of("trace,port:x"), "SWPROBE: 'x' is no port");
  EXPECT_EQ(error_of("trace,port:4294967296"), "SWPROBE: '4294967296' is no port");
}

TEST_F(SettingsTest, ARecordingToCompareWithIsReadAtOnce) {
  EXPECT_EQ(error_of("expect:/nowhere/at/all"),
            "cannot read '/nowhere/at/all': No such file or directory");
  std::ofstream(path_) << "{}\n";
  EXPECT_EQ(error_of("answer:" + path_), path_ + ":1: 'format' is missing");
  std::ofstream(path_) << "differ sample_result\n";
  EXPECT_EQ(error_of("expect:/dev/null,rules:" + path_),
            path_ + ":1: the name of an argument is missing after 'sample_result'");
}

TEST_F(SettingsTest, TheProcessIdCanStandInAName) {
  const std::string path = testing::TempDir() + "swprobe." + std::to_string(getpid()) + ".trace";
  read_settings(("trace:" + testing::TempDir() + "swprobe.%p.trace").c_str(), nullptr);
  EXPECT_TRUE(exists(path));
  std::remove(path.c_str());
}

}  // namespace
