// SPDX-License-Identifier: MIT
// Every call of the lists passes through the built probe.
#include <swctl-probe/probe.h>
#include <swctl/platform/adapter.h>
#include <swctl/platform/log.h>
#include <swctl/platform/sdk.h>

#include <cstring>
#include <dlfcn.h>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using testing::ElementsAre;

// Where the dynamic linker finds a function for this program.
std::string library_of(const char *name) {
  void *address = dlsym(RTLD_DEFAULT, name);
  Dl_info found{};
  if (address == nullptr || dladdr(address, &found) == 0) return "nowhere";
  return found.dli_fname;
}

// A value of its own for every name, so that swapped arguments show.
template <class T>
T sample_of(const char *name) {
  if constexpr (std::is_integral_v<T>) {
    return static_cast<T>(std::strlen(name) + static_cast<unsigned char>(name[0]) % 16);
  } else {
    return T{};
  }
}

// Room for every pointer argument.
alignas(16) unsigned char area[1 << 16];

struct Expected {
  std::string name;
  bool is_value;
  int64_t value;
};

template <class T>
Expected expected_value(const char *name) {
  if constexpr (std::is_integral_v<T>) {
    return {name, true, static_cast<int64_t>(sample_of<T>(name))};
  } else {
    return {name, false, 0};
  }
}

class ListedCallsTest : public testing::Test {
 protected:
  void SetUp() override {
    swprobe::clear_plan();
    swprobe::forget();
  }
  void TearDown() override { swprobe::clear_plan(); }

  // The last call was this one and had these arguments, in this order.
  static void expect_call(const std::string &name, const std::vector<Expected> &expected) {
    const auto calls = swprobe::take();
    ASSERT_EQ(calls.size(), 1u) << name;
    const swprobe::Call &call = calls[0];
    EXPECT_EQ(call.name, name);
    EXPECT_EQ(call.result, 0) << call.line();
    EXPECT_FALSE(call.made_up) << call.line();
    size_t at = 0;
    for (const Expected &argument : expected) {
      ASSERT_LT(at, call.arguments.size()) << call.line();
      const std::string &found = call.arguments[at].name;
      EXPECT_EQ(found.substr(0, found.find_first_of(".[")), argument.name) << call.line();
      if (argument.is_value) {
        EXPECT_EQ(call.in(argument.name), argument.value) << call.line();
      }
      while (at < call.arguments.size() &&
             call.arguments[at].name.substr(0, call.arguments[at].name.find_first_of(".[")) ==
                 argument.name) {
        ++at;
      }
    }
    EXPECT_EQ(at, call.arguments.size()) << call.line();
  }

  // What went into a call; what comes out may be elsewhere, the samples share
  // one area.
  static std::vector<std::vector<int64_t>> inputs(const swprobe::Call &call) {
    std::vector<std::vector<int64_t>> all;
    for (const swprobe::Argument &argument : call.arguments) all.push_back(argument.before);
    return all;
  }

  static void expect_same_again(const swprobe::Call &recorded) {
    const std::function<void()> made_again = swprobe::prepare(recorded);
    EXPECT_TRUE(swprobe::take().empty()) << recorded.line();
    made_again();
    made_again();
    const auto calls = swprobe::take();
    ASSERT_EQ(calls.size(), 2u) << recorded.line();
    for (const swprobe::Call &call : calls) {
      EXPECT_EQ(call.name, recorded.name);
      EXPECT_EQ(call.result, recorded.result) << call.line();
      EXPECT_EQ(inputs(call), inputs(recorded)) << call.line();
    }
    EXPECT_EQ(calls[0].line(), calls[1].line());
  }
};

#define SAMPLE(tuple) SAMPLE_ tuple
#define SAMPLE_(direction, type, name, count, form) SAMPLE_##direction(type, #name)
#define SAMPLE_val(type, name) sample_of<type>(name)
#define SAMPLE_out(type, name) reinterpret_cast<type *>(area)
#define SAMPLE_ref(type, name) reinterpret_cast<const type *>(area)
#define SAMPLE_upd(type, name) reinterpret_cast<type *>(area)

#define EXPECTED(tuple) EXPECTED_ tuple
#define EXPECTED_(direction, type, name, count, form) EXPECTED_##direction(type, #name)
#define EXPECTED_val(type, name) expected_value<type>(name)
#define EXPECTED_out(type, name) \
  Expected {                     \
    name, false, 0               \
  }
#define EXPECTED_ref(type, name) EXPECTED_out(type, name)
#define EXPECTED_upd(type, name) EXPECTED_out(type, name)

TEST_F(ListedCallsTest, AreFoundInTheProbe) {
  std::vector<std::string> names = {"Log_logging_func", "sys_trace_get", "sys_trace_add_log"};
// The order of these lines has a meaning.
// clang-format off
#include <swctl/platform/calls_begin.h>
#define SWCTL_CALL(name, ...) names.emplace_back(#name);
#include <swctl/platform/calls/adapter.def>
#include <swctl/platform/calls/sdk.def>
#include <swctl/platform/calls_end.h>
  // clang-format on
  for (const std::string &name : names) {
    EXPECT_THAT(library_of(name.c_str()), testing::HasSubstr("libswctl-probe.so")) << name;
  }
}

TEST_F(ListedCallsTest, ReachThePlatformAndLeaveTheirArguments) {
// The order of these lines has a meaning.
// clang-format off
#include <swctl/platform/calls_begin.h>
#define SWCTL_CALL(name, ...)                                   \
  EXPECT_EQ(name(SWCTL_EACH(SAMPLE, __VA_ARGS__)), 0) << #name; \
  expect_call(#name, {SWCTL_EACH(EXPECTED, __VA_ARGS__)});
#include <swctl/platform/calls/adapter.def>
#include <swctl/platform/calls/sdk.def>
#include <swctl/platform/calls_end.h>
  // clang-format on
}

TEST_F(ListedCallsTest, CanAllBeAnswered) {
// The order of these lines has a meaning.
// clang-format off
#include <swctl/platform/calls_begin.h>
#define SWCTL_CALL(name, ...)                                     \
  swprobe::answer(#name, 1, {-77, {}});                           \
  EXPECT_EQ(name(SWCTL_EACH(SAMPLE, __VA_ARGS__)), -77) << #name; \
  EXPECT_EQ(name(SWCTL_EACH(SAMPLE, __VA_ARGS__)), 0) << #name;
#include <swctl/platform/calls/adapter.def>
#include <swctl/platform/calls/sdk.def>
#include <swctl/platform/calls_end.h>
  // clang-format on
}

// What an update wrote the first time does not go into the second.
TEST_F(ListedCallsTest, CanAllBePreparedAndMadeAgain) {
// The order of these lines has a meaning.
// clang-format off
#include <swctl/platform/calls_begin.h>
#define SWCTL_CALL(name, ...)                       \
  std::memset(area, 0x11, sizeof area);             \
  name(SWCTL_EACH(SAMPLE, __VA_ARGS__));            \
  expect_same_again(swprobe::take().at(0));
#include <swctl/platform/calls/adapter.def>
#include <swctl/platform/calls/sdk.def>
#include <swctl/platform/calls_end.h>
  // clang-format on
}

TEST_F(ListedCallsTest, AnUnknownCallCannotBePrepared) {
  swprobe::Call call{};
  call.name = "rtk_no_such_call";
  EXPECT_THROW(swprobe::prepare(call), std::invalid_argument);
  call.name = "rtk_port_link_get";
  EXPECT_THROW(swprobe::prepare(call), std::invalid_argument);
  EXPECT_TRUE(swprobe::take().empty());
}

TEST_F(ListedCallsTest, TheSentenceIsNotTheProbesOwn) {
  EXPECT_THAT(library_of("swctl_platform_result_text"), testing::HasSubstr("fake_sdk"));
  uint32_t link = 0;
  EXPECT_EQ(rtk_port_link_get(99, 3, &link), -1002);
  EXPECT_THAT(swprobe::take_lines(), ElementsAre("rtk_port_link_get(unit=99, port=3) = -1002"));
}

TEST_F(ListedCallsTest, TheLogIsFormattedAndPassedOn) {
  const std::string line(5000, 'x');
  testing::internal::CaptureStdout();
  Log_logging_func(6, 0, "TAG", "%s %02x %%d\n", "a", 10);
  Log_logging_func(3, 1, "TAG", "%s", line.c_str());
  sys_trace_add_log("f():1", "text");
  EXPECT_EQ(sys_trace_get(), 3);
  std::fflush(stdout);
  EXPECT_EQ(testing::internal::GetCapturedStdout(),
            "log 6 0 TAG: a 0a %d\nlog 3 1 TAG: " + line + "operation f():1 text\n");
  EXPECT_THAT(
      swprobe::take_lines(),
      ElementsAre(R"(Log_logging_func(level=6, option=0, tag="TAG", text="a 0a %d\n"))",
                  R"(Log_logging_func(level=3, option=1, tag="TAG", text=")" + line + "\")",
                  R"(sys_trace_add_log(location="f():1", message="text"))", "sys_trace_get() = 3"));
}

TEST_F(ListedCallsTest, TheLogCanBeSwallowedByTag) {
  swprobe::plan("Log_logging_func tag QUIET result 0");
  swprobe::plan("sys_trace_get result 0");
  testing::internal::CaptureStdout();
  Log_logging_func(6, 0, "QUIET", "a\n");
  Log_logging_func(6, 0, "LOUD", "b\n");
  EXPECT_EQ(sys_trace_get(), 0);
  std::fflush(stdout);
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "log 6 0 LOUD: b\n");
  EXPECT_THAT(swprobe::take_lines(),
              ElementsAre(R"(Log_logging_func(level=6, option=0, tag="QUIET", text="a\n") !)",
                          R"(Log_logging_func(level=6, option=0, tag="LOUD", text="b\n"))",
                          "sys_trace_get() = 0 !"));
}

TEST_F(ListedCallsTest, ANullTextIsShownAsNull) {
  swprobe::answer("sys_trace_add_log", 0, {0, {}});
  sys_trace_add_log(nullptr, "m");
  EXPECT_THAT(swprobe::take_lines(),
              ElementsAre(R"(sys_trace_add_log(location=null, message="m") !)"));
}

}  // namespace
