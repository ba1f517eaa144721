/* SPDX-License-Identifier: MIT */
/* changer WHAT SECONDS: changes settings of the chip that belong together, each time with one
 * call, as fast as calls go, and prints how many there were. */
#include <swctl/swctl.h>

#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <time.h>

enum { kVlan = 10, kPort1 = 1u << 0, kPort2 = 1u << 1, kPort3 = 1u << 2, kPort4 = 1u << 3 };

/* The ports of a VLAN, and which of them are untagged. */
static int32_t change_vlan(int turn) {
  const user_pbmp_t members[] = {{{kPort1 | kPort2 | kPort3}}, {{kPort1 | kPort3 | kPort4}}};
  const user_pbmp_t untagged[] = {{{kPort2}}, {{kPort3}}};
  return user_vlan_port_set(0, 0, kVlan, &members[turn], &untagged[turn]);
}

/* Where copies go, and whether there are any. */
static int32_t change_mirror(int turn) {
  return user_mirror_port_set(0, 0, 1, 0, turn == 0 ? 3 : 4,
                              turn == 0 ? USER_MIRROR_EGRESS : USER_MIRROR_NONE);
}

/* At which port the VLAN has another number, and which. */
static int32_t change_translation(int turn) {
  return user_vlan_translate_egress_add(0, 0, 0, turn == 0 ? 2 : 3, kVlan, turn == 0 ? 111 : 222);
}

static const struct {
  const char *name;
  int32_t (*change)(int turn);
} kChanges[] = {
    {"vlan", change_vlan}, {"mirror", change_mirror}, {"translation", change_translation}};

static double now(void) {
  struct timespec time;
  clock_gettime(CLOCK_MONOTONIC, &time);
  return (double)time.tv_sec + (double)time.tv_nsec * 1e-9;
}

int main(int argc, char **argv) {
  size_t place = 0;
  const size_t count = sizeof kChanges / sizeof kChanges[0];
  while (argc == 3 && place < count && strcmp(kChanges[place].name, argv[1]) != 0) ++place;
  if (argc != 3 || place == count) {
    fprintf(stderr, "usage: changer vlan|mirror|translation SECONDS\n");
    return 1;
  }
  const double end = now() + atof(argv[2]);
  unsigned long calls = 0;
  for (; now() < end; ++calls) {
    const int32_t result = kChanges[place].change((int)(calls % 2));
    if (result != 0) {
      fprintf(stderr, "changer: call %lu failed: %d\n", calls, result);
      return 2;
    }
  }
  printf("%lu\n", calls);
  return 0;
}
