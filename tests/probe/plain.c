/* SPDX-License-Identifier: MIT */
/* Makes a few calls and prints what came of them. */
#include <swctl/platform/adapter.h>
#include <swctl/platform/log.h>
#include <swctl/platform/sdk.h>

#include <errno.h>
#include <fcntl.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/wait.h>
#include <unistd.h>

static void read_link(uint32_t unit, int32_t port) {
  uint32_t link = 1000;
  int32_t result = rtk_port_link_get(unit, port, &link);
  printf("link %ld %lu\n", (long)result, (unsigned long)link);
}

static void make_calls(void) {
  uint32_t ability = 0xf0000000u;
  read_link(0, 3);
  read_link(99, 40);
  printf("ability %ld\n", (long)rtk_port_phyAutoNegoAbility_set(1, -1, &ability));
  printf("port %ld\n", (long)adp_intf_2_phy_id(5));
  Log_logging_func(6, 0, "PLAIN", "%d of \"%s\"\n", 42, "m\xe9");
  printf("tracing %ld\n", (long)sys_trace_get());
  sys_trace_add_log("make_calls():1", "done");
}

static int make_calls_in_two_processes(int of_child) {
  int status = 0;
  pid_t child;
  read_link(0, 1);
  fflush(stdout);
  child = fork();
  if (child == 0) {
    if (of_child) read_link(0, 2);
    exit(0);
  }
  waitpid(child, &status, 0);
  read_link(0, 3);
  return status;
}

/* Whether writing to a descriptor that was closed fails still. */
static int stays_closed(int descriptor) {
  return write(descriptor, "x\n", 2) < 0 && errno == EBADF;
}

/* Makes calls with the standard descriptors of these digits closed. */
static int call_with_closed(const char *digits) {
  const char *each;
  for (each = digits; *each != 0; ++each) close(*each - '0');
  read_link(0, 1);
  for (each = digits; *each != 0; ++each)
    if (!stays_closed(*each - '0')) return 20;
  fflush(stdout);
  read_link(0, 2);
  return 0;
}

/* Whether a file that is opened after all were closed stays empty. */
static int call_with_all_closed(void) {
  FILE *own;
  int descriptor;
  read_link(0, 1);
  for (descriptor = 3; descriptor < 256; ++descriptor) close(descriptor);
  own = tmpfile();
  if (own == NULL) return 20;
  read_link(0, 2);
  return fseek(own, 0, SEEK_END) == 0 && ftell(own) == 0 ? 0 : 30;
}

static void call_at_the_end(void) {
  read_link(0, 2);
}

/* Calls after the thread's own objects are gone. */
static int call_late(void) {
  atexit(call_at_the_end);
  read_link(0, 1);
  return 0;
}

int main(int argc, char **argv) {
  const char *what = argc > 1 ? argv[1] : "calls";
  if (strcmp(what, "fork") == 0) return make_calls_in_two_processes(1);
  if (strcmp(what, "fork-idle") == 0) return make_calls_in_two_processes(0);
  if (strcmp(what, "nothing") == 0) return 0;
  if (strncmp(what, "closed-", 7) == 0) return call_with_closed(what + 7);
  if (strcmp(what, "late") == 0) return call_late();
  if (strcmp(what, "close-all") == 0) return call_with_all_closed();
  if (strcmp(what, "once") == 0) read_link(0, 1);
  if (strcmp(what, "twice") == 0 || strcmp(what, "once-more") == 0) read_link(0, 0);
  if (strcmp(what, "twice") == 0 || strcmp(what, "crash") == 0) read_link(0, 1);
  if (strcmp(what, "crash") == 0) _exit(17);
  if (strcmp(what, "calls") == 0) make_calls();
  return 0;
}
