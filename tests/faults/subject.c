/* SPDX-License-Identifier: MIT */
/* Makes four calls, and takes the failure of each in another way. */
#include <swctl/platform/sdk.h>

#include <signal.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <unistd.h>

static int fails(int32_t port) {
  uint32_t link = 0;
  return rtk_port_link_get(0, port, &link) < 0;
}

int main(int argc, char **argv) {
  const char *what = argc > 1 ? argv[1] : "";
  if (strcmp(what, "nothing") == 0) return 0;
  if (strcmp(what, "forever") == 0) pause();
  if (strcmp(what, "varies") == 0) fprintf(stderr, "%ld\n", (long)getpid());
  if (fails(0)) {
    fprintf(stderr, "first\nport 0: \"<&>\" \x01\n");
    return 3;
  }
  if (fails(1)) raise(SIGSEGV);
  if (fails(2)) {
    if (strcmp(what, "hangs") == 0) pause();
    return 4;
  }
  fails(3);
  return 0;
}
