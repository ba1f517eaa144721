// SPDX-License-Identifier: MIT
#include "line_file.h"

#include <atomic>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <stdexcept>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

#include "os/high_descriptor.h"

namespace swprobe {
namespace {

// How many forks lie between the first process and this one.
std::atomic<unsigned> generation = 0;

// 0, or the error number.
int write_all(int descriptor, std::string_view text) {
  while (!text.empty()) {
    const ssize_t written = ::write(descriptor, text.data(), text.size());
    if (written < 0 && errno == EINTR) continue;
    if (written < 0) return errno;
    text.remove_prefix(static_cast<size_t>(written));
  }
  return 0;
}

int open_lines(const std::string &path, int flags) {
  return os::open_high(path, O_WRONLY | O_CREAT | O_APPEND | flags, 0666);
}

std::string old_name(const std::string &path, unsigned age) {
  return path + '.' + std::to_string(age);
}

// The oldest goes.
void make_old(const std::string &path, unsigned keep) {
  for (unsigned age = keep; age > 1; --age)
    rename(old_name(path, age - 1).c_str(), old_name(path, age).c_str());
  if (keep > 0) rename(path.c_str(), old_name(path, 1).c_str());
}

}  // namespace

std::string with_process_id(std::string path) {
  const size_t mark = path.find("%p");
  return mark == std::string::npos ? path : path.replace(mark, 2, std::to_string(getpid()));
}

// If it is closed, whatever is opened next has its number.
LineFile::LineFile()
    : process_(generation), descriptor_(fcntl(STDERR_FILENO, F_GETFD) < 0 ? -1 : STDERR_FILENO) {}

LineFile::LineFile(const std::string &name, const Rotation &rotation, const std::string &header)
    : name_(name),
      path_(with_process_id(name)),
      rotation_(rotation),
      header_(header),
      process_(generation),
      descriptor_(open_lines(path_, O_TRUNC)) {
  if (descriptor_ < 0) {
    throw std::runtime_error("cannot write '" + path_ + "': " + std::strerror(errno));
  }
  begin();
}

LineFile::~LineFile() {
  if (is_file() && descriptor_ >= 0) close(descriptor_);
}

LineFile::LineFile(LineFile &&other) noexcept
    : name_(std::move(other.name_)),
      path_(std::move(other.path_)),
      rotation_(other.rotation_),
      header_(std::move(other.header_)),
      process_(other.process_),
      descriptor_(std::exchange(other.descriptor_, -1)),
      size_(other.size_) {}

void LineFile::in_child() {
  ++generation;
}

void LineFile::begin() {
  size_ = 0;
  if (!header_.empty()) put(header_);
}

void LineFile::write(std::string_view line) {
  if (process_ != generation) follow_process();
  const bool full =
      rotation_.size > 0 && size_ > header_.size() + 1 && size_ + line.size() >= rotation_.size;
  if (full && descriptor_ >= 0) rotate();
  if (descriptor_ >= 0) put(line);
}

void LineFile::put(std::string_view line) {
  buffer_.assign(line);
  buffer_ += '\n';
  const int error = write_all(descriptor_, buffer_);
  size_ += buffer_.size();
  if (error != 0 && is_file()) give_up(error);
}

void LineFile::give_up(int error) {
  complain("cannot write '" + path_ + "' any further: " + std::strerror(error));
  if (descriptor_ >= 0) close(std::exchange(descriptor_, -1));
}

// Another process that writes the file may have made it an old one already.
bool LineFile::was_rotated() const {
  struct stat own = {};
  struct stat named = {};
  if (fstat(descriptor_, &own) != 0 || stat(path_.c_str(), &named) != 0) return false;
  return own.st_dev != named.st_dev || own.st_ino != named.st_ino;
}

bool LineFile::reopen(int flags) {
  if (descriptor_ >= 0) close(descriptor_);
  descriptor_ = open_lines(path_, flags);
  if (descriptor_ < 0) give_up(errno);
  return descriptor_ >= 0;
}

void LineFile::rotate() {
  if (was_rotated()) {
    struct stat status = {};
    if (reopen(0) && fstat(descriptor_, &status) == 0)
      size_ = static_cast<uint64_t>(status.st_size);
    return;
  }
  make_old(path_, rotation_.keep);
  if (reopen(O_TRUNC)) begin();
}

// A child of fork() has a file of its own if the name says so.
void LineFile::follow_process() {
  process_ = generation;
  std::string path = with_process_id(name_);
  if (path == path_ || descriptor_ < 0) return;
  path_ = std::move(path);
  if (reopen(O_TRUNC)) begin();
}

void complain(const std::string &what) {
  LineFile().write("swprobe: " + what);
}

void refuse(const std::string &what, int status) {
  complain(what);
  // Handlers that are registered for the end of the process may call the SDK;
  // none of those calls may pass either.
  std::fflush(stdout);
  _exit(status);
}

}  // namespace swprobe
