// SPDX-License-Identifier: MIT
// The lock of an image, against other processes.
#ifndef VCHIP_IMAGE_FILE_LOCK_H
#define VCHIP_IMAGE_FILE_LOCK_H

namespace vchip {

// Each waits as long as it takes, and answers false, with errno, if the file
// cannot be locked. The system frees the lock of a process that dies; a forked
// child does not get it.
bool lock_file(int descriptor);
bool unlock_file(int descriptor);

// Whether the file can be locked, by this process now or later; errno if not.
bool can_lock_file(int descriptor);

}  // namespace vchip

#endif
