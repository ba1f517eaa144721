// SPDX-License-Identifier: MIT
#include "image/image.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

#include "image/file_lock.h"
#include "image/header.h"
#include "image/sparse.h"
#include "os/high_descriptor.h"

namespace vchip {
namespace {

// A file that another process removes between our look and our step is looked
// for again; nobody removes it this often by chance.
constexpr int kAttempts = 100;
constexpr mode_t kMode = 0666;
constexpr int kOtherFlags = O_NONBLOCK | O_NOCTTY;

std::string system_fault(const char *what) {
  return std::string(what) + ": " + strerror(errno);
}

// Opens a new file beside `path`. A creator that was killed may have left one
// under the same name: numbers repeat.
int open_beside(const std::string &path, std::string &name) {
  const std::string stem = path + "." + std::to_string(getpid()) + ".";
  int descriptor = -1;
  for (int attempt = 0; attempt < kAttempts; ++attempt) {
    name = stem + std::to_string(attempt);
    descriptor = os::open_high(name, O_WRONLY | O_CREAT | O_EXCL, kMode);
    if (descriptor >= 0 || errno != EEXIST) break;
  }
  return descriptor;
}

// Makes the image under another name and links it to its own when it is whole.
// Empty: done, or there is another by now, as `exists` says.
std::string link_image(const std::string &path, const void *memory, size_t size, bool &exists) {
  std::string name;
  const int descriptor = open_beside(path, name);
  if (descriptor < 0 && errno == ENOENT) return "its directory does not exist";
  if (descriptor < 0) return system_fault("cannot be made");
  const bool written = write_sparse(descriptor, memory, size);
  std::string fault = written ? "" : system_fault("cannot be written");
  if (close(descriptor) != 0 && fault.empty()) fault = system_fault("cannot be written");
  exists = fault.empty() && link(name.c_str(), path.c_str()) != 0;
  if (exists && errno != EEXIST) fault = system_fault("cannot be made");
  unlink(name.c_str());
  return fault;
}

// Losing against another creator is success: there is an image then.
std::string make_image(const std::string &path, const ImageFormat &format) {
  void *memory = private_memory(format.size);
  if (memory == nullptr) return system_fault("cannot be made");
  format.make(memory);
  bool exists = false;
  std::string fault = link_image(path, memory, format.size, exists);
  give_back_memory(memory, format.size);
  return fault;
}

std::string size_fault(off_t found, uint32_t expected) {
  const char *what = found < static_cast<off_t>(expected) ? "truncated: " : "too long: ";
  return what + std::to_string(found) + " of " + std::to_string(expected) + " bytes";
}

// Why the open file is no image of this format; empty if it is one. Reads only.
std::string content_fault(int descriptor, const ImageFormat &format) {
  struct stat status = {};
  if (fstat(descriptor, &status) != 0) return system_fault("cannot be read");
  if (!S_ISREG(status.st_mode)) return "not a regular file";
  Header header = {};
  const ssize_t length = pread(descriptor, &header, sizeof header, 0);
  if (length < 0) return system_fault("cannot be read");
  if (length == 0) return "truncated: the file is empty";
  if (static_cast<size_t>(length) < sizeof header) {
    const Header expected = make_header(format.size, format.layout);
    const size_t seen = std::min(static_cast<size_t>(length), sizeof header.magic);
    if (memcmp(header.magic, expected.magic, seen) != 0) return "not a virtual chip image";
    return size_fault(status.st_size, format.size);
  }
  if (const char *fault = header_fault(header, format.size, format.layout)) return fault;
  if (status.st_size != static_cast<off_t>(format.size))
    return size_fault(status.st_size, format.size);
  return can_lock_file(descriptor) ? std::string() : system_fault("cannot be locked");
}

// Maps the file's first bytes if it is an image, else closes it.
OpenedImage map_image(int descriptor, const ImageFormat &format, size_t bytes, int protection) {
  OpenedImage image;
  image.refusal = content_fault(descriptor, format);
  void *memory = MAP_FAILED;
  if (image.refusal.empty()) {
    memory = mmap(nullptr, bytes, protection, MAP_SHARED, descriptor, 0);
    if (memory == MAP_FAILED) image.refusal = system_fault("cannot be mapped");
  }
  if (memory == MAP_FAILED) {
    close(descriptor);
    return image;
  }
  // Pages that nobody asks for are not read.
  madvise(memory, bytes, MADV_RANDOM);
  image.memory = memory;
  image.descriptor = descriptor;
  return image;
}

bool is_link(const std::string &path) {
  struct stat status = {};
  return lstat(path.c_str(), &status) == 0 && S_ISLNK(status.st_mode);
}

OpenedImage refused(std::string why) {
  OpenedImage image;
  image.refusal = std::move(why);
  return image;
}

}  // namespace

std::string write_new_image(const std::string &path, const void *memory, size_t size) {
  bool exists = false;
  const std::string fault = link_image(path, memory, size, exists);
  return fault.empty() && exists ? "exists already" : fault;
}

int open_descriptor(const std::string &path) {
  return os::open_high(path, O_RDWR | kOtherFlags);
}

OpenedImage open_image(const std::string &path, const ImageFormat &format) {
  bool made = false;
  for (int attempt = 0; attempt < kAttempts; ++attempt) {
    struct stat status = {};
    // Looked at first because opening some special files has effects.
    const bool exists = stat(path.c_str(), &status) == 0;
    if (exists && !S_ISREG(status.st_mode)) return refused("not a regular file");
    if (!exists && errno != ENOENT) return refused(system_fault("cannot be opened"));
    if (!exists && is_link(path)) return refused("a symbolic link to nothing");
    if (!exists) {
      std::string fault = make_image(path, format);
      if (!fault.empty()) return refused(std::move(fault));
      made = true;
    }
    const int descriptor = open_descriptor(path);
    if (descriptor < 0 && errno == ENOENT) continue;
    if (descriptor < 0) return refused(system_fault("cannot be opened"));
    OpenedImage image = map_image(descriptor, format, format.mapped, PROT_READ | PROT_WRITE);
    image.made = made;
    return image;
  }
  return refused("keeps disappearing while it is opened");
}

OpenedImage view_image(const std::string &path, const ImageFormat &format) {
  struct stat status = {};
  if (stat(path.c_str(), &status) != 0) return refused(system_fault("cannot be opened"));
  if (!S_ISREG(status.st_mode)) return refused("not a regular file");
  const int descriptor = os::open_high(path, O_RDONLY | kOtherFlags);
  if (descriptor < 0) return refused(system_fault("cannot be opened"));
  return map_image(descriptor, format, sizeof(Header), PROT_READ);
}

}  // namespace vchip
