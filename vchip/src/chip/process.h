// SPDX-License-Identifier: MIT
// The chip of this process: what opening it found, and the locks on it.
#ifndef VCHIP_CHIP_PROCESS_H
#define VCHIP_CHIP_PROCESS_H

#include <string>
#include <sys/types.h>

#include "image/image_lock.h"
#include "image/patience.h"
#include "unit/state.h"

namespace vchip {

// Belongs to the thread that holds the lock among the threads.
struct Process {
  bool opened = false;
  bool inherited = false;  // by a forked child that has not opened it itself
  State *state = nullptr;
  ImageLock lock;
  int descriptor = -1;      // of the image, if its lock needs one
  std::string path;         // of the image, as the user gave it; empty: a private chip
  std::string opened_path;  // the same from the root directory on
  dev_t device = 0;         // which file it is
  ino_t inode = 0;
  std::string refusal;  // why there is no chip
  std::string busy;     // why the last call that gave up did so
  // What was said on standard error, so that it is said once.
  bool refusal_told = false;
  bool wait_told = false;
  bool busy_told = false;
};

Process &this_process();

// Whether this process has an image open under a record lock. For anybody.
bool uses_record_lock();

// The lock among the threads of this process. False: patience is exhausted.
bool lock_threads(Patience &patience);
void unlock_threads();

// Opens the chip if that was not done yet. Answers 0, VCHIP_E_IMAGE or
// VCHIP_E_BUSY; what is busy is tried again by the next call.
int32_t open_once(Process &own, Patience &patience);

// Takes the lock of the image, if there is one.
int32_t lock_image(Process &own, Patience &patience);
void unlock_image(Process &own);

// For who has the lock: reads the image's file into zeroes, but not its holes.
// False: it has none, or the file is out of reach.
bool read_image(const Process &own, void *zeroes);

// For who has the lock: the state after power-on, of everything but the header.
void reset_chip(Process &own);

// As if nothing had been opened.
void close_chip(Process &own);

}  // namespace vchip

#endif
