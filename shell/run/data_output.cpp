// SPDX-License-Identifier: MIT
#include "run/data_output.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>

namespace swsh {
namespace {

// Can be neither read nor written.
int open_nothing() {
  return open("/", O_PATH | O_CLOEXEC);
}

// A program may be started with its standard streams closed. A file that it
// opens later must not be taken for one of them.
void fill_standard_descriptors() {
  int opened = open_nothing();
  while (opened >= 0 && opened <= STDERR_FILENO) opened = open_nothing();
  if (opened > STDERR_FILENO) close(opened);
}

}  // namespace

DataOutput DataOutput::take_standard_output() {
  const int data = fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
  fill_standard_descriptors();
  dup2(STDERR_FILENO, STDOUT_FILENO);
  setvbuf(stdout, nullptr, _IOLBF, BUFSIZ);
  return DataOutput(data);
}

void DataOutput::write(std::string_view text) {
  while (!text.empty()) {
    const ssize_t written = ::write(descriptor_, text.data(), text.size());
    if (written < 0 && errno == EINTR) continue;
    if (written < 0) throw OutputError(std::string("standard output: ") + strerror(errno));
    text.remove_prefix(static_cast<size_t>(written));
  }
}

}  // namespace swsh
