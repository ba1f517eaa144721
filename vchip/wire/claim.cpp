// SPDX-License-Identifier: MIT
#include "claim.h"

#include <swctl-vchip/wires.h>

#include <cstdlib>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

#include "fault.h"

namespace vchipd {
namespace {

std::string read_owner(int descriptor) {
  char text[32] = "";
  const ssize_t size = pread(descriptor, text, sizeof text - 1, 0);
  return size > 0 ? "process " + std::to_string(atol(text)) : "another process";
}

// Whether the name still leads to the file: who ends removes it.
bool is_named(int descriptor, const std::string &path) {
  struct stat own = {}, named = {};
  return fstat(descriptor, &own) == 0 && stat(path.c_str(), &named) == 0 &&
         own.st_ino == named.st_ino && own.st_dev == named.st_dev;
}

}  // namespace

// The system gives the lock back when its process ends, however it does.
Claim::Claim(const std::string &image, uint32_t unit)
    : path_(vchip::wires_socket(image, unit) + ".lock") {
  do {
    file_ = os::Descriptor(open(path_.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0666));
    if (!file_) throw system_fault(path_);
    if (flock(file_.get(), LOCK_EX | LOCK_NB) != 0) {
      if (errno != EWOULDBLOCK) throw system_fault(path_);
      throw Fault("image " + image + ": unit " + std::to_string(unit) + " is served by " +
                  read_owner(file_.get()) + " already");
    }
  } while (!is_named(file_.get(), path_));
  const std::string owner = std::to_string(getpid()) + "\n";
  if (ftruncate(file_.get(), 0) != 0 ||
      pwrite(file_.get(), owner.data(), owner.size(), 0) != static_cast<ssize_t>(owner.size()))
    throw system_fault(path_);
}

Claim::~Claim() {
  unlink(path_.c_str());
}

}  // namespace vchipd
