// SPDX-License-Identifier: MIT
#include "chip/chip.h"

#include <atomic>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <mutex>
#include <pthread.h>
#include <sys/mman.h>
#include <unistd.h>
#include <utility>

#include "common/standard_error.h"
#include "image/file_lock.h"
#include "image/image.h"

namespace vchip {
namespace {

// Everything below belongs to whoever holds the mutex. None of it is destroyed
// when the process ends: a call may come from another library's destructor.
std::mutex mutex;

struct Process {
  bool opened = false;
  bool reported = false;
  State *state = nullptr;
  int descriptor = -1;
  std::string path;
  std::string refusal;
};

Process &process() {
  static Process &instance = *new Process;
  return instance;
}

// A child that is forked inside another thread's step would inherit a mutex
// that nobody unlocks. Nobody is inside a step while these hold it; the child
// never inherits a file lock.
__attribute__((constructor)) void watch_forks() {
  pthread_atfork([] { mutex.lock(); }, [] { mutex.unlock(); }, [] { mutex.unlock(); });
}

const FrameKeeper *frame_keeper = nullptr;

void make_state(void *memory) {
  State &state = *static_cast<State *>(memory);
  state.header = make_header(sizeof(State), state_layout());
  ++state.header.revision;
  reset_state(state);
}

void open_private(Process &own) {
  void *memory = private_memory(sizeof(State));
  if (memory == nullptr) {
    own.refusal = "no memory for a private chip";
    return;
  }
  make_state(memory);
  own.state = static_cast<State *>(memory);
  static bool said = false;
  if (!std::exchange(said, true))
    write_notice("swctl-vchip: VCHIP_IMAGE is not set: the chip is gone when the process ends");
}

void give_back(Process &own) {
  if (own.state != nullptr) munmap(own.state, sizeof(State));
  if (own.descriptor >= 0) close(own.descriptor);
  own.state = nullptr;
  own.descriptor = -1;
}

void open_shared(Process &own) {
  const OpenedImage image = open_image(own.path, {sizeof(State), state_layout(), make_state});
  if (image.memory == nullptr) {
    own.refusal = "image " + own.path + ": " + image.refusal;
    return;
  }
  own.descriptor = image.descriptor;
  own.state = static_cast<State *>(image.memory);
  const bool locked = lock_file(own.descriptor);
  const bool sound = is_sound(*own.state);
  if (locked) unlock_file(own.descriptor);
  if (!sound) {
    give_back(own);
    own.refusal = "image " + own.path + ": its contents are damaged";
  } else if (image.made) {
    write_notice("swctl-vchip: image " + own.path + ": newly made");
  }
}

void open_once(Process &own) {
  if (own.opened) return;
  own.opened = true;
  const char *path = getenv("VCHIP_IMAGE");
  if (path == nullptr || *path == '\0') return open_private(own);
  own.path = path;
  open_shared(own);
}

// The line on standard error for a program that did not ask.
void report_once(Process &own) {
  if (own.reported) return;
  own.reported = true;
  write_error_line("swctl-vchip: " + own.refusal);
}

// Takes the file lock where there is a file.
bool share(Process &own) {
  if (own.descriptor < 0 || lock_file(own.descriptor)) return true;
  own.refusal = "image " + own.path + ": cannot be locked: " + strerror(errno);
  return false;
}

// Exchange and release keep what a step writes between the two marks, in the
// program and on the machine: what a killed process leaves is in that order.
void set_writer(Header &header, Writer what) {
  std::atomic_ref<uint32_t>(header.writer).exchange(what);
}
void clear_writer(Header &header) {
  std::atomic_ref<uint32_t>(header.writer).store(kNoWriter, std::memory_order_release);
}

// The last holder of the lock died inside a changing call. The mark stays
// until all is whole, so that this may be interrupted as well.
void recover(State &state) {
  const uint32_t writer = state.header.writer;
  ++state.header.interrupted_writes;
  ++state.header.revision;
  if (writer == kResetting) {
    reset_state(state);
  } else {
    repair_state(state);
  }
  clear_writer(state.header);
}

}  // namespace

Locked::Locked() {
  mutex.lock();
  Process &own = process();
  open_once(own);
  if (own.state != nullptr && share(own)) state_ = own.state;
  if (state_ == nullptr) {
    report_once(own);
  } else if (state_->header.writer != kNoWriter) {
    recover(*state_);
  }
}

Locked::~Locked() {
  const Process &own = process();
  if (state_ != nullptr && own.descriptor >= 0) unlock_file(own.descriptor);
  mutex.unlock();
}

const std::string &Locked::image_path() const {
  return process().path;
}

Writing::Writing(State &state, Writer what) : header_(state.header) {
  set_writer(header_, what);
  if (what != kSwitching) ++header_.revision;
}

Writing::~Writing() {
  clear_writer(header_);
}

const char *refusal() {
  const std::lock_guard<std::mutex> hold(mutex);
  Process &own = process();
  open_once(own);
  if (own.refusal.empty()) return nullptr;
  own.reported = true;
  return own.refusal.c_str();
}

void close_chip() {
  const std::lock_guard<std::mutex> hold(mutex);
  Process &own = process();
  give_back(own);
  own = {};
  if (frame_keeper != nullptr) frame_keeper->chip_gone();
}

void set_frame_keeper(const FrameKeeper *keeper) {
  frame_keeper = keeper;
}

void tell_frame_keeper(State &state, uint32_t unit) {
  if (frame_keeper != nullptr) frame_keeper->settings_changed(state, unit);
}

void tell_frame_keeper_of_reset() {
  if (frame_keeper != nullptr) frame_keeper->chip_gone();
}

}  // namespace vchip
