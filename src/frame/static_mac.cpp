// SPDX-License-Identifier: MIT
#include "frame/static_mac.h"

#include <swctl/platform/log.h>

#include <cstdio>

namespace swctl {
namespace {

constexpr int32_t kInformation = 6;
constexpr int kTextSize = 256;

#define MAC_FORMAT "%02x:%02x:%02x:%02x:%02x:%02x"
#define MAC_BYTES(mac) (mac)[0], (mac)[1], (mac)[2], (mac)[3], (mac)[4], (mac)[5]
#define ADDED "User add static MAC " MAC_FORMAT " into network system\n"
#define REMOVED "User remove static MAC " MAC_FORMAT " from network system\n"

void trace(StaticMac change, const char *function, int line, const uint8_t *mac) {
  char location[kTextSize] = {};
  char message[kTextSize] = {};
  snprintf(location, sizeof location, "%s():%d", function, line);
  if (change == StaticMac::added) {
    snprintf(message, sizeof message, ADDED, MAC_BYTES(mac));
  } else {
    snprintf(message, sizeof message, REMOVED, MAC_BYTES(mac));
  }
  sys_trace_add_log(location, message);
}

}  // namespace

void note_static_mac(StaticMac change, const char *function, int line, const uint8_t *mac) {
  if (sys_trace_get() != 0) trace(change, function, line, mac);
  if (change == StaticMac::added) {
    Log_logging_func(kInformation, 0, "STATIC-MAC", ADDED, MAC_BYTES(mac));
  } else {
    Log_logging_func(kInformation, 0, "STATIC-MAC", REMOVED, MAC_BYTES(mac));
  }
}

}  // namespace swctl
