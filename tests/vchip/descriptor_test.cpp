// SPDX-License-Identifier: MIT
// What a process prints never ends in the image, whichever descriptors it has
// closed.
#include <swctl-vchip/vchip.h>
#include <swctl/platform/sdk.h>

#include <cerrno>
#include <fcntl.h>
#include <string>
#include <unistd.h>

#include "child.h"

namespace {

using vchip_test::Outcome;

constexpr int kSubsets = 1 << 3;
constexpr int kMostDescriptors = 256;

bool is_in(int subset, int descriptor) {
  return (subset >> descriptor & 1) != 0;
}

std::string name_of(int subset) {
  std::string name = "closed:";
  for (int each = 0; each < 3; ++each)
    if (is_in(subset, each)) name += ' ' + std::to_string(each);
  return name;
}

bool is_closed(int descriptor) {
  return fcntl(descriptor, F_GETFD) < 0 && errno == EBADF;
}

// Makes a change between two lines on each standard stream; 0 if the streams
// that were closed are so still.
int change_and_print(int subset) {
  for (int each = 0; each < 3; ++each)
    if (is_in(subset, each)) close(each);
  if (rtk_port_adminEnable_set(0, 3, 0) != 0) return 10;
  for (int each = 0; each < 3; ++each) {
    const ssize_t written = write(each, "a line\n", 7);
    if (!is_in(subset, each)) continue;
    if (!is_closed(each) || written >= 0) return 20 + each;
  }
  return rtk_port_adminEnable_set(0, 4, 0) == 0 ? 0 : 30;
}

// The chip in an image. The header in front of it tells who had it open.
std::string read_state(const std::string &path) {
  return vchip_test::read_file(path).substr(vchip_test::kHeaderSize);
}

// The program closes all it has, as some daemons do when they start, and opens
// a file of its own. A record lock is lost by that; a robust futex is not.
int close_all_and_open(const std::string &path) {
  if (rtk_port_adminEnable_set(0, 3, 0) != 0) return 10;
  for (int each = 3; each < kMostDescriptors; ++each) close(each);
  const int own = open(path.c_str(), O_RDWR | O_CREAT, 0600);
  if (own < 0) return 20;
  const int32_t expected = vchip_test::has_robust_futexes() ? 0 : VCHIP_E_IMAGE;
  return rtk_port_adminEnable_set(0, 4, 0) == expected ? 0 : 30;
}

using Descriptors = vchip_test::ImageTest;

TEST_F(Descriptors, AnImageIsAboveStandardError) {
  make_image();
  const std::string before = vchip_test::read_file(image_);
  ASSERT_EQ(vchip_test::run(image(), [] { return change_and_print(0); }).status, 0);
  const std::string after = read_state(image_);
  ASSERT_NE(before.substr(vchip_test::kHeaderSize), after);
  for (int subset = 1; subset < kSubsets; ++subset) {
    vchip_test::write_file(image_, before);
    const Outcome outcome = vchip_test::run(image(), [=] { return change_and_print(subset); });
    EXPECT_EQ(outcome.status, 0) << name_of(subset) << outcome.output;
    EXPECT_EQ(read_state(image_), after) << name_of(subset);
  }
}

TEST_F(Descriptors, SoIsOneThatIsMade) {
  ASSERT_EQ(vchip_test::run(image(), [] { return change_and_print(0); }).status, 0);
  const std::string expected = read_state(image_);
  for (int subset = 1; subset < kSubsets; ++subset) {
    ASSERT_EQ(unlink(image_.c_str()), 0);
    const Outcome outcome = vchip_test::run(image(), [=] { return change_and_print(subset); });
    EXPECT_EQ(outcome.status, 0) << name_of(subset) << outcome.output;
    EXPECT_EQ(read_state(image_), expected) << name_of(subset);
  }
}

TEST_F(Descriptors, AFileOfTheProgramIsNotTakenForTheImage) {
  const std::string own = file("own");
  const Outcome outcome = vchip_test::run(image(), [&] { return close_all_and_open(own); });
  EXPECT_EQ(outcome.status, 0) << outcome.output;
  EXPECT_EQ(vchip_test::read_file(own), "");
}

}  // namespace
