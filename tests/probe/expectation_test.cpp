// SPDX-License-Identifier: MIT
// Calls held against a recording.
#include "expectation.h"

#include "answers.h"
#include "sample/sample_test.h"

namespace {

using swprobe::Answers;
using swprobe::Comparison;
using swprobe::Expectation;
using swprobe::Recording;

swprobe::Call made(int32_t value) {
  uint32_t written = 0;
  sample_result(value, &written);
  return swprobe::take().back();
}

swprobe::Call other(int32_t value) {
  sample_nested(value);
  return swprobe::take().front();
}

// A recording of these calls, numbered and on lines from 2 on.
Recording recording(std::vector<swprobe::Call> calls) {
  Recording all;
  for (size_t i = 0; i < calls.size(); ++i) {
    calls[i].number = i + 1;
    all.lines.push_back(i + 2);
  }
  all.calls = std::move(calls);
  return all;
}

Comparison rules(const std::string &rule) {
  Comparison comparison;
  comparison.add_rule(rule);
  return comparison;
}

class ExpectationTest : public SampleTest {
 protected:
  static Expectation expect(std::vector<swprobe::Call> calls, const Comparison &comparison = {}) {
    return Expectation("golden", recording(std::move(calls)), comparison, {}, false);
  }
  static std::string told(const std::optional<std::string> &text) {
    return text.value_or("nothing");
  }
};

TEST_F(ExpectationTest, TheSameCallsTellNothing) {
  Expectation golden = expect({made(1), made(2), other(3)});
  EXPECT_EQ(told(golden.compare(made(1))), "nothing");
  EXPECT_EQ(told(golden.compare(made(2))), "nothing");
  EXPECT_EQ(told(golden.compare(other(3))), "nothing");
  EXPECT_EQ(told(golden.end()), "nothing");
}

TEST_F(ExpectationTest, TheFirstThatDiffersIsToldWithThoseBefore) {
  Expectation golden = expect({made(1), made(2), made(3), made(4), made(5)});
  for (int32_t value = 1; value <= 4; ++value) golden.compare(made(value));
  EXPECT_EQ(told(golden.compare(made(6))),
            "golden:6: the call differs in value\n"
            "  before   2: sample_result(value=2, written=>4) = 2\n"
            "  before   3: sample_result(value=3, written=>4) = 3\n"
            "  before   4: sample_result(value=4, written=>4) = 4\n"
            "  recorded 5: sample_result(value=5, written=>4) = 5\n"
            "  made     5: sample_result(value=6)");
  EXPECT_EQ(told(golden.compare(made(7))), "nothing") << "told twice";
  EXPECT_EQ(told(golden.end()), "nothing") << "told twice";
}

TEST_F(ExpectationTest, AnotherCall) {
  Expectation golden = expect({made(1)});
  EXPECT_EQ(told(golden.compare(other(1))),
            "golden:2: the program makes another call\n"
            "  recorded 1: sample_result(value=1, written=>4) = 1\n"
            "  made     1: sample_nested(value=1)");
}

TEST_F(ExpectationTest, OneCallTooMany) {
  Expectation golden = expect({made(1)});
  golden.compare(made(1));
  EXPECT_EQ(told(golden.compare(made(1))),
            "golden: the program makes a call more than the recording has\n"
            "  before   1: sample_result(value=1, written=>4) = 1\n"
            "  made     2: sample_result(value=1)");
}

TEST_F(ExpectationTest, AnEndTooEarly) {
  Expectation golden = expect({made(1), made(2), made(3)});
  golden.compare(made(1));
  EXPECT_EQ(told(golden.end()),
            "golden:3: the program ends before 2 recorded calls\n"
            "  before   1: sample_result(value=1, written=>4) = 1\n"
            "  recorded 2: sample_result(value=2, written=>4) = 2");
}

// What the platform answers otherwise may be why the program goes another way.
TEST_F(ExpectationTest, AnotherAnswerIsShownBeforeTheDifference) {
  Expectation golden = expect({made(1), made(2)});
  golden.compare(made(1));
  swprobe::Call call = made(1);
  golden.answered(1, call);
  call.arguments[1].after = {7};
  golden.answered(1, call);
  EXPECT_EQ(told(golden.compare(made(3))),
            "golden:3: the call differs in value\n"
            "  before   1: sample_result(value=1, written=>4) = 1\n"
            "  answered 1: sample_result(value=1, written=>7) = 1\n"
            "  recorded 2: sample_result(value=2, written=>4) = 2\n"
            "  made     2: sample_result(value=3)");
}

TEST_F(ExpectationTest, UnorderedCallsMayComeAtAnyPlace) {
  const Comparison comparison = rules("unordered sample_result");
  Expectation golden = expect({made(1), made(2), other(3), made(2)}, comparison);
  EXPECT_EQ(told(golden.compare(made(2))), "nothing");
  EXPECT_EQ(told(golden.compare(other(3))), "nothing");
  EXPECT_EQ(told(golden.compare(made(1))), "nothing");
  EXPECT_EQ(told(golden.compare(made(2))), "nothing");
  EXPECT_EQ(told(golden.end()), "nothing");
}

TEST_F(ExpectationTest, ButNotOftenerThanRecorded) {
  const Comparison comparison = rules("unordered sample_result");
  Expectation golden = expect({made(1), made(2)}, comparison);
  golden.compare(made(2));
  EXPECT_EQ(told(golden.compare(made(2))),
            "golden:2: the recording has no such call, or not so often\n"
            "  before   2: sample_result(value=2, written=>4) = 2\n"
            "  recorded 1: sample_result(value=1, written=>4) = 1\n"
            "  made     2: sample_result(value=2)");
  Expectation missing = expect({made(1)}, comparison);
  EXPECT_EQ(told(missing.end()),
            "golden:2: the program ends before 1 recorded call\n"
            "  recorded 1: sample_result(value=1, written=>4) = 1");
}

TEST_F(ExpectationTest, IgnoredCallsAreNotLookedAt) {
  Expectation golden = expect({made(1), other(1)}, rules("ignore sample_result"));
  EXPECT_EQ(told(golden.compare(made(7))), "nothing");
  EXPECT_EQ(told(golden.compare(other(1))), "nothing");
  EXPECT_EQ(told(golden.compare(made(8))), "nothing");
  EXPECT_EQ(told(golden.end()), "nothing");
}

TEST_F(ExpectationTest, AFilterLeavesCallsOutOnBothSides) {
  swprobe::Filter filter;
  filter.add_name("nested");
  Expectation golden("golden", recording({made(1), other(1), made(2)}), {}, filter, false);
  EXPECT_EQ(told(golden.compare(made(9))), "nothing");
  EXPECT_EQ(told(golden.compare(other(1))), "nothing");
  EXPECT_EQ(told(golden.end()), "nothing");
}

class AnswersTest : public SampleTest {
 protected:
  // What is answered; "refused: " and what is told, if it is.
  static std::string answer(Answers &answers, const swprobe::Call &call) {
    std::string complaint;
    const swprobe::Verdict verdict = answers.answer(call, complaint);
    if (!complaint.empty()) return "refused: " + complaint;
    std::string text = std::to_string(verdict.result);
    for (const swprobe::Output &output : verdict.outputs)
      text += ' ' + output.place.name + '=' + std::to_string(output.values.at(0));
    return text;
  }
  static swprobe::Call answered(int32_t value, int64_t result, int64_t written) {
    swprobe::Call call = made(value);
    call.result = result;
    call.arguments[1].after = {written};
    return call;
  }
};

TEST_F(AnswersTest, EachTimeTheNextAndThenTheLast) {
  Answers answers("golden", recording({answered(1, 5, 6), answered(2, 7, 8), answered(1, 3, 4)}),
                  {});
  EXPECT_EQ(answer(answers, made(2)), "7 written=8");
  EXPECT_EQ(answer(answers, made(1)), "5 written=6");
  EXPECT_EQ(answer(answers, made(1)), "3 written=4");
  EXPECT_EQ(answer(answers, made(1)), "3 written=4");
}

TEST_F(AnswersTest, ACallThatWasNotRecordedIsRefusedAndToldOnce) {
  Answers answers("golden", recording({made(1)}), {});
  EXPECT_EQ(answer(answers, made(2)),
            "refused: golden: no call like this was recorded: sample_result(value=2)");
  EXPECT_EQ(answer(answers, made(2)), "-1");
  EXPECT_EQ(answer(answers, made(1)), "1 written=4");
}

TEST_F(AnswersTest, ArgumentsThatMayDifferDoNotCount) {
  Answers answers("golden", recording({answered(1, 5, 6)}), rules("differ sample_result value"));
  EXPECT_EQ(answer(answers, made(2)), "5 written=6");
}

TEST_F(AnswersTest, AnIgnoredCallThatWasNotRecordedIsAnsweredWithNought) {
  Answers answers("golden", recording({answered(1, 5, 6)}), rules("ignore sample_result"));
  EXPECT_EQ(answer(answers, made(1)), "5 written=6");
  EXPECT_EQ(answer(answers, made(2)), "0");
}

}  // namespace
