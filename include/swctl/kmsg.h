/* SPDX-License-Identifier: MIT */
/**
 * @file kmsg.h
 * @brief The message channel to the kernel-side switch module.
 *
 * Some requests only the kernel's switch module can answer. It is reached
 * over a netlink socket (netlink(7)) of protocol ::NETLINK_SWITCH_PROTOCOL.
 * A message is a ::KernelMsgHeader and a payload; on the wire a netlink
 * header of 16 bytes stands in front. Every thread has a socket of its own,
 * so a reply reaches the thread that asked. The request that programs make is
 * user_send_data_to_kernel(); everything else here are its parts.
 *
 * Of the laws in frame.h these are different:
 * - There is no leading argument and no unit.
 * - The channel makes system calls and no SDK call, and it allocates: what a
 *   function hands out the caller releases with free().
 * - Threads: any number of them may call at once. Taking and releasing a
 *   place in the table of sockets is guarded by a mutex; looking a socket up
 *   is not. No lock is held while a request is under way.
 *
 * All fields are in the host's byte order; nothing is converted.
 *
 * **Keys.** A thread's socket is stored and bound under the thread's key, a
 * positive 32-bit value. It is the thread's identity, pthread_self(), where
 * that fits, as it always does on a 32-bit board. A longer identity `i` is
 * folded: with `x` = `i` / 64, the key is the low 31 bits of `x` xor
 * (`x` >> 31), and 1 if those are all zero. Threads whose control blocks lie
 * within 128 GiB of each other, as in any ordinary process, thus have
 * different keys. The port ids of netlink sockets are one space for all
 * processes: a key that another process has bound fails in bind().
 */
#ifndef SWCTL_KMSG_H
#define SWCTL_KMSG_H

#include <swctl/types.h>

SWCTL_BEGIN_DECLS

/** Netlink protocol of the kernel's switch module. */
#define NETLINK_SWITCH_PROTOCOL 30

/** Most bytes of payload that a message may have. */
#define SWCTL_KMSG_MAX_PAYLOAD 16384u
/** KernelMsgHeader::direction of a message from a program to the kernel. */
#define SWCTL_KMSG_TO_KERNEL 1u
/** KernelMsgHeader::msgType of a data request. */
#define SWCTL_KMSG_DATA_REQUEST 3u
/** Payload bytes of a data request, whatever data it carries. */
#define SWCTL_KMSG_DATA_REQUEST_SIZE 2048u
/** Most data bytes that a data request has room for. */
#define SWCTL_KMSG_MAX_DATA 2046u
/** Seconds that user_send_data_to_kernel() waits for its answer. */
#define SWCTL_KMSG_TIMEOUT 120
/** What user_send_data_to_kernel() returns if no reply came. */
#define SWCTL_KMSG_NO_ANSWER 0xFFFFFFFFu
/** Threads that can have a socket at one time. */
#define SWCTL_KMSG_MAX_THREADS 32

/**
 * @brief What every kernel message begins with: 12 bytes without padding.
 */
struct KernelMsgHeader {
  uint16_t msgId;     /**< high half of the message code; the module knows its meaning */
  uint16_t direction; /**< ::SWCTL_KMSG_TO_KERNEL in what a program sends */
  uint16_t msgType;   /**< low half of the message code */
  uint16_t reserved;  /**< 0 */
  uint32_t length;    /**< bytes of payload behind the header */
};
typedef struct KernelMsgHeader KernelMsgHeader;

/**
 * @name Messages
 * @{
 */

/**
 * @brief Makes a message with a given header and an empty payload.
 *
 * The twelve bytes of the header are copied as they are, whatever they hold.
 * Nothing is printed, and nothing stays allocated on failure.
 *
 * @param header read; the payload gets its `length` bytes, all zero
 * @return `length` + 12 bytes that the caller releases with free(); null if
 *         `length` is greater than ::SWCTL_KMSG_MAX_PAYLOAD or there is no
 *         memory
 */
SWCTL_API uint8_t *MSG_CreateMessage(const KernelMsgHeader *header);

/**
 * @brief Makes a message from a program to the kernel.
 *
 * Fills the header: `msgId` is the high half of the code, `direction`
 * ::SWCTL_KMSG_TO_KERNEL, `msgType` the low half, `reserved` 0, `length` the
 * payload's. Then calls MSG_CreateMessage() and copies the payload. Nothing
 * is printed, and nothing stays allocated on failure.
 *
 * @param msgCode       message code
 * @param payload       `payloadLength` bytes, copied
 * @param payloadLength 1 to ::SWCTL_KMSG_MAX_PAYLOAD
 * @return `payloadLength` + 12 bytes that the caller releases with free();
 *         null if `payload` is null, the length is less than 1 or too great,
 *         or there is no memory
 */
SWCTL_API uint8_t *MSG_CreateUserToKernelMessage(uint32_t msgCode, const uint8_t *payload,
                                                 int32_t payloadLength);
/** @} */

/**
 * @name Requests
 * @{
 */

/**
 * @brief Sends a message to the kernel and waits for one reply.
 *
 * The socket is the calling thread's, made if it has none. A process's first
 * message clears the table of sockets with InitThreadSocketData(); the socket
 * comes from GetThreadSocket(). Then exactly three system calls follow:
 * sendmsg(), one select() on the socket, which an interruption ends as well,
 * and recvmsg().
 *
 * On the wire the message stands behind a netlink header with the length, no
 * flags and the thread's key as port id. Its type and sequence number are not
 * assigned: they are whatever the fresh buffer held, and the module takes no
 * meaning from them. The reply's netlink header is skipped unread, and the
 * reply's own `length` is believed. Replies are not matched to requests: one
 * that comes after the time-out answers the thread's next request.
 *
 * What is printed on failure (standard output, the system's errors on
 * standard error):
 * - no socket: "MSG_UserSendAndRecvMessage:330 ERROR to get socket!";
 * - sendmsg() failed: the system error behind "sendmsg error:";
 * - time-out: "Receive message time out! iRet:%d~ socket:0x%X iPid:0x%X" with
 *   the bytes sent, the descriptor and the key;
 * - the socket has ended: "Exit.";
 * - recvmsg() failed: the system error behind "recvmsg:", and "Recive message
 *   error!~".
 *
 * The memory for the datagram and the reply is not checked after it was
 * obtained.
 *
 * @param message        a kernel message, or null; it need not be aligned
 * @param timeoutSeconds how long to wait for the reply
 * @param reply          receives a fresh copy of the reply's kernel message,
 *                       its `length` + 12 bytes, which the caller releases
 *                       with free(); written only if a reply was received
 * @return the bytes received, netlink header included; 0 for a null message,
 *         a time-out or a socket that has ended; -1 if there is no socket or
 *         sending or receiving failed; the negative result of a select() that
 *         failed or was interrupted
 */
SWCTL_API int32_t MSG_UserSendAndRecvMessage(const uint8_t *message, int32_t timeoutSeconds,
                                             void **reply);

/**
 * @brief Sends data to the kernel's switch module and returns its answer.
 *
 * Makes a data request: ::SWCTL_KMSG_DATA_REQUEST_SIZE bytes that hold the
 * data's length in two bytes, the data, and zeros. It is sent with
 * MSG_CreateUserToKernelMessage() and MSG_UserSendAndRecvMessage(), which
 * prints what went wrong, with a time-out of ::SWCTL_KMSG_TIMEOUT seconds.
 *
 * The copy of the reply is not released: every answered call leaves it
 * allocated. A module must answer with at least four bytes of payload; of a
 * shorter reply the answer word is read behind the end of its copy.
 *
 * @param msgCode    the high half says what is asked; the low half is
 *                   replaced by ::SWCTL_KMSG_DATA_REQUEST
 * @param data       the data, or null for zeros
 * @param dataLength bytes of data, of which the low 16 bits count. They must
 *                   not exceed ::SWCTL_KMSG_MAX_DATA, which is not checked.
 * @return the first four bytes of the reply's payload as a word;
 *         ::SWCTL_KMSG_NO_ANSWER if no reply came
 */
SWCTL_API uint32_t user_send_data_to_kernel(uint32_t msgCode, const void *data,
                                            uint32_t dataLength);
/** @} */

/**
 * @name The threads' sockets
 * A process has one table of ::SWCTL_KMSG_MAX_THREADS sockets, empty at
 * start. A place is taken when a thread first needs a socket and stays taken
 * until DeleteThreadSocket() is called with its key, even if the thread ends;
 * a later thread with the same identity finds it and goes on with it.
 *
 * **A full table is final.** The call that finds no free place leaves the
 * mutex locked: from then on InitThreadSocketData(), SetSockData() and
 * DeleteThreadSocket() block for ever, and with them every thread that would
 * need a new socket. Threads that have one go on working.
 * @{
 */

/**
 * @brief Clears the table if that has not been done.
 *
 * Locks the mutex. The sockets of a table that is cleared are not closed.
 *
 * @return 1
 */
SWCTL_API int32_t InitThreadSocketData(void);

/**
 * @brief Makes a socket for a key and stores it in the table.
 *
 * Opens a raw netlink socket, binds it to the key as its port id and stores
 * it with SetSockData(). If that finds the table full, the socket is closed.
 * If bind() fails, the socket stays open.
 *
 * Prints "ERROR in CreateThreadSocket:162 create socket" and the system error
 * behind "socket" if there is no socket to be had, and the system error
 * behind "bind" if it cannot be bound.
 *
 * @param key the thread's key
 * @return the socket's descriptor; -1 if the key is 0 or negative, nothing
 *         printed, and on every failure
 */
SWCTL_API int32_t CreateThreadSocket(int32_t key);

/**
 * @brief The socket of a key, made if there is none.
 *
 * Asks GetSockData(), then CreateThreadSocket().
 *
 * @param key the thread's key
 * @return the socket's descriptor; -1 if the key is 0 or negative, or the
 *         socket could not be made
 */
SWCTL_API int32_t GetThreadSocket(int32_t key);

/**
 * @brief Closes every socket that is stored under a key and frees its place.
 *
 * Locks the mutex around SetFreeSockData(). Key 0 is the key of every free
 * place: their old descriptors are closed once more, and descriptor 0 for
 * each place that was never taken.
 *
 * @param key the thread's key
 * @return -1, always
 */
SWCTL_API int32_t DeleteThreadSocket(uint32_t key);

/**
 * @brief DeleteThreadSocket() for the key made of a process and a thread.
 *
 * The key is (`thread` << 16) | `pid`. It is not the key under which
 * MSG_UserSendAndRecvMessage() stores a thread's socket, so of those it finds
 * none; programs that store sockets under such keys themselves call it.
 *
 * @param pid    process id
 * @param thread the thread's identity as a 32-bit word
 * @return -1, always
 */
SWCTL_API int32_t __HandleThreadExit(uint32_t pid, uint32_t thread);

/**
 * @brief __HandleThreadExit() for the calling thread.
 *
 * For programs whose threads call it as they end; the library never does.
 *
 * @return -1, always
 */
SWCTL_API int32_t HandleThreadExit(void);

/**
 * @brief The first free place of the table.
 *
 * Takes no lock; for SetSockData().
 *
 * @return 0 to 31, or -1 if all are taken
 */
SWCTL_API int32_t GetFreeSockData(void);

/**
 * @brief Closes the sockets of a key and frees their places.
 *
 * The caller holds the mutex; for DeleteThreadSocket(). Visits every place;
 * the descriptor of one that is freed stays in it.
 *
 * @param key the thread's key
 * @return -1, always
 */
SWCTL_API int32_t SetFreeSockData(uint32_t key);

/**
 * @brief Stores a socket in the first free place.
 *
 * Locks the mutex. If the table is full, prints "max thread number already!"
 * and leaves the mutex locked. A key that is stored already gets a second
 * place.
 *
 * @param socket descriptor
 * @param key    the thread's key
 * @return 0; -1 if the table is full
 */
SWCTL_API int32_t SetSockData(int32_t socket, uint32_t key);

/**
 * @brief The socket that is stored first under a key.
 *
 * Takes no lock. A free place counts as well: its key is 0.
 *
 * @param key the thread's key
 * @return the socket's descriptor, or -1 if the key is not in the table
 */
SWCTL_API int32_t GetSockData(uint32_t key);
/** @} */

SWCTL_END_DECLS

#endif
