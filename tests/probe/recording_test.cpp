// SPDX-License-Identifier: MIT
// Recordings, written and read back.
#include "recording.h"

#include <bit>
#include <cstdio>
#include <fstream>
#include <memory>

#include "sample/sample_test.h"

namespace {

using swprobe::Argument;
using swprobe::Call;
using swprobe::recording_line;

class RecordingTest : public SampleTest {
 protected:
  const std::string path_ = testing::TempDir() + "swprobe_recording_test";

  void TearDown() override {
    std::remove(path_.c_str());
    SampleTest::TearDown();
  }

  std::vector<Call> written_and_read(const std::vector<Call> &calls) const {
    std::ofstream file(path_);
    file << swprobe::recording_header() << '\n';
    for (const Call &call : calls) file << recording_line(call) << '\n';
    file.close();
    return swprobe::read_recording(path_);
  }
};

TEST_F(RecordingTest, TheFormatIsTheSameOnEveryMachine) {
  const uint16_t list[] = {1, 2, 65535};
  const uint8_t mac[] = {2, 0, 0, 0, 0, 0xab};
  int32_t found[1] = {};
  uint32_t mask = 0x80000000;
  int8_t steps[2] = {5, 0};
  sample_arrays(list, mac, 1, found);
  sample_update(&mask, steps);
  sample_scalars(0, -1, 0, nullptr, nullptr);
  call(-3);
  auto calls = swprobe::take();
  for (Call &call : calls) call.number = 4;
  ASSERT_EQ(calls.size(), 4u);
  const std::string order = std::endian::native == std::endian::big ? "big" : "little";
  EXPECT_EQ(swprobe::recording_header(),
            R"({"format":"swctl-calls","version":1,"byte_order":")" + order + R"("})");
  EXPECT_EQ(recording_line(calls[0]),
            R"({"number":4,"call":"sample_arrays","arguments":{"list":{"in":[1,2,65535]},)"
            R"("mac":{"in":[2,0,0,0,0,171]},"count":{"in":1},"found":{"out":[1]}},)"
            R"("result":1,"made_up":false})");
  EXPECT_EQ(recording_line(calls[1]),
            R"({"number":4,"call":"sample_update","arguments":{"mask":{"in":2147483648,)"
            R"("out":2147483650},"steps":{"in":[5,0],"out":[5,-5]}},"result":0,"made_up":false})");
  EXPECT_EQ(recording_line(calls[2]),
            R"({"number":4,"call":"sample_scalars","arguments":{"unit":{"in":0},"port":{"in":-1},)"
            R"("mask":{"in":0},"value":null,"bits":null},"result":0,"made_up":false})");
  EXPECT_EQ(recording_line(calls[3]),
            R"({"number":4,"call":"sample_result","arguments":{"value":{"in":-3},"written":{}},)"
            R"("result":-3,"made_up":false})");
}

TEST_F(RecordingTest, PlainCallsComeBackEqual) {
  const uint16_t list[] = {1, 2, 65535};
  const uint8_t mac[] = {2, 0, 0, 0, 0, 0xab};
  int32_t found[1] = {};
  uint32_t mask = 0x80000000;
  int8_t steps[2] = {-5, 0};
  uint64_t counter = 0;
  sample_arrays(list, mac, 1, found);
  sample_arrays(list, mac, 0, found);
  sample_update(&mask, steps);
  sample_scalars(0, -1, 0xffffffff, nullptr, nullptr);
  sample_area(2, mac);
  sample_widths(-1, 255, 300, INT64_MIN, &counter);
  call(-3);
  swprobe::plan("sample_result result 4 out written 0xffffffff");
  call(0);
  const auto calls = swprobe::take();
  ASSERT_EQ(calls.size(), 8u);
  EXPECT_TRUE(calls[7].made_up);
  EXPECT_EQ(written_and_read(calls), calls);
}

TEST_F(RecordingTest, RecordsComeBackEqual) {
  sample_entry found{};
  sample_entry table[2] = {};
  sample_entry last = kEntry;
  sample_record(1, &kEntry, &found);
  sample_record(1, nullptr, nullptr);
  sample_table(2, table, &last);
  sample_table(0, table, &last);
  sample_table(0, nullptr, &last);
  sample_by_value({}, *std::make_unique<sample_block>(), 0);
  const auto calls = swprobe::take();
  ASSERT_EQ(calls.size(), 6u);
  EXPECT_EQ(written_and_read(calls), calls);
}

TEST_F(RecordingTest, ReadCallsGiveTheSameLines) {
  sample_entry found{};
  sample_record(1, &kEntry, &found);
  call(-1);
  const auto calls = swprobe::take();
  const auto read = written_and_read(calls);
  ASSERT_EQ(read.size(), 2u);
  EXPECT_EQ(read[0].line(), calls[0].line());
  EXPECT_EQ(read[1].line(), calls[1].line());
}

TEST_F(RecordingTest, ARecordingMayHaveNoCalls) {
  EXPECT_THAT(written_and_read({}), testing::IsEmpty());
}

TEST_F(RecordingTest, TextsAreAsciiWhateverTheirBytes) {
  Argument text{"text", swprobe::Direction::ref,  swprobe::Form::text, 1, false, false, {},
                {},     "\"a\\\n\x01\x7f\xc3\xff"};
  EXPECT_EQ(recording_line({1, "Log", {text}, 0, false, false}),
            R"({"number":1,"call":"Log","arguments":{"text":{"in":"\u0022a\u005c\u000a\u0001)"
            R"(\u007f\u00c3\u00ff"}},"made_up":false})");
}

}  // namespace
