// SPDX-License-Identifier: MIT
// An image, looked at from outside.
#include <swctl-vchip/image.h>

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <stdexcept>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include "chip/check.h"
#include "chip/nobody_inside.h"
#include "chip/process.h"
#include "chip/scratch.h"
#include "chip/settings.h"
#include "chip/words.h"
#include "image/image.h"
#include "image/sparse.h"

namespace vchip {
namespace {

constexpr uint64_t kDoorPatience = 100'000'000;  // ns
constexpr uint64_t kBlock = 512;                 // of st_blocks

// A file, its header mapped for reading.
class LookedAt {
 public:
  explicit LookedAt(const std::string &path)
      : file_(view_image(path, {kImageSize, state_layout()})) {
    if (!file_.refusal.empty()) throw std::runtime_error("image " + path + ": " + file_.refusal);
  }
  ~LookedAt() {
    munmap(file_.memory, sizeof(Header));
    close(file_.descriptor);
  }
  LookedAt(const LookedAt &) = delete;
  LookedAt &operator=(const LookedAt &) = delete;

  int descriptor() const { return file_.descriptor; }
  const Header &header() const { return *static_cast<const Header *>(file_.memory); }

 private:
  OpenedImage file_;
};

// Who is opening the image just now is waited for, unless that process does not
// go on.
class LockedDoor {
 public:
  explicit LockedDoor(int descriptor) : descriptor_(descriptor) {
    lock_door(descriptor, Door::look, monotonic_time() + kDoorPatience);
  }
  ~LockedDoor() { unlock_door(descriptor_); }
  LockedDoor(const LockedDoor &) = delete;
  LockedDoor &operator=(const LockedDoor &) = delete;

 private:
  const int descriptor_;
};

void view_users(ImageStatus &status, const LookedAt &image) {
  const LockedDoor door(image.descriptor());
  for (uint32_t place = 0; place < kOpeners; ++place) {
    if (!is_place_taken(image.descriptor(), place)) continue;
    const Opener &opener = image.header().openers[place];
    status.users.push_back({opener.process, name_of(opener), opener.since});
  }
  status.more_users = is_place_taken(image.descriptor(), kUnlisted);
}

void view_holder(ImageStatus &status, const LookedAt &image) {
  Holder holder;
  status.held = find_holder(image.descriptor(), image.header(), holder);
  status.holder = holder.process;
  status.holder_name = holder.name;
  status.holder_stopped = holder.stopped;
  status.held_ms = status.held ? holder.held_ms : 0;
}

}  // namespace

std::vector<Fault> image_faults(const std::string &path) {
  const NobodyInside quiet;
  const LookedAt image(path);
  Scratch<sizeof(State)> scratch;
  State &copy = *static_cast<State *>(scratch.memory());
  // Nobody begins to use it meanwhile.
  const LockedDoor door(image.descriptor());
  if (!read_sparse(image.descriptor(), &copy, sizeof(State)))
    throw std::runtime_error("image " + path + ": cannot be read");
  recover_copy(copy);
  return faults_of(copy);
}

ImageStatus image_status(const std::string &path) {
  const NobodyInside quiet;
  const LookedAt image(path);
  ImageStatus status = {};
  const bool in_use = is_in_use(image.descriptor());
  status.lock =
      lock_name(in_use ? lock_kind(image.header()) : best_lock_kind(record_lock_setting()));
  // A lock that nobody could have is left over from a copy or a power cut.
  if (in_use) view_holder(status, image);
  status.changing = image.header().writer != kNoWriter;
  status.interrupted_writes = image.header().interrupted_writes;
  view_users(status, image);
  struct stat file = {};
  fstat(image.descriptor(), &file);
  status.size = static_cast<uint64_t>(file.st_size);
  status.size_on_disk = static_cast<uint64_t>(file.st_blocks) * kBlock;
  return status;
}

}  // namespace vchip
