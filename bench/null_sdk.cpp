// SPDX-License-Identifier: MIT
// Every call of the SDK and the adapter, doing nothing and answering 0.
#include <swctl/platform/adapter.h>
#include <swctl/platform/log.h>
#include <swctl/platform/sdk.h>

#pragma GCC diagnostic ignored "-Wunused-parameter"

#include <swctl/platform/calls_begin.h>
#define SWCTL_CALL(name, ...)                   \
  int32_t name(SWCTL_PARAMETERS(__VA_ARGS__)) { \
    return 0;                                   \
  }
#include <swctl/platform/calls/adapter.def>
#include <swctl/platform/calls/sdk.def>
#include <swctl/platform/calls_end.h>

void Log_logging_func(int32_t, int32_t, const char *, const char *, ...) {}
int32_t sys_trace_get() {
  return 0;
}
void sys_trace_add_log(const char *, const char *) {}
