// SPDX-License-Identifier: MIT
// Who has a function after the probe.
#ifndef SWCTL_PROBE_NEXT_LIBRARY_H
#define SWCTL_PROBE_NEXT_LIBRARY_H

namespace swprobe {

// The function of that name in the next library in the search order. A probe that
// was loaded by dlopen() has no search order that goes on after it; then it is the
// next one of the libraries that were loaded after it. Null if there is none.
void *find_after_probe(const char *name);

}  // namespace swprobe

#endif
