// SPDX-License-Identifier: MIT
// The lock of an image, between processes. Of which kind it is says the image:
// who opens it first looks at what the system can do and decides for all who
// come after.
#ifndef VCHIP_IMAGE_IMAGE_LOCK_H
#define VCHIP_IMAGE_IMAGE_LOCK_H

#include <functional>
#include <string>

#include "image/header.h"

namespace vchip {

enum LockKind : uint32_t {
  kNotDecided = 0,
  kFutexLock = 1,   // a robust futex: no call of the system while it is free
  kRecordLock = 2,  // a record lock of the file: two calls of the system, always
};

// What an image says, and what the first to open one would decide.
LockKind lock_kind(const Header &header);
LockKind best_lock_kind(bool prefer_record);
const char *lock_name(LockKind kind);

class ImageLock {
 public:
  enum class Outcome { taken, busy, failed, refused };

  // Joins those who have the image open: `descriptor` is that which `header` is
  // mapped from. The first of them looks whether the image is usable before it
  // changes anything, decides on the kind, a record lock if it prefers that, and
  // frees what a copy or a power cut has left locked; others look under the
  // lock, since somebody may be changing it. Busy: somebody else was joining
  // until that time. Failed: the system does not have the lock that the others
  // use. Refused: not usable.
  struct Joining {
    bool prefer_record;
    std::function<bool()> is_usable;
    bool alone = false;  // told: it is the first, and has looked
  };
  Outcome join(int descriptor, Header &header, Joining &joining, uint64_t until);
  void leave() { *this = {}; }

  bool try_lock();
  // Until that time; `failed` comes with errno.
  Outcome lock_until(uint64_t until);
  void unlock();

  LockKind kind() const { return kind_; }
  // Whether the descriptor is used after joining.
  bool needs_descriptor() const { return kind_ == kRecordLock; }

 private:
  bool may_try();
  Outcome lock_file_until(uint64_t until);
  void note_holder();

  LockKind kind_ = kNotDecided;
  int descriptor_ = -1;
  Header *header_ = nullptr;
  uint32_t place_ = 0;
};

// What is known of the process that has an image's lock.
struct Holder {
  uint32_t process = 0;  // 0: nobody has it, or one out of sight
  std::string name;      // empty: not known
  bool stopped = false;
  uint32_t held_ms = 0;
};
// False: nobody has it.
bool find_holder(int descriptor, const Header &header, Holder &holder);

}  // namespace vchip

#endif
