// SPDX-License-Identifier: MIT
#ifndef SWCTL_PROBE_OF_THIS_THREAD_H
#define SWCTL_PROBE_OF_THIS_THREAD_H

#include <pthread.h>

namespace swprobe {

// An object for each thread, made when it is first asked for. Unlike a
// thread_local one it is there until the very end: calls come from handlers of
// exit() and from destructors of other thread-specific data too.
template <class T>
T &of_this_thread() {
  static const pthread_key_t key = [] {
    pthread_key_t made = {};
    pthread_key_create(&made, [](void *object) { delete static_cast<T *>(object); });
    return made;
  }();
  auto *object = static_cast<T *>(pthread_getspecific(key));
  if (object != nullptr) return *object;
  object = new T;
  pthread_setspecific(key, object);
  return *object;
}

}  // namespace swprobe

#endif
