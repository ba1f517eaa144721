// SPDX-License-Identifier: MIT
// A thread may be cancelled in the channel (pthread_cancel()). It then leaves
// no mutex locked, no slot with a descriptor that is closed, and no memory.
#ifndef SWCTL_SRC_KMSG_CANCELLATION_H
#define SWCTL_SRC_KMSG_CANCELLATION_H

#include <cstdlib>
#include <pthread.h>

namespace swctl {

// The calling thread is not cancelled while one of these lives: a request to
// cancel it takes effect at its next cancellation point after that.
class Uncancellable {
 public:
  Uncancellable() { pthread_setcancelstate(PTHREAD_CANCEL_DISABLE, &before_); }
  ~Uncancellable() { pthread_setcancelstate(before_, nullptr); }
  Uncancellable(const Uncancellable &) = delete;
  Uncancellable &operator=(const Uncancellable &) = delete;

 private:
  int before_ = PTHREAD_CANCEL_ENABLE;
};

// Releases a block after work(), also if the thread is cancelled in work().
template <typename Result, typename Work>
Result use_block(void *block, Work work) {
  Result result;
  pthread_cleanup_push(free, block);
  result = work();
  pthread_cleanup_pop(1);
  return result;
}

}  // namespace swctl

#endif
