// SPDX-License-Identifier: MIT
#ifndef SWCTL_SRC_KMSG_THREAD_KEY_H
#define SWCTL_SRC_KMSG_THREAD_KEY_H

#include <cstdint>
#include <pthread.h>

namespace swctl {

// The key of a thread's identity: the identity itself if it fits a positive
// 32-bit value. A longer one is the address of the thread's control block,
// which is larger than 64 bytes, so no two threads differ in the low 6 bits
// alone; the bits from 37 up are folded into the low end. Identities can share
// a key then: kmsg.h says which.
constexpr int32_t key_of_identity(uintptr_t identity) {
  constexpr uintptr_t kLargestKey = 0x7FFFFFFF;
  if (identity <= kLargestKey) return static_cast<int32_t>(identity);
  const uintptr_t block = identity >> 6;
  const uintptr_t folded = (block ^ (block >> 31)) & kLargestKey;
  return folded == 0 ? 1 : static_cast<int32_t>(folded);
}

inline uintptr_t thread_identity() {
  // An integer in some C libraries, a pointer in others.
  return (uintptr_t)pthread_self();
}

inline int32_t thread_key() {
  return key_of_identity(thread_identity());
}

}  // namespace swctl

#endif
