/* SPDX-License-Identifier: MIT */
/*
 * load_time LIBRARY: the least time, in microseconds, that the loader takes to
 * load and bind the library. The platform is there already.
 */
#include <dlfcn.h>
#include <stdio.h>
#include <time.h>

enum { rounds = 200 };

static double now(void) {
  struct timespec time;
  clock_gettime(CLOCK_MONOTONIC, &time);
  return (double)time.tv_sec * 1e6 + (double)time.tv_nsec / 1e3;
}

static double load_once(const char *library) {
  const double start = now();
  void *handle = dlopen(library, RTLD_NOW | RTLD_LOCAL);
  const double end = now();
  if (handle == NULL) {
    fprintf(stderr, "load_time: %s\n", dlerror());
    return -1;
  }
  dlclose(handle);
  return end - start;
}

int main(int argc, char **argv) {
  double least = 0;
  int round;
  if (argc != 2) {
    fprintf(stderr, "usage: load_time LIBRARY\n");
    return 1;
  }
  for (round = 0; round < rounds; ++round) {
    const double time = load_once(argv[1]);
    if (time < 0) return 1;
    if (round == 0 || time < least) least = time;
  }
  printf("%.0f\n", least);
  return 0;
}
