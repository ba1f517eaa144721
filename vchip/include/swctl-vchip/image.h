// SPDX-License-Identifier: MIT
/**
 * @file image.h
 * @brief Image files of the virtual chip, from outside.
 *
 * These look at a file without opening it as the chip of this process, and
 * change nothing. They do not take the chip's lock, so they answer also while it
 * is held by a process that does not go on.
 */
#ifndef SWCTL_VCHIP_IMAGE_H
#define SWCTL_VCHIP_IMAGE_H

#include <swctl/types.h>

#include <cstdint>
#include <string>
#include <vector>

namespace vchip {

// A process that uses an image. One that another container hides has no name,
// or is not listed at all.
struct ImageUser {
  uint32_t process;
  std::string name;
  uint32_t since;  // seconds since 1970
};

struct ImageStatus {
  // "robust futex" or "record lock". While nobody has the image open, that
  // which the next one would use.
  std::string lock;
  bool held;
  // If held.
  uint32_t holder;          // process, 0 if it is not known
  std::string holder_name;  // empty if it is not known
  bool holder_stopped;
  uint32_t held_ms;
  bool changing;  // a call has begun to change the chip and not ended
  uint32_t interrupted_writes;
  std::vector<ImageUser> users;
  bool more_users;  // than the image has places to list
  uint64_t size;
  uint64_t size_on_disk;
};

// Throws std::runtime_error, with the file's name, if it is no usable image.
SWCTL_API ImageStatus image_status(const std::string &path);

// A word of an image that no call could have left as it is.
struct Fault {
  int32_t unit;       // -1: the block belongs to the board
  std::string block;  // as in a dump
  std::string word;
  std::string text;  // what it is, and what was expected
};

// Every such word of an image, also of one that is refused as damaged. What a
// call that was killed has left is looked at as the next call would repair it.
// Changes nothing. An image that others change meanwhile may have faults that
// are none. Throws as image_status() does.
SWCTL_API std::vector<Fault> image_faults(const std::string &path);

// The same for the chip of this process, in one locked step.
SWCTL_API std::vector<Fault> chip_faults();

// Makes an image `to`, which must not exist, of one that another version of the
// chip made, one with another layout or one on a machine of the other byte order,
// and that nobody uses: each word is brought over by its name, and what there is
// no word for stays as after power-on. Answers the words that have no place and
// were not 0. Throws as image_status() does, and then makes nothing.
SWCTL_API std::vector<std::string> convert_image(const std::string &from, const std::string &to);

// A word of a chip, such as "units[1].vlan.vlans[7].member".
struct WordValue {
  std::string name;
  uint64_t value;
};

// The words of the chip of this process that are not as after power-on, in one
// locked step; and an image of a chip with such words, from a machine whose first
// byte of a word is the lowest, or the highest. Else as convert_image().
SWCTL_API std::vector<WordValue> chip_words();
SWCTL_API std::vector<std::string> make_image_of(const std::vector<WordValue> &words,
                                                 bool lowest_first, const std::string &to);

}  // namespace vchip

#endif
