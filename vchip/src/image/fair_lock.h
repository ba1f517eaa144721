// SPDX-License-Identifier: MIT
// A lock of three words, for the threads of a process or, in memory that
// several share, for processes. Free, it is taken and given back without the
// system. Who waits sleeps, and gets its turn before somebody who takes the
// lock again and again.
#ifndef VCHIP_IMAGE_FAIR_LOCK_H
#define VCHIP_IMAGE_FAIR_LOCK_H

#include <cstdint>

namespace vchip {

// All zero: free.
struct LockWords {
  uint32_t owner;  // thread that has it, and the bits of a robust futex
  uint32_t turn;   // thread that is to get it next; 0: who comes first
};

// Whose lock it is. Between processes the system marks the lock of a thread
// that dies as free; the memory must be mapped shared, and robust_futexes()
// must be true.
enum class Among { threads, processes };

// Takes the lock; false if that was not possible before the time `until`, of
// monotonic_time().
bool try_lock(LockWords &lock, Among among);
bool lock_until(LockWords &lock, Among among, uint64_t until);
void unlock(LockWords &lock, Among among);

// A lock that a forked child inherits from the thread that forked.
void unlock_in_child(LockWords &lock);

// Whether the system clears the lock of a thread that dies.
bool robust_futexes();

// The calling thread's number, as the system counts them.
uint32_t thread_number();
// The thread that has the lock, 0 for none.
uint32_t owner_of(const LockWords &lock);

}  // namespace vchip

#endif
