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
  const std::string expected = "' is none of trace, trace:FILE, record:FILE and fail:FILE";
  for (const std::string word : {"tarce", "record", "fail", "record:", "trace:", "fail:", "help",
                                 "TRACE", " trace", "tracer:x"}) {
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

TEST_F(SettingsTest, TheProcessIdCanStandInAName) {
  const std::string path = testing::TempDir() + "swprobe." + std::to_string(getpid()) + ".trace";
  read_settings(("trace:" + testing::TempDir() + "swprobe.%p.trace").c_str(), nullptr);
  EXPECT_TRUE(exists(path));
  std::remove(path.c_str());
}

TEST(LineFileTest, WritesWholeLinesAndEmptiesAnOldFile) {
  const std::string path = testing::TempDir() + "swprobe_line_file_test";
  std::ofstream(path) << "old\n";
  swprobe::LineFile file(path);
  file.write("one");
  file.write("");
  std::string text;
  std::getline(std::ifstream(path), text, '\0');
  EXPECT_EQ(text, "one\n\n");
  std::remove(path.c_str());
}

TEST(LineFileTest, SaysWhenTheDeviceIsFull) {
  swprobe::LineFile file("/dev/full");
  testing::internal::CaptureStderr();
  file.write("one");
  file.write("two");
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "swprobe: cannot write '/dev/full' any further: No space left on device\n");
}

}  // namespace
