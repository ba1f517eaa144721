// SPDX-License-Identifier: MIT
#include "chip/process.h"

#include <atomic>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <pthread.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

#include "chip/settings.h"
#include "chip/words.h"
#include "common/standard_error.h"
#include "image/image.h"
#include "image/sparse.h"

namespace vchip {
namespace {

// A thread that is cancelled while it waits or opens would leave a lock held.
class NoCancel {
 public:
  NoCancel() { pthread_setcancelstate(PTHREAD_CANCEL_DISABLE, &before_); }
  ~NoCancel() { pthread_setcancelstate(before_, nullptr); }
  NoCancel(const NoCancel &) = delete;
  NoCancel &operator=(const NoCancel &) = delete;

 private:
  int before_ = PTHREAD_CANCEL_ENABLE;
};

constexpr uint64_t kUntilTold = 1'000'000'000;  // ns

alignas(64) LockWords threads;
std::atomic<bool> record_lock_used = false;

// A child that is forked inside another thread's step would inherit a lock
// that nobody gives back. Nobody is inside a step while the one who forks holds
// it; the child does not inherit the image's.
void before_fork() {
  Patience patience(Patience::forever);
  lock_threads(patience);
}
void in_child() {
  Process &own = this_process();
  own.inherited = own.state != nullptr && !own.path.empty();
  unlock_in_child(threads);
}
__attribute__((constructor)) void watch_forks() {
  pthread_atfork(before_fork, unlock_threads, in_child);
}

int32_t refuse(Process &own, const std::string &why) {
  own.refusal = own.path.empty() ? why : "image " + own.path + ": " + why;
  return VCHIP_E_IMAGE;
}

void give_back(Process &own) {
  if (own.state != nullptr) give_back_memory(own.state, sizeof(State));
  if (own.descriptor >= 0) close(own.descriptor);
  own.lock.leave();
  record_lock_used = false;
  own.state = nullptr;
  own.descriptor = -1;
}

int32_t open_private(Process &own) {
  void *memory = private_memory(sizeof(State));
  if (memory == nullptr) return refuse(own, "no memory for a private chip");
  make_state(memory);
  own.state = static_cast<State *>(memory);
  static bool said = false;
  if (!std::exchange(said, true))
    write_notice("swctl-vchip: VCHIP_IMAGE is not set: the chip is gone when the process ends");
  return 0;
}

// Who has the lock, in words.
std::string describe_holder(const Process &own) {
  Holder holder;
  if (!find_holder(own.descriptor, own.state->header, holder) || holder.process == 0)
    return "another process";
  std::string text = "process " + std::to_string(holder.process);
  if (!holder.name.empty()) text += " (" + holder.name + ")";
  return holder.stopped ? text + ", which is stopped" : text;
}

// Once, however many locks the call waits for, and however many calls give up.
void tell_wait(Process &own, Patience &patience) {
  if (!patience.tell() || own.wait_told) return;
  own.wait_told = true;
  write_error_line("swctl-vchip: image " + own.path + ": waiting for " + describe_holder(own));
}

int32_t give_up(Process &own, const std::string &whom) {
  own.busy = "image " + own.path + ": held by " + whom + "; gave up waiting";
  return VCHIP_E_BUSY;
}

bool is_file(int descriptor, const Process &own) {
  struct stat status = {};
  return fstat(descriptor, &status) == 0 && status.st_dev == own.device &&
         status.st_ino == own.inode;
}

// Not in the image itself: what is not there would be made by looking at it.
//
// A reset that was interrupted leaves anything. It is done again before anybody
// looks at what is there.
bool is_usable(const Process &own) {
  if (own.state->header.writer == kResetting) return true;
  auto *const copy = static_cast<State *>(private_memory(sizeof(State)));
  if (copy == nullptr) return is_sound(*own.state);
  const bool sound = is_sound(read_image(own, copy) ? *copy : *own.state);
  give_back_memory(copy, sizeof(State));
  return sound;
}

int32_t refuse_damaged(Process &own) {
  return refuse(own, "its contents are damaged");
}

// Of one that others use: while nobody changes it.
int32_t look_under_lock(Process &own, Patience &patience) {
  const int32_t fault = lock_image(own, patience);
  if (fault != 0) return fault;
  const bool usable = is_usable(own);
  unlock_image(own);
  return usable ? 0 : refuse_damaged(own);
}

// Joins those who have the image open.
int32_t join(Process &own, ImageLock::Joining &joining, Patience &patience) {
  using Outcome = ImageLock::Outcome;
  const auto attempt = [&](uint64_t until) {
    return own.lock.join(own.descriptor, own.state->header, joining, until);
  };
  Outcome outcome = attempt(0);
  while (outcome == Outcome::busy) {
    const uint64_t until = patience.next_look();
    if (patience.exhausted()) return give_up(own, "another process, which is opening it");
    outcome = attempt(until);
  }
  record_lock_used = own.lock.kind() == kRecordLock;
  if (outcome == Outcome::refused) return refuse_damaged(own);
  if (outcome == Outcome::failed)
    return refuse(own, "in use under a lock that this system does not have");
  return 0;
}

int32_t join_if_usable(Process &own, Patience &patience) {
  ImageLock::Joining joining = {record_lock_setting(), [&own] { return is_usable(own); }};
  const int32_t fault = join(own, joining, patience);
  return fault != 0 || joining.alone ? fault : look_under_lock(own, patience);
}

// The system's lock of a mapped file outlives the descriptor.
void drop_descriptor(Process &own) {
  if (own.lock.needs_descriptor()) return;
  close(own.descriptor);
  own.descriptor = -1;
}

void note_file(Process &own) {
  struct stat status = {};
  fstat(own.descriptor, &status);
  own.device = status.st_dev;
  own.inode = status.st_ino;
  own.opened_path = own.path;
  char *directory = own.path[0] == '/' ? nullptr : getcwd(nullptr, 0);
  if (directory != nullptr) own.opened_path = std::string(directory) + '/' + own.path;
  free(directory);
}

int32_t open_shared(Process &own, Patience &patience) {
  const OpenedImage image =
      open_image(own.path, {kImageSize, state_layout(), sizeof(State), make_image});
  if (image.memory == nullptr) return refuse(own, image.refusal);
  own.descriptor = image.descriptor;
  own.state = static_cast<State *>(image.memory);
  note_file(own);
  const int32_t fault = join_if_usable(own, patience);
  if (fault != 0) {
    give_back(own);
    return fault;
  }
  drop_descriptor(own);
  if (image.made) write_notice("swctl-vchip: image " + own.path + ": newly made");
  return 0;
}

// A forked child opens the image for itself, in the place where its parent had
// it, so that it is known as who it is. If the file is out of reach it goes on
// in its parent's name, who has looked at the image.
int32_t open_inherited(Process &own, Patience &patience) {
  own.inherited = false;
  const int descriptor = open_descriptor(own.opened_path);
  void *memory = MAP_FAILED;
  if (descriptor >= 0 && is_file(descriptor, own))
    memory = mmap(own.state, sizeof(State), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_FIXED,
                  descriptor, 0);
  if (memory == MAP_FAILED) {
    if (descriptor >= 0) close(descriptor);
    return 0;
  }
  if (own.descriptor >= 0) close(own.descriptor);
  own.descriptor = descriptor;
  ImageLock::Joining joining = {record_lock_setting(), [] { return true; }};
  const int32_t fault = join(own, joining, patience);
  own.inherited = fault == VCHIP_E_BUSY;
  if (fault == 0) drop_descriptor(own);
  return fault;
}

}  // namespace

Process &this_process() {
  // Never destroyed: a call may come from another library's destructor.
  static Process &instance = *new Process;
  return instance;
}

bool uses_record_lock() {
  return record_lock_used;
}

bool lock_threads(Patience &patience) {
  if (try_lock(threads, Among::threads)) return true;
  for (;;) {
    const uint64_t until = patience.next_look();
    if (patience.exhausted()) return false;
    if (lock_until(threads, Among::threads, until)) return true;
  }
}

void unlock_threads() {
  unlock(threads, Among::threads);
}

int32_t open_once(Process &own, Patience &patience) {
  if (own.opened && !own.inherited) return own.state != nullptr ? 0 : VCHIP_E_IMAGE;
  const NoCancel whole;
  if (own.inherited) return open_inherited(own, patience);
  own.path = image_setting();
  const int32_t fault = own.path.empty() ? open_private(own) : open_shared(own, patience);
  own.opened = fault != VCHIP_E_BUSY;
  return fault;
}

int32_t lock_image(Process &own, Patience &patience) {
  if (own.path.empty() || own.lock.try_lock()) {
    own.wait_told = own.busy_told = false;
    return 0;
  }
  const NoCancel whole;
  auto outcome = ImageLock::Outcome::busy;
  while (outcome == ImageLock::Outcome::busy) {
    const uint64_t until = patience.next_look();
    if (patience.waited() >= kUntilTold) tell_wait(own, patience);
    if (patience.exhausted()) return give_up(own, describe_holder(own));
    outcome = own.lock.lock_until(until);
  }
  if (outcome == ImageLock::Outcome::failed)
    return refuse(own, std::string("cannot be locked: ") + strerror(errno));
  own.wait_told = own.busy_told = false;
  return 0;
}

void unlock_image(Process &own) {
  if (!own.path.empty()) own.lock.unlock();
}

// A record lock would be lost with another descriptor that is closed.
bool read_image(const Process &own, void *zeroes) {
  if (own.path.empty()) return false;
  if (own.descriptor >= 0) return read_sparse(own.descriptor, zeroes, sizeof(State));
  const int descriptor = open_descriptor(own.opened_path);
  if (descriptor < 0) return false;
  const bool read = is_file(descriptor, own) && read_sparse(descriptor, zeroes, sizeof(State));
  close(descriptor);
  return read;
}

void reset_chip(Process &own) {
  void *const chip = &own.state->platform;
  constexpr size_t kSize = sizeof(State) - sizeof(Header);
  if (own.path.empty()) {
    zero_private(chip, kSize);
  } else {
    zero_mapped(chip, kSize, own.descriptor, sizeof(Header));
  }
  power_on(*own.state);
}

void close_chip(Process &own) {
  give_back(own);
  own = {};
  forget_wait_setting();
}

}  // namespace vchip
