/* SPDX-License-Identifier: MIT */
#include <errno.h>
#include <stdlib.h>
#include <sys/socket.h>

#include "every_function.h"

enum { key = 4711, descriptor = 1000, not_open = 1001 };

/* In this program there is no kernel module, whatever the machine has. */
int socket(int family, int type, int protocol) {
  (void)family, (void)type, (void)protocol;
  errno = EPROTONOSUPPORT;
  return -1;
}

/* Whether a message was made; releases it. */
static int made(uint8_t *message, uint8_t first_byte) {
  const int is_right = message != NULL && message[sizeof(KernelMsgHeader)] == first_byte;
  free(message);
  return is_right;
}

static int made_empty(const KernelMsgHeader *header) {
  return made(MSG_CreateMessage(header), 0);
}

static int made_full(const uint8_t *payload) {
  return made(MSG_CreateUserToKernelMessage(0x70005, payload, 4), payload[0]);
}

static void messages(void) {
  const KernelMsgHeader header = {7, SWCTL_KMSG_TO_KERNEL, 5, 0, 4};
  const KernelMsgHeader too_long = {7, SWCTL_KMSG_TO_KERNEL, 5, 0, SWCTL_KMSG_MAX_PAYLOAD + 1};
  const uint8_t payload[4] = {9, 8, 7, 6};
  void *reply = NULL;
  expect_true("MSG_CreateMessage makes a message", made_empty(&header));
  expect_true("MSG_CreateUserToKernelMessage makes a message", made_full(payload));
  CALL(MSG_CreateMessage, (&too_long) != NULL);
  CALL(MSG_CreateUserToKernelMessage, (0x70005, NULL, 4) != NULL);
  CALL(MSG_UserSendAndRecvMessage, (NULL, 1, &reply));
  expect_true("no message has no reply", reply == NULL);
  CALL_FOR(SWCTL_KMSG_NO_ANSWER, user_send_data_to_kernel, (0x70000, payload, 4));
}

static void sockets(void) {
  CALL_FOR(1, InitThreadSocketData, ());
  CALL_FOR(-1, CreateThreadSocket, (key));
  CALL_FOR(-1, GetThreadSocket, (key));
  CALL(GetFreeSockData, ());
  CALL(SetSockData, (descriptor, key));
  CALL_FOR(descriptor, GetSockData, (key));
  CALL_FOR(descriptor, GetThreadSocket, (key));
  CALL_FOR(-1, SetFreeSockData, (key));
  CALL(SetSockData, (not_open, (2u << 16) | 1u));
  CALL_FOR(-1, __HandleThreadExit, (1, 2));
  CALL_FOR(-1, HandleThreadExit, ());
  CALL_FOR(-1, DeleteThreadSocket, (key));
  CALL_FOR(-1, GetSockData, (key));
}

void call_kmsg(void) {
  messages();
  sockets();
}
