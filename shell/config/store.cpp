// SPDX-License-Identifier: MIT
#include "config/store.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

#include "chip/absent.h"
#include "fault.h"
#include "text.h"

namespace swsh {
namespace {

constexpr char kBeingWritten[] = "~";

[[noreturn]] void fail_to_write(const std::string &path, int error) {
  Fault fault;
  fault.status = kRefused;
  fault.message = in_quotes(path) + " cannot be written: " + strerror(error);
  fault.culprit = path;
  throw CommandError(fault);
}

bool write_all(int descriptor, std::string_view text) {
  while (!text.empty()) {
    const ssize_t written = write(descriptor, text.data(), text.size());
    if (written < 0 && errno == EINTR) continue;
    if (written < 0) return false;
    text.remove_prefix(static_cast<size_t>(written));
  }
  return fsync(descriptor) == 0;
}

// As open() would make it.
mode_t new_file_mode() {
  const mode_t mask = umask(0);
  umask(mask);
  return 0666 & ~mask;
}

}  // namespace

void write_whole(const std::string &path, const std::string &text) {
  struct stat status = {};
  if (stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode)) fail_to_write(path, EISDIR);
  std::string temporary = path + kBeingWritten + "XXXXXX";
  const int descriptor = mkstemp(temporary.data());
  if (descriptor < 0) fail_to_write(path, errno);
  bool good = write_all(descriptor, text) && fchmod(descriptor, new_file_mode()) == 0;
  int error = errno;
  good = close(descriptor) == 0 && good;
  if (good && rename(temporary.c_str(), path.c_str()) == 0) return;
  if (good) error = errno;
  unlink(temporary.c_str());
  fail_to_write(path, error);
}

namespace {

constexpr char kUsualDirectory[] = "/var/lib/swctl";
constexpr size_t kLongestName = 64;
constexpr std::string_view kNameCharacters =
    "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789._-";

void expect_name(const std::string &name) {
  const bool good = !name.empty() && name.size() <= kLongestName && name.front() != '.' &&
                    name.find_first_not_of(kNameCharacters) == std::string::npos;
  if (!good)
    throw CommandError(wrong_usage(in_quotes(name) + " is no name of a checkpoint", name,
                                   {"up to 64 letters, digits, - _ and ."}));
}

}  // namespace

std::string unit_path(uint32_t unit) {
  const char *given = getenv("SWCTL_STATE_DIRECTORY");
  const std::string directory = given == nullptr || *given == 0 ? kUsualDirectory : given;
  return directory + "/unit" + std::to_string(unit);
}

std::string unit_directory(uint32_t unit) {
  const std::string own = unit_path(unit);
  std::error_code error;
  std::filesystem::create_directories(own, error);
  if (!error) return own;
  Fault fault;
  fault.status = kRefused;
  fault.message = in_quotes(own) + " cannot be made: " + error.message();
  fault.culprit = own;
  throw CommandError(fault);
}

std::vector<Checkpoint> checkpoints(uint32_t unit) {
  std::vector<Checkpoint> all;
  const std::string directory = unit_directory(unit) + "/checkpoints";
  std::error_code error;
  for (const auto &entry : std::filesystem::directory_iterator(directory, error)) {
    struct stat status = {};
    const std::string name = entry.path().filename();
    const bool is_whole = name.find(kBeingWritten) == std::string::npos;
    if (is_whole && stat(entry.path().c_str(), &status) == 0)
      all.push_back({name, status.st_mtime});
  }
  std::ranges::sort(all, {}, &Checkpoint::name);
  return all;
}

void keep_checkpoint(uint32_t unit, const std::string &name, const std::string &text) {
  expect_name(name);
  const std::vector<Checkpoint> all = checkpoints(unit);
  const bool is_new = std::ranges::find(all, name, &Checkpoint::name) == all.end();
  if (is_new && all.size() >= kMostCheckpoints)
    throw CommandError(wrong_usage(
        "there are " + std::to_string(all.size()) + " checkpoints, and no more can be kept", name,
        {"config forget of one before"}));
  const std::string directory = unit_directory(unit) + "/checkpoints";
  std::error_code ignored;  // shows when the file is written
  std::filesystem::create_directories(directory, ignored);
  write_whole(directory + '/' + name, text);
}

std::string checkpoint_file(uint32_t unit, const std::string &name) {
  expect_name(name);
  const std::string file = unit_directory(unit) + "/checkpoints/" + name;
  if (access(file.c_str(), F_OK) != 0) throw there_is_no("checkpoint", name);
  return file;
}

void forget_checkpoint(uint32_t unit, const std::string &name) {
  const std::string file = checkpoint_file(unit, name);
  if (unlink(file.c_str()) != 0) fail_to_write(file, errno);
}

}  // namespace swsh
