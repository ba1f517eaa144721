// SPDX-License-Identifier: MIT
// sweep_test [FILE]: fails every call of every function; see sweep.h. The file
// gets what was swept, for complete.py.
#include <swctl/l2.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <exception>
#include <unistd.h>

#include "cases.h"
#include "sweep.h"

// The cable test waits for its chip. This one need not be waited for.
unsigned sleep(unsigned) {
  return 0;
}

namespace {

// The one dump file that the library names itself is not touched.
FILE *no_name() {
  static FILE *const file = tmpfile();
  return file;
}

}  // namespace

FILE *fopen(const char *path, const char *mode) {
  using Open = FILE *(const char *, const char *);
  static auto *const next = reinterpret_cast<Open *>(dlsym(RTLD_NEXT, "fopen"));
  if (strcmp(path, USER_MACTABLE_PATH) != 0) return next(path, mode);
  char name[40];
  snprintf(name, sizeof name, "/proc/self/fd/%d", fileno(no_name()));
  return next(name, mode);
}

int main(int count, char **arguments) {
  setenv("VCHIP_LOG", "none", 1);
  unsetenv("VCHIP_IMAGE");
  // What the library prints is the affair of other tests. The descriptors stay
  // as they are, for others that have something to say.
  FILE *const output = stdout;
  stdout = stderr = fopen("/dev/null", "w");
  try {
    sweep::c99_cases();
    sweep::port_cases();
    sweep::l2_cases();
    sweep::other_cases();
  } catch (const std::exception &why) {
    fprintf(output, "sweep: %s\n", why.what());
    return 1;
  }
  stdout = output;
  const bool is_listed = count < 2 || sweep::write_list(arguments[1]);
  return sweep::report() && is_listed ? 0 : 1;
}
