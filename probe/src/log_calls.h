// SPDX-License-Identifier: MIT
// The calls of the platform log, which are in no list: their shapes differ.
#ifndef SWCTL_PROBE_LOG_CALLS_H
#define SWCTL_PROBE_LOG_CALLS_H

#include "site.h"

namespace swprobe {

extern Site log_site;
extern Site trace_get_site;
extern Site trace_add_site;

}  // namespace swprobe

#endif
