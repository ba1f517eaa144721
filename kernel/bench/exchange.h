// SPDX-License-Identifier: MIT
// One exchange with the kernel module, in several ways: a word is sent and
// comes back.
#ifndef SWCTL_KERNEL_BENCH_EXCHANGE_H
#define SWCTL_KERNEL_BENCH_EXCHANGE_H

#include <cstdint>

// Through user_send_data_to_kernel().
uint32_t through_library(uint32_t word);

// By hand with libmnl, which sends with sendto() and receives with recvmsg();
// the wait in between is a select() with a limit, as the library's.
uint32_t through_libmnl(uint32_t word);

// By hand with sendmsg(), select() and recvmsg(), and with the memory that the
// channel promises: the message is a block of its own, copied into that of the
// datagram; the reply's own length is believed, so it is received into a block
// of 16,400 zeros; and a copy of the reply stays allocated.
uint32_t through_bare_calls(uint32_t word);

// With one datagram for ever, which is filled in place, and no copy of the
// reply. Only the buffer is new.
uint32_t through_bare_calls_one_datagram(uint32_t word);

// With one buffer for ever as well, which is never cleared: what an earlier
// reply left can be taken for the end of a later one.
uint32_t through_bare_calls_one_memory(uint32_t word);

// The same without the wait: recvmsg() alone, which may block for ever.
uint32_t through_bare_calls_unbounded(uint32_t word);

#endif
