// SPDX-License-Identifier: MIT
// An image is made whole or not at all.
#include <swctl-vchip/vchip.h>
#include <swctl-vchip/view.h>
#include <swctl/platform/log.h>
#include <swctl/platform/sdk.h>

#include <algorithm>
#include <cstdlib>
#include <signal.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

#include "child.h"

namespace {

using vchip_test::Outcome;
using Creation = vchip_test::ImageTest;

TEST_F(Creation, AMissingImageIsMade) {
  const Outcome outcome = vchip_test::run(image(), [] { return vchip_open() == nullptr ? 0 : 1; });
  EXPECT_EQ(outcome.status, 0) << outcome.output;
  EXPECT_EQ(outcome.output, "");
  EXPECT_EQ(files(), std::vector<std::string>({"chip.img"}));
  struct stat status = {};
  ASSERT_EQ(stat(image_.c_str(), &status), 0);
  const mode_t mask = umask(0);
  umask(mask);
  EXPECT_EQ(status.st_mode & 0777, 0666 & ~mask);
  EXPECT_EQ(status.st_nlink, 1u);
}

TEST_F(Creation, ANewImageIsAChipAfterPowerOn) {
  const std::string name = image_;
  const Outcome shared = vchip_test::run(image(), [] {
    puts(vchip::dump_json(1).c_str());
    return 0;
  });
  const Outcome alone = vchip_test::run({}, [] {
    puts(vchip::dump_json(1).c_str());
    return 0;
  });
  std::string expected = alone.output;
  const std::string none = "\"image\": null";
  ASSERT_NE(expected.find(none), std::string::npos);
  expected.replace(expected.find(none), none.size(), "\"image\": \"" + name + "\"");
  EXPECT_EQ(shared.output, expected);
}

TEST_F(Creation, AnEmptyNameIsNoImage) {
  const Outcome outcome = vchip_test::run({{"VCHIP_IMAGE", ""}}, [this] {
    if (chdir(directory_.c_str()) != 0) return 1;
    return vchip_reset() == 0 ? 0 : 2;
  });
  EXPECT_EQ(outcome.status, 0);
  EXPECT_TRUE(files().empty());
}

TEST_F(Creation, ANameWithoutDirectory) {
  const Outcome outcome = vchip_test::run({{"VCHIP_IMAGE", "here.img"}}, [this] {
    if (chdir(directory_.c_str()) != 0) return 1;
    return vchip_reset() == 0 ? 0 : 2;
  });
  EXPECT_EQ(outcome.status, 0) << outcome.output;
  EXPECT_EQ(files(), std::vector<std::string>({"here.img"}));
}

TEST_F(Creation, RacingCreatorsShareOneImage) {
  constexpr int kRounds = 12;
  constexpr uint64_t kCreators = 8;
  for (int round = 0; round < kRounds; ++round) {
    unlink(image_.c_str());
    vchip_test::Gate gate;
    vchip_test::Environment environment = image();
    environment["VCHIP_LOG"] = "none";
    std::vector<pid_t> creators;
    for (uint64_t creator = 0; creator < kCreators; ++creator)
      creators.push_back(vchip_test::start(environment, [&] {
        gate.wait();
        Log_logging_func(6, 0, "T", "here\n");
        return 0;
      }));
    gate.open();
    for (const pid_t creator : creators) ASSERT_EQ(vchip_test::wait_for(creator), 0);
    const Outcome count =
        vchip_test::run(image(), [=] { return vchip::platform().log_lines == kCreators ? 0 : 1; });
    ASSERT_EQ(count.status, 0) << "round " << round;
    ASSERT_EQ(files(), std::vector<std::string>({"chip.img"}));
  }
}

// A creator that is killed leaves no image or a whole one, never a part.
TEST_F(Creation, KilledCreators) {
  constexpr int kRounds = 75;
  int without_image = 0;
  for (int round = 0; round < kRounds; ++round) {
    unlink(image_.c_str());
    const pid_t creator = vchip_test::start(image(), [] { return vchip_reset() == 0 ? 0 : 1; });
    usleep(static_cast<useconds_t>(round * 40));
    kill(creator, SIGKILL);
    vchip_test::wait_for(creator);
    const std::string bytes = vchip_test::read_file(image_);
    const bool exists = access(image_.c_str(), F_OK) == 0;
    without_image += exists ? 0 : 1;
    if (exists) {
      ASSERT_EQ(bytes.size(), vchip_test::word_at(bytes, vchip_test::kSizeAt));
    }
    const Outcome outcome = vchip_test::run(image(), [] { return vchip_reset() == 0 ? 0 : 1; });
    ASSERT_EQ(outcome.status, 0) << outcome.output;
    ASSERT_EQ(outcome.output, "");
  }
  // Some were killed before they were done, or nothing was tested.
  EXPECT_GT(without_image, 0);
}

// What such a creator may leave beside the image is in nobody's way.
TEST_F(Creation, LeftoversOfAnotherCreatorStay) {
  const Outcome outcome = vchip_test::run(image(), [this] {
    for (int number = 0; number < 3; ++number)
      vchip_test::write_file(image_ + "." + std::to_string(getpid()) + "." + std::to_string(number),
                             "left over");
    return vchip_reset() == 0 ? 0 : 1;
  });
  EXPECT_EQ(outcome.status, 0) << outcome.output;
  int left_over = 0;
  for (const std::string &name : files())
    left_over += vchip_test::read_file(file(name)) == "left over" ? 1 : 0;
  EXPECT_EQ(left_over, 3);
  EXPECT_EQ(files().size(), 4u);
}

int next_descriptor() {
  const int descriptor = dup(STDIN_FILENO);
  close(descriptor);
  return descriptor;
}

uint32_t loopback_of(const std::string &path) {
  vchip_close();
  setenv("VCHIP_IMAGE", path.c_str(), 1);
  uint32_t loopback = 77;
  rtk_diag_portMacLocalLoopbackEnable_get(0, 3, &loopback);
  return loopback;
}

TEST_F(Creation, AClosedChipIsOpenedAnew) {
  const std::string other = file("other.img");
  const std::string bad = file("bad.img");
  vchip_test::write_file(bad, "hello\n");
  const Outcome outcome = vchip_test::run(image(), [&] {
    const int unused = next_descriptor();
    vchip_close();  // nothing is open yet
    if (rtk_diag_portMacLocalLoopbackEnable_set(0, 3, 1) != 0) return 1;
    if (loopback_of(other) != 0 || loopback_of(image_) != 1) return 2;
    if (loopback_of(bad) != 77 || vchip_open() == nullptr) return 3;
    if (loopback_of(image_) != 1 || vchip_open() != nullptr) return 4;
    // A private chip is another one each time.
    if (loopback_of("") != 0) return 5;
    if (rtk_diag_portMacLocalLoopbackEnable_set(0, 3, 1) != 0 || loopback_of("") != 0) return 6;
    vchip_close();
    return next_descriptor() == unused ? 0 : 7;
  });
  EXPECT_EQ(outcome.status, 0) << outcome.output;
}

}  // namespace
