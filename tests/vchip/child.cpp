// SPDX-License-Identifier: MIT
#include "child.h"

#include <swctl-vchip/vchip.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <filesystem>
#include <fstream>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

namespace vchip_test {
namespace {

constexpr unsigned kPatience = 60;  // seconds

void set_environment(const Environment &environment) {
  for (const char *name : {"VCHIP_IMAGE", "VCHIP_LOG", "VCHIP_TRACE", "VCHIP_WAIT", "VCHIP_LOCK"})
    unsetenv(name);
  for (const auto &[name, value] : environment) setenv(name.c_str(), value.c_str(), 1);
}

// An exception must not reach the test program that the child was copied from.
int status_of(const Work &work) {
  int status = 99;
  try {
    status = work();
  } catch (const std::exception &error) {
    fprintf(stderr, "exception: %s\n", error.what());
  }
  fflush(stdout);
  return status;
}

[[noreturn]] void be_child(const Environment &environment, const Work &work) {
  alarm(kPatience);
  set_environment(environment);
  _exit(status_of(work));
}

std::string read_all(int descriptor) {
  std::string text;
  char part[4096];
  for (;;) {
    const ssize_t length = read(descriptor, part, sizeof part);
    if (length <= 0) return text;
    text.append(part, static_cast<size_t>(length));
  }
}

}  // namespace

pid_t start(const Environment &environment, const Work &work) {
  fflush(stdout);
  const pid_t child = fork();
  if (child == 0) be_child(environment, work);
  return child;
}

int wait_for(pid_t child) {
  int status = 0;
  if (waitpid(child, &status, 0) != child) return -1;
  return WIFEXITED(status) ? WEXITSTATUS(status) : 1000 + WTERMSIG(status);
}

Outcome run(const Environment &environment, const Work &work) {
  int ends[2];
  if (pipe(ends) != 0) return {-1, "no pipe"};
  const pid_t child = start(environment, [&] {
    dup2(ends[1], STDOUT_FILENO);
    dup2(ends[1], STDERR_FILENO);
    close(ends[0]);
    close(ends[1]);
    return work();
  });
  close(ends[1]);
  Outcome outcome;
  outcome.output = read_all(ends[0]);
  close(ends[0]);
  outcome.status = wait_for(child);
  return outcome;
}

Gate::Gate() {
  EXPECT_EQ(pipe(ends_), 0);
}

void Gate::wait() {
  char byte;
  close(ends_[1]);
  while (read(ends_[0], &byte, 1) < 0) {
  }
}

void Gate::open() {
  close(ends_[1]);
  close(ends_[0]);
}

void ImageTest::SetUp() {
  std::string name = testing::TempDir() + "vchip-XXXXXX";
  ASSERT_NE(mkdtemp(name.data()), nullptr);
  directory_ = name;
  image_ = directory_ + "/chip.img";
}

void ImageTest::TearDown() {
  std::filesystem::remove_all(directory_);
}

void ImageTest::make_image() {
  const Outcome made = run(image(), [] { return vchip_reset() == 0 ? 0 : 1; });
  ASSERT_EQ(made.status, 0) << made.output;
  ASSERT_EQ(made.output, "");
}

std::vector<std::string> ImageTest::files() const {
  std::vector<std::string> names;
  for (const auto &entry : std::filesystem::directory_iterator(directory_))
    names.push_back(entry.path().filename());
  return names;
}

bool has_robust_futexes() {
  void *head = nullptr;
  size_t length = 0;
  return syscall(SYS_get_robust_list, 0, &head, &length) == 0;
}

bool soaking() {
  return getenv("SWCTL_SOAK") != nullptr;
}

std::string read_file(const std::string &path) {
  std::ifstream stream(path, std::ios::binary | std::ios::ate);
  if (!stream.is_open()) return {};
  std::string bytes(static_cast<size_t>(stream.tellg()), '\0');
  stream.seekg(0);
  stream.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  return bytes;
}

void write_file(const std::string &path, const std::string &bytes) {
  // Some file systems write a file that is cut and filled again to the disk at
  // once, and let its writer wait.
  std::filesystem::remove(path);
  std::ofstream stream(path, std::ios::binary);
  stream << bytes;
}

void overwrite_file(const std::string &path, const std::string &bytes) {
  std::fstream stream(path, std::ios::binary | std::ios::in | std::ios::out);
  stream << bytes;
}

void write_sparse_file(const std::string &path, const std::string &bytes) {
  constexpr size_t kPage = 4096;
  static const std::string zeroes(kPage, '\0');
  std::filesystem::remove(path);
  std::ofstream stream(path, std::ios::binary);
  for (size_t at = 0; at < bytes.size(); at += kPage) {
    const size_t length = std::min(kPage, bytes.size() - at);
    if (bytes.compare(at, length, zeroes, 0, length) == 0) continue;
    stream.seekp(static_cast<std::streamoff>(at));
    stream.write(bytes.data() + at, static_cast<std::streamsize>(length));
  }
  stream.close();
  std::filesystem::resize_file(path, bytes.size());
}

uint32_t word_at(const std::string &bytes, size_t offset) {
  uint32_t word = 0;
  memcpy(&word, bytes.data() + offset, sizeof word);
  return word;
}

void set_word(std::string &bytes, size_t offset, uint32_t word) {
  memcpy(bytes.data() + offset, &word, sizeof word);
}

}  // namespace vchip_test
