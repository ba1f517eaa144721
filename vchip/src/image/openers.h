// SPDX-License-Identifier: MIT
// Who has an image open. Each has a place in a table in the image, and a lock
// on a byte that stands for the place; the system frees the lock with the last
// mapping of the file, so a place of the dead is known and taken again.
#ifndef VCHIP_IMAGE_OPENERS_H
#define VCHIP_IMAGE_OPENERS_H

#include <cstdint>
#include <string>

namespace vchip {

inline constexpr uint32_t kOpeners = 100;
// For those who found the table full: a place that they share.
inline constexpr uint32_t kUnlisted = kOpeners;

struct Opener {
  uint32_t process;  // as it knows itself
  uint32_t since;    // seconds since 1970
  char name[24];     // ends with a 0
};

std::string name_of(const Opener &opener);

// The door: while one opens an image, others wait to, and so does who looks at
// the table.
enum class Door { open, look };
bool lock_door(int descriptor, Door purpose, uint64_t until);
void unlock_door(int descriptor);

// Whether somebody has the image open, other than through this descriptor.
bool is_in_use(int descriptor);
// Takes a place for this process and answers it.
uint32_t take_place(int descriptor, Opener (&table)[kOpeners]);

// Whether somebody has the place, other than through this descriptor.
bool is_place_taken(int descriptor, uint32_t place);

// Whether the system can tell who has a file open.
bool can_list_openers(int descriptor);

}  // namespace vchip

#endif
