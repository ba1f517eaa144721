// SPDX-License-Identifier: MIT
#include "chip/chip.h"

#include <atomic>

#include "chip/process.h"
#include "chip/settings.h"
#include "common/standard_error.h"

namespace vchip {
namespace {

const FrameKeeper *frame_keeper = nullptr;

// The line on standard error for a program that did not ask.
void say_once(bool &said, const std::string &what) {
  if (said) return;
  said = true;
  write_error_line("swctl-vchip: " + what);
}

void report(Process &own, int32_t fault) {
  if (fault == VCHIP_E_BUSY) {
    say_once(own.busy_told, own.busy);
  } else {
    say_once(own.refusal_told, own.refusal);
  }
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
void recover(Process &own) {
  State &state = *own.state;
  const uint32_t writer = state.header.writer;
  ++state.header.interrupted_writes;
  ++state.header.revision;
  if (writer == kResetting) {
    reset_chip(own);
  } else {
    repair_state(state);
  }
  clear_writer(state.header);
}

}  // namespace

Locked::Locked() {
  Patience patience(wait_setting);
  if (!lock_threads(patience)) return;
  held_ = true;
  Process &own = this_process();
  fault_ = open_once(own, patience);
  if (fault_ == 0) fault_ = lock_image(own, patience);
  if (fault_ != 0) {
    report(own, fault_);
    return;
  }
  state_ = own.state;
  if (state_->header.writer != kNoWriter) recover(own);
}

Locked::~Locked() {
  if (state_ != nullptr) unlock_image(this_process());
  if (held_) unlock_threads();
}

void Locked::reset() {
  reset_chip(this_process());
}

const std::string &Locked::image_path() const {
  return this_process().path;
}

LockedProcess::LockedProcess() {
  Patience patience(wait_setting);
  if (!lock_threads(patience)) return;
  held_ = true;
  Process &own = this_process();
  const int32_t fault = open_once(own, patience);
  open_ = fault == 0;
  if (!open_) report(own, fault);
}

LockedProcess::~LockedProcess() {
  if (held_) unlock_threads();
}

Writing::Writing(State &state, Writer what) : header_(state.header) {
  set_writer(header_, what);
  if (what != kSwitching) ++header_.revision;
}

Writing::~Writing() {
  clear_writer(header_);
}

const char *refusal() {
  Patience patience(wait_setting);
  if (!lock_threads(patience)) return "another thread has the virtual chip; gave up waiting";
  Process &own = this_process();
  const int32_t fault = open_once(own, patience);
  if (fault == VCHIP_E_IMAGE) own.refusal_told = true;
  unlock_threads();
  if (fault == 0) return nullptr;
  return fault == VCHIP_E_BUSY ? own.busy.c_str() : own.refusal.c_str();
}

void close_chip() {
  Patience patience(Patience::forever);
  lock_threads(patience);
  close_chip(this_process());
  if (frame_keeper != nullptr) frame_keeper->chip_gone();
  unlock_threads();
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
