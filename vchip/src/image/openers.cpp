// SPDX-License-Identifier: MIT
#include "image/openers.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <time.h>
#include <unistd.h>

#include "image/file_lock.h"
#include "image/patience.h"

namespace vchip {
namespace {

// Bytes that stand for something: the places, the shared one, the door.
constexpr uint32_t kDoor = kUnlisted + 1;
constexpr useconds_t kBetweenKnocks = 200;

Opener this_opener() {
  Opener opener = {};
  opener.process = static_cast<uint32_t>(getpid());
  opener.since = static_cast<uint32_t>(time(nullptr));
  const char *name = program_invocation_short_name;
  memcpy(opener.name, name, std::min(strlen(name), sizeof opener.name - 1));
  return opener;
}

}  // namespace

std::string name_of(const Opener &opener) {
  std::string name(opener.name, strnlen(opener.name, sizeof opener.name));
  std::replace_if(
      name.begin(), name.end(), [](char byte) { return byte < ' ' || byte > '~'; }, '?');
  return name;
}

bool lock_door(int descriptor, Door purpose, uint64_t until) {
  const Hold hold = purpose == Door::open ? Hold::exclusive : Hold::shared;
  while (try_lock_byte(descriptor, kDoor, hold) != Attempt::done) {
    if (monotonic_time() >= until) return false;
    usleep(kBetweenKnocks);
  }
  return true;
}

void unlock_door(int descriptor) {
  unlock_byte(descriptor, kDoor);
}

bool is_in_use(int descriptor) {
  return is_byte_locked(descriptor, 0, kUnlisted + 1);
}

uint32_t take_place(int descriptor, Opener (&table)[kOpeners]) {
  for (uint32_t place = 0; place < kOpeners; ++place) {
    if (try_lock_byte(descriptor, place, Hold::exclusive) != Attempt::done) continue;
    table[place] = this_opener();
    return place;
  }
  try_lock_byte(descriptor, kUnlisted, Hold::shared);
  return kUnlisted;
}

bool is_place_taken(int descriptor, uint32_t place) {
  return is_byte_locked(descriptor, place, 1);
}

bool can_list_openers(int descriptor) {
  if (try_lock_byte(descriptor, kDoor, Hold::shared) == Attempt::failed) return false;
  unlock_byte(descriptor, kDoor);
  return true;
}

}  // namespace vchip
