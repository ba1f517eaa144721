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

// By hand with sendmsg(), select() and recvmsg(). A reply's own length is
// believed, so each reply is received into 16,400 zeros.
uint32_t through_bare_calls(uint32_t word);

// The same with one memory for all replies, which is never cleared: what an
// earlier reply left can be taken for the end of a later one.
uint32_t through_bare_calls_kept_memory(uint32_t word);

// The same without the wait: recvmsg() alone, which may block for ever.
uint32_t through_bare_calls_unbounded(uint32_t word);

#endif
