// SPDX-License-Identifier: MIT
// Steps in processes of their own. The test program itself never touches the
// chip, so that every child opens it again.
#ifndef SWCTL_TESTS_VCHIP_CHILD_H
#define SWCTL_TESTS_VCHIP_CHILD_H

#include <functional>
#include <gtest/gtest.h>
#include <map>
#include <string>
#include <sys/types.h>
#include <vector>

namespace vchip_test {

using Environment = std::map<std::string, std::string>;
using Work = std::function<int()>;

struct Outcome {
  int status;          // what the work answered; 1000 + signal if it was killed
  std::string output;  // of standard output and standard error
};

// Starts `work` in a child and does not wait. A child that hangs is ended by
// the system after a while. The chip's variables that `environment` does not
// name are unset.
pid_t start(const Environment &environment, const Work &work);

// Waits for a child: what Outcome::status says.
int wait_for(pid_t child);

// Runs `work` in a child to its end.
Outcome run(const Environment &environment, const Work &work);

// Lets children loose at once: each waits until the parent opens.
class Gate {
 public:
  Gate();
  void wait();
  void open();

 private:
  int ends_[2];
};

// A new directory, removed with all that it holds.
class ImageTest : public testing::Test {
 protected:
  void SetUp() override;
  void TearDown() override;

  std::string file(const std::string &name) const { return directory_ + "/" + name; }
  // The environment of a child that uses the image.
  Environment image() const { return {{"VCHIP_IMAGE", image_}}; }
  // Makes the image by resetting it.
  void make_image();
  std::vector<std::string> files() const;

  std::string directory_;
  std::string image_;
};

// Whether the system, or what emulates it, keeps lists of robust futexes.
bool has_robust_futexes();

// Whether a test that repeats itself may take its time, as in `./dev soak`: SWCTL_SOAK is set.
bool soaking();

std::string read_file(const std::string &path);
void write_file(const std::string &path, const std::string &bytes);
// In place: who has the file mapped sees it.
void overwrite_file(const std::string &path, const std::string &bytes);
// With a hole where a page is all zero.
void write_sparse_file(const std::string &path, const std::string &bytes);

// Words of an image's header, by their offset.
enum HeaderOffset : size_t {
  kByteOrderAt = 8,
  kVersionAt = 12,
  kSizeAt = 16,
  kLayoutAt = 20,
  kCheckAt = 24,
  kWriterAt = 28,
  kInterruptedAt = 32,
  kOwnerAt = 64,
  kTurnAt = 68,
  kLockKindAt = 72,
  kHolderAt = 76,
  kHeaderSize = 4096,
};
uint32_t word_at(const std::string &bytes, size_t offset);
void set_word(std::string &bytes, size_t offset, uint32_t word);

}  // namespace vchip_test

#endif
