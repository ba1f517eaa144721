// SPDX-License-Identifier: MIT
// Functions of units and board that leave the chip alone.
#include <swctl/frame.h>

#include <cstdio>
#include <cstring>

// The line numbers are part of the lines: programs read them.
#define PRINTS(name, line)                      \
  int32_t name(uint32_t, ...) {                 \
    printf("%s %d ret = %d\n", #name, line, 0); \
    return 0;                                   \
  }

PRINTS(user_attach_check, 1460)
PRINTS(user_device_attach, 1542)
PRINTS(user_device_detach, 1560)
PRINTS(user_auth_init, 61)
PRINTS(user_auth_mode_set, 112)

int32_t user_attach_max(uint32_t, const uint32_t *max_units) {
  printf("%s %d max_units=%d ret = %d\n", "user_attach_max", 1498, static_cast<int32_t>(*max_units),
         0);
  return 0;
}

int32_t user_auth_mode_get(uint32_t, uint32_t, int32_t, const uint32_t *mode) {
  printf("%s %d mode = %d ret = %d\n", "user_auth_mode_get", 132, static_cast<int32_t>(*mode), 0);
  return 0;
}

int32_t user_i2c_ioctl(uint32_t, uint32_t, uint32_t, uint32_t command, void *destination,
                       uint32_t length) {
  if (command == USER_I2C_READ) memcpy(destination, g_tmpBuffer, length);
  return 0;
}
