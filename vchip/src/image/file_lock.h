// SPDX-License-Identifier: MIT
// Locks that the system keeps on the bytes of a file.
#ifndef VCHIP_IMAGE_FILE_LOCK_H
#define VCHIP_IMAGE_FILE_LOCK_H

#include <cstdint>

namespace vchip {

// `failed` comes with errno.
enum class Attempt { done, busy, failed };

// The record lock of a process on the first byte. The system frees it when the
// process dies or closes any descriptor of the file; a forked child does not
// get it.
Attempt try_lock_file(int descriptor);
void unlock_file(int descriptor);
// Process that has it, other than this one; 0 for none, or one out of sight.
int32_t file_lock_holder(int descriptor);
// Whether the file can be locked, by this process now or later; errno if not.
bool can_lock_file(int descriptor);

// Locks of an open file on bytes far past its end. They last as long as the
// file is open or mapped, in this process or in a forked child. One that stands
// for something in use is exclusive or shared; both keep an exclusive one away.
enum class Hold { exclusive, shared };
Attempt try_lock_byte(int descriptor, uint32_t byte, Hold hold);
void unlock_byte(int descriptor, uint32_t byte);
// Whether another open file has a lock on one of these bytes.
bool is_byte_locked(int descriptor, uint32_t first, uint32_t count);

}  // namespace vchip

#endif
