// SPDX-License-Identifier: MIT
// Building kernel messages.
#include <swctl/kmsg.h>

#include <cstddef>
#include <cstdlib>
#include <cstring>

static_assert(sizeof(KernelMsgHeader) == 12);
static_assert(offsetof(KernelMsgHeader, msgId) == 0);
static_assert(offsetof(KernelMsgHeader, direction) == 2);
static_assert(offsetof(KernelMsgHeader, msgType) == 4);
static_assert(offsetof(KernelMsgHeader, reserved) == 6);
static_assert(offsetof(KernelMsgHeader, length) == 8);

uint8_t *MSG_CreateMessage(const KernelMsgHeader *header) {
  if (header->length > SWCTL_KMSG_MAX_PAYLOAD) return nullptr;
  void *message = calloc(1, sizeof *header + header->length);
  if (message == nullptr) return nullptr;
  memcpy(message, header, sizeof *header);
  return static_cast<uint8_t *>(message);
}

uint8_t *MSG_CreateUserToKernelMessage(uint32_t msgCode, const uint8_t *payload,
                                       int32_t payloadLength) {
  if (payload == nullptr || payloadLength < 1) return nullptr;
  const KernelMsgHeader header = {
      .msgId = static_cast<uint16_t>(msgCode >> 16),
      .direction = SWCTL_KMSG_TO_KERNEL,
      .msgType = static_cast<uint16_t>(msgCode & 0xFFFF),
      .reserved = 0,
      .length = static_cast<uint32_t>(payloadLength),
  };
  uint8_t *message = MSG_CreateMessage(&header);
  if (message == nullptr) return nullptr;
  memcpy(message + sizeof header, payload, header.length);
  return message;
}
