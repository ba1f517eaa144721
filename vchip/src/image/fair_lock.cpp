// SPDX-License-Identifier: MIT
#include "image/fair_lock.h"

#include <algorithm>
#include <atomic>
#include <linux/futex.h>
#include <sched.h>
#include <sys/single_threaded.h>
#include <sys/syscall.h>
#include <unistd.h>

#include "image/patience.h"

namespace vchip {
namespace {

constexpr uint64_t kSpin = 10'000;            // ns, before it sleeps
constexpr uint64_t kGrace = 30'000;           // ns, that a free lock is left to whose turn it is
constexpr uint64_t kFirstNap = 500'000;       // ns
constexpr uint64_t kLongestNap = 20'000'000;  // ns

using Word = std::atomic_ref<uint32_t>;

// What the calling thread is to the system. A forked child's thread is another.
struct Thread {
  uint32_t number = 0;
  robust_list_head *robust = nullptr;
};
thread_local Thread this_thread;

robust_list_head *find_robust_list() {
  robust_list_head *head = nullptr;
  size_t length = 0;
  if (syscall(SYS_get_robust_list, 0, &head, &length) != 0) return nullptr;
  return length == sizeof *head ? head : nullptr;
}

Thread &look_up_thread() {
  this_thread.number = static_cast<uint32_t>(syscall(SYS_gettid));
  this_thread.robust = find_robust_list();
  return this_thread;
}

inline Thread &current_thread() {
  return this_thread.number != 0 ? this_thread : look_up_thread();
}

// Tells the system which lock this thread is about to take, has, or is about to
// give back. If the thread dies the system looks at that lock's owner, and if
// it is the thread, marks the lock as free and wakes one who waits. The fences
// keep the compiler from moving the lock's own words across.
void announce(const Thread &thread, const uint32_t *owner) {
  const char *address = reinterpret_cast<const char *>(owner) - thread.robust->futex_offset;
  auto *entry = reinterpret_cast<robust_list *>(const_cast<char *>(address));
  __atomic_store_n(&thread.robust->list_op_pending, entry, __ATOMIC_RELAXED);
  std::atomic_signal_fence(std::memory_order_seq_cst);
}
void withdraw(const Thread &thread) {
  std::atomic_signal_fence(std::memory_order_seq_cst);
  __atomic_store_n(&thread.robust->list_op_pending, nullptr, __ATOMIC_RELAXED);
}

long futex(uint32_t &word, Among among, int operation, uint32_t value, const void *timeout,
           uint32_t bits) {
  const int scope = among == Among::threads ? FUTEX_PRIVATE_FLAG : 0;
  return syscall(SYS_futex, &word, operation | scope, value, timeout, nullptr, bits);
}

// Sleepers are told apart by a bit each, so that one of them can be woken.
uint32_t bit_of(uint32_t thread) {
  return uint32_t{1} << (thread % 32);
}

bool is_free(uint32_t owner) {
  return (owner & FUTEX_TID_MASK) == 0;
}

// One attempt; `sleepers` says that others may be asleep.
bool take(LockWords &lock, uint32_t me, uint32_t sleepers) {
  uint32_t seen = Word(lock.owner).load(std::memory_order_relaxed);
  if (!is_free(seen)) return false;
  const uint32_t mine = me | sleepers | (seen & FUTEX_WAITERS);
  return Word(lock.owner)
      .compare_exchange_strong(seen, mine, std::memory_order_acquire, std::memory_order_relaxed);
}

void replace(uint32_t &word, uint32_t expected, uint32_t value) {
  Word(word).compare_exchange_strong(expected, value, std::memory_order_relaxed);
}

void pause_briefly() {
#if defined(__x86_64__) || defined(__i386__)
  __builtin_ia32_pause();
#else
  std::atomic_signal_fence(std::memory_order_seq_cst);
#endif
}

// A thread on its way to the lock, once the lock was not simply free.
class Waiter {
 public:
  Waiter(LockWords &lock, Among among, uint32_t me) : lock_(lock), among_(among), me_(me) {}

  bool lock_until(uint64_t until) {
    for (;;) {
      if (spin()) return true;
      if (now_ >= until) break;
      sleep(until - now_);
    }
    replace(lock_.turn, me_, 0);
    return false;
  }

 private:
  // Whether the lock, which is free, may be taken now. A thread whose turn it is
  // may be dead or kept from running: the lock is left to it for a while only.
  bool may_take(uint32_t turn) {
    if (turn == 0 || turn == me_) return true;
    if (reserved_since_ == 0) reserved_since_ = now_;
    return now_ - reserved_since_ >= kGrace;
  }

  bool attempt() {
    const uint32_t turn = Word(lock_.turn).load(std::memory_order_relaxed);
    if (!is_free(Word(lock_.owner).load(std::memory_order_relaxed))) return false;
    if (!may_take(turn) || !take(lock_, me_, sleepers_)) return false;
    if (turn != 0) replace(lock_.turn, turn, 0);
    return true;
  }

  bool spin() {
    now_ = monotonic_time();
    reserved_since_ = 0;
    for (const uint64_t start = now_; now_ - start < kSpin + kGrace; now_ = monotonic_time()) {
      if (attempt()) return true;
      if (now_ - start >= kSpin && reserved_since_ == 0) break;
      pause_briefly();
    }
    return false;
  }

  void sleep(uint64_t longest) {
    replace(lock_.turn, 0, me_);
    sleepers_ = FUTEX_WAITERS;
    uint32_t seen = Word(lock_.owner).load(std::memory_order_relaxed);
    if (is_free(seen)) return static_cast<void>(sched_yield());
    replace(lock_.owner, seen, seen | FUTEX_WAITERS);
    const uint64_t end = monotonic_time() + std::min(longest, nap_);
    nap_ = std::min(nap_ * 2, kLongestNap);
    struct {
      long seconds, nanoseconds;
    } timeout = {static_cast<long>(end / 1'000'000'000), static_cast<long>(end % 1'000'000'000)};
    futex(lock_.owner, among_, FUTEX_WAIT_BITSET, seen | FUTEX_WAITERS, &timeout, bit_of(me_));
  }

  LockWords &lock_;
  Among among_;
  uint32_t me_;
  uint32_t sleepers_ = 0;
  uint64_t now_ = 0;
  uint64_t reserved_since_ = 0;
  uint64_t nap_ = kFirstNap;
};

void wake_next(LockWords &lock, Among among) {
  const uint32_t turn = Word(lock.turn).load(std::memory_order_relaxed);
  const uint32_t bits = turn == 0 ? FUTEX_BITSET_MATCH_ANY : bit_of(turn);
  futex(lock.owner, among, FUTEX_WAKE_BITSET, 1, nullptr, bits);
}

}  // namespace

// A process of one thread needs no locked instructions among its threads.
bool try_lock(LockWords &lock, Among among) {
  if (among == Among::threads && __libc_single_threaded) {
    if (lock.owner != 0) return false;
    lock.owner = current_thread().number;
    return true;
  }
  const Thread &thread = current_thread();
  if (among == Among::processes) announce(thread, &lock.owner);
  if (Word(lock.turn).load(std::memory_order_relaxed) == 0 && take(lock, thread.number, 0))
    return true;
  if (among == Among::processes) withdraw(thread);
  return false;
}

bool lock_until(LockWords &lock, Among among, uint64_t until) {
  const Thread &thread = current_thread();
  if (among == Among::processes) announce(thread, &lock.owner);
  if (Waiter(lock, among, thread.number).lock_until(until)) return true;
  if (among == Among::processes) withdraw(thread);
  return false;
}

void unlock(LockWords &lock, Among among) {
  if (among == Among::threads && __libc_single_threaded) {
    lock.owner = 0;
    return;
  }
  const uint32_t seen = Word(lock.owner).exchange(0, std::memory_order_release);
  if ((seen & FUTEX_WAITERS) != 0) wake_next(lock, among);
  if (among == Among::processes) withdraw(current_thread());
}

void unlock_in_child(LockWords &lock) {
  this_thread = {};
  lock = {};
}

bool robust_futexes() {
  return current_thread().robust != nullptr;
}

uint32_t thread_number() {
  return current_thread().number;
}

uint32_t owner_of(const LockWords &lock) {
  return __atomic_load_n(&lock.owner, __ATOMIC_RELAXED) & FUTEX_TID_MASK;
}

}  // namespace vchip
