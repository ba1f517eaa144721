// SPDX-License-Identifier: MIT
#include "config/store.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <sys/stat.h>
#include <unistd.h>

#include "fault.h"
#include "text.h"

namespace swsh {
namespace {

[[noreturn]] void fail_to_write(const std::string &path, int error) {
  Fault fault;
  fault.status = kRefused;
  fault.message = quoted(path) + " cannot be written: " + strerror(error);
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
  std::string temporary = path + ".XXXXXX";
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

}  // namespace swsh
