// SPDX-License-Identifier: MIT
// Files that are no image are refused by name and left as they are.
#include <swctl-vchip/vchip.h>
#include <swctl-vchip/view.h>
#include <swctl/platform/adapter.h>
#include <swctl/platform/log.h>
#include <swctl/platform/sdk.h>

#include <algorithm>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

#include "child.h"

namespace {

using vchip_test::Outcome;
using vchip_test::read_file;
using vchip_test::set_word;
using vchip_test::word_at;
using vchip_test::write_file;

// What a program sees of a refused image: 0 if all is as promised.
int use_refused_image() {
  uint32_t word = 77;
  if (rtk_port_link_get(0, 3, &word) != VCHIP_E_IMAGE || word != 77) return 1;
  if (rtk_port_link_get(9, -1, nullptr) != VCHIP_E_IMAGE) return 2;
  if (rtk_port_adminEnable_set(0, 3, 0) != VCHIP_E_IMAGE) return 3;
  if (rtk_rate_stormControlRateMode_set(0, 0) != VCHIP_E_IMAGE) return 4;
  if (adp_intf_2_phy_id(3) != VCHIP_NO_INTERFACE) return 5;
  if (adp_phy_2_intf_id(3) != VCHIP_NO_INTERFACE) return 6;
  if (sys_trace_get() != 0) return 7;
  sys_trace_add_log("l", "m");
  const vchip_partner_t partner = {1, 0x80000000u};
  if (vchip_cable_plug(0, 3, &partner) != VCHIP_E_IMAGE) return 8;
  if (vchip_reset() != VCHIP_E_IMAGE || vchip_trace_set(1) != VCHIP_E_IMAGE) return 9;
  try {
    vchip::port(0, 3);
    return 10;
  } catch (const std::runtime_error &) {
  }
  return vchip_open() == nullptr ? 11 : 0;
}

class Refusal : public vchip_test::ImageTest {
 protected:
  void SetUp() override {
    ImageTest::SetUp();
    make_image();
    good_ = read_file(image_);
    ASSERT_GT(good_.size(), size_t{vchip_test::kHeaderSize});
  }

  // The image with these bytes is refused with one line that says `reason`.
  void expect_refused(const std::string &bytes, const std::string &reason) {
    write_file(image_, bytes);
    expect_refused_file(reason);
    EXPECT_EQ(read_file(image_), bytes);
  }

  void expect_refused_file(const std::string &reason) {
    struct stat before = {}, after = {};
    stat(image_.c_str(), &before);
    const Outcome outcome = vchip_test::run(image(), use_refused_image);
    stat(image_.c_str(), &after);
    EXPECT_EQ(outcome.status, 0) << reason;
    EXPECT_EQ(outcome.output, "swctl-vchip: image " + image_ + ": " + reason + "\n");
    EXPECT_EQ(before.st_ino, after.st_ino);
    EXPECT_EQ(before.st_size, after.st_size);
    EXPECT_EQ(before.st_mtim.tv_sec, after.st_mtim.tv_sec);
    EXPECT_EQ(before.st_mtim.tv_nsec, after.st_mtim.tv_nsec);
    const size_t expected_files = before.st_ino == 0 ? 0 : 1;
    EXPECT_EQ(files().size(), expected_files);
  }

  std::string of_size(size_t size) const {
    return std::to_string(size) + " of " + std::to_string(good_.size()) + " bytes";
  }

  std::string good_;
};

// The check of a header, computed here from its description.
uint32_t check_of(const std::string &bytes) {
  uint32_t hash = 2166136261u;
  for (size_t index = 0; index < vchip_test::kCheckAt; ++index)
    hash = (hash ^ static_cast<uint8_t>(bytes[index])) * 16777619u;
  return hash;
}

TEST_F(Refusal, TheGoodImageIsAsDescribed) {
  EXPECT_EQ(good_.substr(0, 8), "SWVCHIP\n");
  EXPECT_EQ(word_at(good_, vchip_test::kByteOrderAt), 0x01020304u);
  EXPECT_EQ(word_at(good_, vchip_test::kVersionAt), 3u);
  EXPECT_EQ(word_at(good_, vchip_test::kSizeAt), good_.size());
  EXPECT_EQ(word_at(good_, vchip_test::kCheckAt), check_of(good_));
  EXPECT_EQ(word_at(good_, vchip_test::kWriterAt), 0u);
  EXPECT_EQ(word_at(good_, vchip_test::kInterruptedAt), 0u);
  const Outcome outcome = vchip_test::run(image(), use_refused_image);
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.output, "");
}

TEST_F(Refusal, Truncated) {
  for (const size_t size : {size_t{9}, size_t{63}, size_t{64}, good_.size() / 2, good_.size() - 1})
    expect_refused(good_.substr(0, size), "truncated: " + of_size(size));
}

TEST_F(Refusal, Empty) {
  expect_refused("", "truncated: the file is empty");
}

TEST_F(Refusal, TooLong) {
  expect_refused(good_ + "x", "too long: " + of_size(good_.size() + 1));
}

TEST_F(Refusal, Foreign) {
  expect_refused("hello\n", "not a virtual chip image");
  expect_refused(std::string(good_.size(), '\0'), "not a virtual chip image");
  std::string other_magic = good_;
  other_magic[7] = '\r';
  expect_refused(other_magic, "not a virtual chip image");
}

TEST_F(Refusal, OtherVersion) {
  std::string bytes = good_;
  set_word(bytes, vchip_test::kVersionAt, 1);
  set_word(bytes, vchip_test::kCheckAt, check_of(bytes));
  expect_refused(bytes, "made by another version of the virtual chip");
}

TEST_F(Refusal, OtherByteOrder) {
  std::string bytes = good_;
  for (size_t offset = vchip_test::kByteOrderAt; offset < vchip_test::kHeaderSize; offset += 4)
    std::reverse(bytes.begin() + static_cast<ptrdiff_t>(offset),
                 bytes.begin() + static_cast<ptrdiff_t>(offset + 4));
  expect_refused(bytes, "made on a machine of the other byte order");
}

TEST_F(Refusal, DamagedByteOrderMark) {
  std::string bytes = good_;
  set_word(bytes, vchip_test::kByteOrderAt, 0x02010403);
  expect_refused(bytes, "its byte order mark is damaged");
}

TEST_F(Refusal, AnyDamagedBitUnderTheCheck) {
  for (size_t offset = vchip_test::kSizeAt; offset < vchip_test::kWriterAt; ++offset) {
    std::string bytes = good_;
    bytes[offset] = static_cast<char>(bytes[offset] ^ 0x10);
    expect_refused(bytes, "its header is damaged");
  }
}

TEST_F(Refusal, OtherLayout) {
  std::string bytes = good_;
  set_word(bytes, vchip_test::kLayoutAt, word_at(good_, vchip_test::kLayoutAt) ^ 1);
  set_word(bytes, vchip_test::kCheckAt, check_of(bytes));
  expect_refused(bytes, "made by a virtual chip with another layout");
}

TEST_F(Refusal, OtherSize) {
  std::string bytes = good_;
  set_word(bytes, vchip_test::kSizeAt, static_cast<uint32_t>(good_.size() + 4));
  set_word(bytes, vchip_test::kCheckAt, check_of(bytes));
  expect_refused(bytes + "abcd", "made by a virtual chip with another layout");
}

TEST_F(Refusal, NoRegularFile) {
  ASSERT_EQ(unlink(image_.c_str()), 0);
  ASSERT_EQ(mkdir(image_.c_str(), 0777), 0);
  expect_refused_file("not a regular file");
  ASSERT_EQ(rmdir(image_.c_str()), 0);
  ASSERT_EQ(mkfifo(image_.c_str(), 0666), 0);
  expect_refused_file("not a regular file");
}

TEST_F(Refusal, NoSuchDirectory) {
  ASSERT_EQ(unlink(image_.c_str()), 0);
  image_ = file("missing/chip.img");
  expect_refused_file("its directory does not exist");
}

TEST_F(Refusal, ADirectoryThatIsAFile) {
  image_ += "/chip.img";
  const Outcome outcome = vchip_test::run(image(), use_refused_image);
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.output,
            "swctl-vchip: image " + image_ + ": cannot be opened: Not a directory\n");
}

TEST_F(Refusal, ALinkToNothing) {
  ASSERT_EQ(unlink(image_.c_str()), 0);
  ASSERT_EQ(symlink("nowhere", image_.c_str()), 0);
  const Outcome outcome = vchip_test::run(image(), use_refused_image);
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.output, "swctl-vchip: image " + image_ + ": a symbolic link to nothing\n");
  EXPECT_EQ(files().size(), 1u);
}

// Root may write everything, so the step is done by somebody else.
int as_nobody(int (*work)()) {
  constexpr uid_t kNobody = 65534;
  if (geteuid() == 0 && (setgid(kNobody) != 0 || setuid(kNobody) != 0)) return 20;
  return work();
}

TEST_F(Refusal, NoPermission) {
  ASSERT_EQ(chmod(directory_.c_str(), 0755), 0);
  for (const mode_t mode : {mode_t{0444}, mode_t{0000}, mode_t{0200}}) {
    ASSERT_EQ(chmod(image_.c_str(), mode), 0);
    const Outcome outcome = vchip_test::run(image(), [] { return as_nobody(use_refused_image); });
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.output,
              "swctl-vchip: image " + image_ + ": cannot be opened: Permission denied\n");
  }
  ASSERT_EQ(chmod(image_.c_str(), 0600), 0);
  EXPECT_EQ(read_file(image_), good_);
}

TEST_F(Refusal, NoPermissionToMakeOne) {
  ASSERT_EQ(unlink(image_.c_str()), 0);
  ASSERT_EQ(chmod(directory_.c_str(), 0555), 0);
  const Outcome outcome = vchip_test::run(image(), [] { return as_nobody(use_refused_image); });
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.output,
            "swctl-vchip: image " + image_ + ": cannot be made: Permission denied\n");
  ASSERT_EQ(chmod(directory_.c_str(), 0755), 0);
  EXPECT_TRUE(files().empty());
}

TEST_F(Refusal, AProgramThatAsksGetsTheTextAndNoLine) {
  write_file(image_, "hello\n");
  const std::string expected = "image " + image_ + ": not a virtual chip image";
  const Outcome outcome = vchip_test::run(image(), [&] {
    const char *text = vchip_open();
    if (text == nullptr || text != expected) return 1;
    if (vchip_open() != text) return 2;
    return use_refused_image();
  });
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.output, "");
}

TEST_F(Refusal, TheLogStillWrites) {
  write_file(image_, "hello\n");
  const Outcome outcome = vchip_test::run(image(), [] {
    Log_logging_func(6, 0, "T", "line\n");
    return 0;
  });
  EXPECT_EQ(outcome.output,
            "T: line\nswctl-vchip: image " + image_ + ": not a virtual chip image\n");
}

}  // namespace
