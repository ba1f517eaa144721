// SPDX-License-Identifier: MIT
#include "image/image_lock.h"

#include <cerrno>
#include <cstring>
#include <time.h>
#include <unistd.h>

#include "common/process.h"
#include "image/file_lock.h"
#include "image/patience.h"

namespace vchip {
namespace {

constexpr useconds_t kShortNap = 20;
constexpr useconds_t kLongNap = 5000;
constexpr uint64_t kLong = 20'000'000;  // ns, from when on it naps longer
// How long a free lock is left to the one whose turn it is.
constexpr uint64_t kTurnGrace = 300'000;  // ns

// Milliseconds of a clock that costs no look at the hardware.
uint32_t coarse_time() {
  timespec now = {};
  clock_gettime(CLOCK_MONOTONIC_COARSE, &now);
  return static_cast<uint32_t>(now.tv_sec) * 1000 + static_cast<uint32_t>(now.tv_nsec / 1'000'000);
}

uint32_t load(const uint32_t &word) {
  return __atomic_load_n(&word, __ATOMIC_RELAXED);
}
void store(uint32_t &word, uint32_t value) {
  __atomic_store_n(&word, value, __ATOMIC_RELAXED);
}

}  // namespace

LockKind lock_kind(const Header &header) {
  return load(header.lock_kind) == kFutexLock ? kFutexLock : kRecordLock;
}

LockKind best_lock_kind(bool prefer_record) {
  return robust_futexes() && !prefer_record ? kFutexLock : kRecordLock;
}

const char *lock_name(LockKind kind) {
  return kind == kFutexLock ? "robust futex" : "record lock";
}

ImageLock::Outcome ImageLock::join(int descriptor, Header &header, Joining &joining,
                                   uint64_t until) {
  descriptor_ = descriptor;
  header_ = &header;
  place_ = kUnlisted;
  kind_ = kRecordLock;
  if (!can_list_openers(descriptor))
    return lock_kind(header) == kFutexLock ? Outcome::failed : Outcome::taken;
  if (!lock_door(descriptor, Door::open, until)) return Outcome::busy;
  joining.alone = !is_in_use(descriptor);
  if (joining.alone && !joining.is_usable()) {
    unlock_door(descriptor);
    return Outcome::refused;
  }
  if (joining.alone) {
    header.lock = {};
    store(header.lock_kind, best_lock_kind(joining.prefer_record));
  }
  kind_ = lock_kind(header);
  const bool usable = kind_ == kRecordLock || robust_futexes();
  if (usable) place_ = take_place(descriptor, header.openers);
  unlock_door(descriptor);
  return usable ? Outcome::taken : Outcome::failed;
}

void ImageLock::note_holder() {
  store(header_->holder, place_);
  store(header_->held_since, coarse_time());
}

bool ImageLock::try_lock() {
  const bool taken = kind_ == kFutexLock ? vchip::try_lock(header_->lock, Among::processes)
                                         : load(header_->lock.turn) == 0 &&
                                               try_lock_file(descriptor_) == Attempt::done;
  if (taken) note_holder();
  return taken;
}

// The turn of a record lock is a courtesy: the system does not keep one.
ImageLock::Outcome ImageLock::lock_file_until(uint64_t until) {
  const uint32_t me = thread_number();
  uint32_t &turn = header_->lock.turn;
  const uint64_t start = monotonic_time();
  for (;;) {
    if (load(turn) == 0) store(turn, me);
    const uint64_t now = monotonic_time();
    const bool may_try = load(turn) == me || now - start >= kTurnGrace;
    const Attempt attempt = may_try ? try_lock_file(descriptor_) : Attempt::busy;
    if (attempt != Attempt::busy || now >= until) {
      if (may_try) store(turn, 0);
      if (attempt == Attempt::failed) return Outcome::failed;
      return attempt == Attempt::done ? Outcome::taken : Outcome::busy;
    }
    usleep(now - start < kLong ? kShortNap : kLongNap);
  }
}

ImageLock::Outcome ImageLock::lock_until(uint64_t until) {
  Outcome outcome = Outcome::busy;
  if (kind_ == kRecordLock) {
    outcome = lock_file_until(until);
  } else if (vchip::lock_until(header_->lock, Among::processes, until)) {
    outcome = Outcome::taken;
  }
  if (outcome == Outcome::taken) note_holder();
  return outcome;
}

void ImageLock::unlock() {
  if (kind_ == kFutexLock) {
    vchip::unlock(header_->lock, Among::processes);
  } else {
    unlock_file(descriptor_);
  }
}

namespace {

bool find_owner(int descriptor, const Header &header, Holder &holder) {
  const uint32_t place = load(header.holder);
  const uint32_t thread = owner_of(header.lock);
  const bool record = lock_kind(header) == kRecordLock;
  if (!record && thread == 0) return false;
  holder.process =
      record ? static_cast<uint32_t>(file_lock_holder(descriptor)) : process_of(thread);
  if (record && holder.process == 0) return false;
  // The place tells who it is where process numbers are others.
  if (holder.process == 0 && place < kOpeners) holder.process = header.openers[place].process;
  return true;
}

std::string find_name(const Header &header, uint32_t process) {
  for (const Opener &opener : header.openers)
    if (opener.process == process) return name_of(opener);
  return process_name(process);
}

}  // namespace

bool find_holder(int descriptor, const Header &header, Holder &holder) {
  if (!find_owner(descriptor, header, holder)) return false;
  holder.held_ms = coarse_time() - load(header.held_since);
  holder.name = find_name(header, holder.process);
  holder.stopped = is_stopped(holder.process);
  return true;
}

}  // namespace vchip
