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

// By hand with sendmsg(), select() and recvmsg() on memory that is never
// given back.
uint32_t through_bare_calls(uint32_t word);

// The same without the wait: recvmsg() alone, which may block for ever.
uint32_t through_bare_calls_unbounded(uint32_t word);

#endif
