// SPDX-License-Identifier: MIT
// What is wrong in a recording is named with file and line.
#include <cstdio>
#include <fstream>
#include <stdexcept>

#include "sample/sample_test.h"

namespace {

const std::string kHeader = "{\"format\":\"swctl-calls\",\"version\":1}\n";

class RecordingErrorTest : public testing::Test {
 protected:
  const std::string path_ = testing::TempDir() + "swprobe_recording_error_test";

  void TearDown() override { std::remove(path_.c_str()); }

  std::string read_error() const {
    try {
      swprobe::read_recording(path_);
    } catch (const std::runtime_error &error) {
      return error.what();
    }
    return "no error";
  }
  // What is said of the second line of a recording, without the place.
  std::string error_of(const std::string &line) const {
    std::ofstream(path_) << kHeader << line << '\n';
    const std::string error = read_error();
    const std::string place = path_ + ":2: ";
    EXPECT_EQ(error.substr(0, place.size()), place);
    return error.substr(std::min(error.size(), place.size()));
  }
};

TEST_F(RecordingErrorTest, AFileThatCannotBeRead) {
  EXPECT_EQ(read_error(), "cannot read '" + path_ + "': No such file or directory");
}

TEST_F(RecordingErrorTest, AFileThatIsNoRecording) {
  std::ofstream(path_) << "";
  EXPECT_EQ(read_error(), path_ + ":1: the header is missing");
  std::ofstream(path_) << "{\"format\":\"other\",\"version\":1}\n";
  EXPECT_EQ(read_error(), path_ + ":1: not a recording of calls");
  std::ofstream(path_) << "{}\n";
  EXPECT_EQ(read_error(), path_ + ":1: 'format' is missing");
  std::ofstream(path_) << "[]\n";
  EXPECT_EQ(read_error(), path_ + ":1: not a JSON object");
  std::ofstream(path_) << "{\"format\":\"swctl-calls\",\"version\":3}\n";
  EXPECT_EQ(read_error(), path_ + ":1: version 3 of the format is not known");
}

TEST_F(RecordingErrorTest, ALineThatBreaksOffOrIsNoJson) {
  EXPECT_EQ(error_of("{\"number\":1,\"call\":\"sample"), "the line breaks off");
  EXPECT_EQ(error_of(""), "the line breaks off");
  EXPECT_EQ(error_of("{\"number\":x}"), "character 11 is not JSON");
  EXPECT_EQ(error_of("{} {}"), "character 4 is not JSON");
  EXPECT_EQ(error_of("3"), "not a JSON object");
}

TEST_F(RecordingErrorTest, MembersThatAreNoTextOrFlag) {
  EXPECT_EQ(error_of(R"({"number":1,"call":3})"), "'call' is not a text");
  EXPECT_EQ(error_of(R"({"number":1,"call":"sample_result","result":1,"made_up":"no"})"),
            "'made_up' is neither true nor false");
}

// What a writer that was killed leaves.
TEST_F(RecordingErrorTest, ALastLineThatIsCutOffIsLeftOut) {
  const std::string call =
      R"({"number":1,"call":"sample_result","arguments":{"value":{"in":1}},"result":1,)"
      R"("made_up":false})";
  for (size_t size = 1; size < call.size(); ++size) {
    std::ofstream(path_) << kHeader << call << '\n' << call.substr(0, size);
    const swprobe::Recording recording = swprobe::load_recording(path_);
    EXPECT_EQ(recording.calls.size(), 1u) << size;
    EXPECT_EQ(recording.lines, std::vector<uint64_t>{2}) << size;
    EXPECT_EQ(recording.cut_off, 3u) << size;
  }
  std::ofstream(path_) << kHeader << call << '\n' << call;
  EXPECT_EQ(swprobe::load_recording(path_).calls.size(), 2u);
  EXPECT_EQ(swprobe::load_recording(path_).cut_off, 0u);
  std::ofstream(path_) << kHeader.substr(0, 10);
  EXPECT_EQ(read_error(), path_ + ":1: the line breaks off");
}

TEST_F(RecordingErrorTest, NamesThatAreNotKnown) {
  EXPECT_EQ(error_of(R"({"number":1,"call":"sample_other","arguments":{}})"),
            "no call is named 'sample_other'");
  EXPECT_EQ(error_of(R"({"number":1,"call":"sample_result","arguments":{"vlaue":{"in":1}},)"
                     R"("result":1,"made_up":false})"),
            "'sample_result' has no argument 'vlaue'");
  EXPECT_EQ(error_of(R"({"number":1,"call":"sample_result","arguments":{"vlaue":null},)"
                     R"("result":1,"made_up":false})"),
            "'sample_result' has no argument 'vlaue'");
}

TEST_F(RecordingErrorTest, MembersThatAreMissingOrOfAnotherType) {
  EXPECT_EQ(error_of(R"({"number":1})"), "'call' is missing");
  EXPECT_EQ(error_of(R"({"number":1,"call":"sample_result","arguments":{},"made_up":false})"),
            "'result' is missing");
  EXPECT_EQ(error_of(R"({"number":1,"call":"sample_result","arguments":{},"result":1})"),
            "'made_up' is missing");
  EXPECT_EQ(error_of(R"({"number":1,"call":"sample_result","arguments":{"value":{}},"result":1,)"
                     R"("made_up":false})"),
            "'in' is missing");
  EXPECT_EQ(error_of(R"({"number":"one","call":"sample_result"})"),
            "'number' is not a whole number");
  EXPECT_EQ(error_of(R"({"number":1,"call":"sample_result","arguments":{"value":{"in":"a"}},)"
                     R"("result":1,"made_up":false})"),
            "'value' is not a whole number");
}

TEST_F(RecordingErrorTest, NumbersThatNoCallCanHave) {
  const auto error_with = [this](const std::string &value, const std::string &result) {
    return error_of(R"({"number":1,"call":"sample_result","arguments":{"value":{"in":)" + value +
                    R"(}},"result":)" + result + R"(,"made_up":false})");
  };
  EXPECT_EQ(error_with("1e30", "1"), "'value' is not a whole number");
  EXPECT_EQ(error_with("[1,2.5]", "1"), "'value' is not a whole number");
  EXPECT_EQ(error_with("4294967296", "1"), "'value' does not fit into 32 bits");
  EXPECT_EQ(error_with("18446744073709551615", "1"), "'value' does not fit into 32 bits");
  EXPECT_EQ(error_with("1", "1.0"), "'result' is not a whole number");
  EXPECT_EQ(error_with("1", "-2147483649"), "'result' does not fit into 32 bits");
}

TEST_F(RecordingErrorTest, ArgumentsThatAreNoObject) {
  EXPECT_EQ(error_of(R"({"number":1,"call":"sample_result","arguments":{"value":3},"result":1,)"
                     R"("made_up":false})"),
            "'value' is not a JSON object");
  EXPECT_EQ(error_of(R"({"number":1,"call":"sample_result","arguments":3,"result":1,)"
                     R"("made_up":false})"),
            "'arguments' is not a JSON object");
}

}  // namespace
