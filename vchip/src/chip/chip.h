// SPDX-License-Identifier: MIT
// The one chip of the process, opened by the first call, and the locked steps
// that every call is made of.
#ifndef VCHIP_CHIP_CHIP_H
#define VCHIP_CHIP_CHIP_H

#include <swctl-vchip/vchip.h>

#include <initializer_list>
#include <string>

#include "common/check.h"
#include "unit/state.h"

namespace vchip {

// Holds the chip's lock for one step, against the threads of this process and,
// on an image, against other processes.
class Locked {
 public:
  Locked();
  ~Locked();
  Locked(const Locked &) = delete;
  Locked &operator=(const Locked &) = delete;

  // False if there is no chip, or it could not be had; fault() says which:
  // VCHIP_E_IMAGE, its image was refused, or VCHIP_E_BUSY, another process has
  // it for longer than this one waits.
  explicit operator bool() const { return state_ != nullptr; }
  int32_t fault() const { return fault_; }
  State &state() { return *state_; }
  // The state after power-on.
  void reset();
  // The image's name as the user gave it; empty for a private chip.
  const std::string &image_path() const;

 private:
  State *state_ = nullptr;
  int32_t fault_ = VCHIP_E_BUSY;
  bool held_ = false;
};

// Holds what belongs to this process alone, such as the frames that have left,
// against its threads. Other processes are not waited for.
class LockedProcess {
 public:
  LockedProcess();
  ~LockedProcess();
  LockedProcess(const LockedProcess &) = delete;
  LockedProcess &operator=(const LockedProcess &) = delete;

  // False if there is no chip.
  explicit operator bool() const { return open_; }

 private:
  bool held_ = false;
  bool open_ = false;
};

// While one of these lives, the chip says that it is being written to.
class Writing {
 public:
  Writing(State &state, Writer what);
  ~Writing();
  Writing(const Writing &) = delete;
  Writing &operator=(const Writing &) = delete;

 private:
  Header &header_;
};

// What keeps frames in this process hears of the chip. Called in the step, under
// its lock; null: nobody keeps any.
struct FrameKeeper {
  void (*settings_changed)(State &state, uint32_t unit);
  void (*chip_gone)();  // reset, or closed
};
void set_frame_keeper(const FrameKeeper *keeper);
// After a step that may have changed settings of a unit.
void tell_frame_keeper(State &state, uint32_t unit);
void tell_frame_keeper_of_reset();

// Why there is no chip, with the name of its file; null while there is one.
// The caller is trusted to tell the user.
const char *refusal();

// Forgets the chip; the next step opens it as if it were the first.
void close_chip();

// Runs step(unit) as one locked step that only looks. The checks are results
// of looking at the arguments, in order of precedence: the first that is not 0
// is answered and the step does not run.
template <typename Step>
int32_t look(uint32_t unit, std::initializer_list<int32_t> checks, Step step) {
  Locked chip;
  if (!chip) return chip.fault();
  if (unit >= VCHIP_UNITS) return VCHIP_E_UNIT;
  if (const int32_t fault = first_fault(checks)) return fault;
  const Unit &subject = chip.state().units[unit];
  return step(subject);
}

// The same for a step that changes the unit, and says what it answers.
template <typename Step>
int32_t change_if(uint32_t unit, std::initializer_list<int32_t> checks, Step step) {
  Locked chip;
  if (!chip) return chip.fault();
  if (unit >= VCHIP_UNITS) return VCHIP_E_UNIT;
  if (const int32_t fault = first_fault(checks)) return fault;
  Writing mark(chip.state(), kChanging);
  const int32_t result = step(chip.state().units[unit]);
  tell_frame_keeper(chip.state(), unit);
  return result;
}

// The same for a step that cannot fail.
template <typename Step>
int32_t change(uint32_t unit, std::initializer_list<int32_t> checks, Step step) {
  return change_if(unit, checks, [&](Unit &subject) {
    step(subject);
    return 0;
  });
}

}  // namespace vchip

#endif
