// SPDX-License-Identifier: MIT
#include "support/stage.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <dlfcn.h>
#include <sys/mman.h>
#include <unistd.h>

namespace swfuzz {
namespace {

constexpr int kSleeps = 3;

// The standard error of the start: what a target prints on its own is thrown
// away later.
const int standard_error = dup(STDERR_FILENO);

// The fuzzer has threads of its own, which are never on stage.
thread_local bool staged = false;
int sleeps = 0;

MemoryFile &input_file() {
  static MemoryFile file;
  return file;
}

MemoryFile &other_file() {
  static MemoryFile file;
  return file;
}

// The function that would have been called.
template <class Function>
Function replaced(Function, const char *name) {
  return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

}  // namespace

MemoryFile::MemoryFile()
    : descriptor_(memfd_create("swctl-fuzz", MFD_CLOEXEC)),
      path_("/proc/self/fd/" + std::to_string(descriptor_)) {
  if (descriptor_ < 0) wrong("no file in memory can be made");
}

MemoryFile::~MemoryFile() {
  close(descriptor_);
}

void MemoryFile::set(std::string_view content) {
  const bool done = ftruncate(descriptor_, 0) == 0 &&
                    pwrite(descriptor_, content.data(), content.size(), 0) ==
                        static_cast<ssize_t>(content.size()) &&
                    lseek(descriptor_, 0, SEEK_SET) == 0;
  if (!done) wrong("a file in memory cannot be written");
}

std::string MemoryFile::content() const {
  const off_t size = lseek(descriptor_, 0, SEEK_END);
  std::string bytes(static_cast<size_t>(size), '\0');
  if (pread(descriptor_, bytes.data(), bytes.size(), 0) != size)
    wrong("a file in memory cannot be read");
  return bytes;
}

Stage::Stage(std::string_view input) {
  input_file().set(input);
  other_file();
  sleeps = 0;
  staged = true;
}

Stage::~Stage() {
  staged = false;
}

void set_other_file(std::string_view content) {
  other_file().set(content);
}

void wrong(const std::string &what) {
  dprintf(standard_error, "wrong: %s\n", what.c_str());
  abort();
}

}  // namespace swfuzz

using namespace swfuzz;

extern "C" {

FILE *fopen(const char *path, const char *mode) {
  static const auto real = replaced(&fopen, "fopen");
  if (!staged) return real(path, mode);
  const std::string name = path;
  if (name.empty() || name.ends_with('/')) {
    errno = ENOENT;
    return nullptr;
  }
  const MemoryFile &file = name == kInputName ? input_file() : other_file();
  return real(file.path().c_str(), mode);
}

// The cable test waits for its result.
unsigned sleep(unsigned seconds) {
  static const auto real = replaced(&sleep, "sleep");
  return staged ? 0 : real(seconds);
}

// Commands that repeat themselves wait in between.
int nanosleep(const timespec *wanted, timespec *left) {
  static const auto real = replaced(&nanosleep, "nanosleep");
  if (!staged) return real(wanted, left);
  if (++sleeps > kSleeps) throw SleptEnough();
  return 0;
}

}  // extern "C"
