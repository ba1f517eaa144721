// SPDX-License-Identifier: MIT
#ifndef SWCTL_KERNEL_BENCH_SYSTEM_CALLS_H
#define SWCTL_KERNEL_BENCH_SYSTEM_CALLS_H

// System calls that `calls` calls of `work` make, counted from outside: the
// work runs in a child whose every system call stops for the count. The first
// few calls do not count, so that sockets and memory are there.
long count_system_calls(void (*work)(), int calls);

#endif
