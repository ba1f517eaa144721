/* SPDX-License-Identifier: MIT */
/**
 * @file kmsg.h
 * @brief The message channel to the kernel-side switch module.
 *
 * Some requests can only be answered by the kernel's switch module. The
 * channel reaches it over a netlink socket (netlink(7)) of protocol
 * ::NETLINK_SWITCH_PROTOCOL. A message is a ::KernelMsgHeader followed by a
 * payload; on the wire, a netlink header of 16 bytes comes first. Every thread
 * has its own socket, so a reply reaches the thread that asked. Programs call
 * user_send_data_to_kernel(); the other functions are the steps that it takes.
 *
 * These rules differ from those in frame.h:
 * - There is no leading argument and no unit.
 * - The channel makes system calls and no SDK calls, and it allocates memory.
 *   The caller releases with free() what a function returns.
 * - Any number of threads may call at once. A mutex guards taking and
 *   releasing a place in the table of sockets; looking up a socket takes no
 *   lock. No lock is held while a request is under way.
 *
 * All fields are in the host's byte order; nothing is converted.
 *
 * **Keys.** A thread's socket is stored under the thread's key, a positive
 * 32-bit value, and bound to it as its netlink port id. The key is the
 * thread's identity, pthread_self(), if that is at most 0x7FFFFFFF, as it
 * always is on 32-bit MIPS. A longer identity `i` is folded: with `x` = `i` /
 * 64, the key is the low 31 bits of `x` xor (`x` >> 31), or 1 if those bits
 * are all zero.
 *
 * Two threads whose identities fold to the same key share one socket, and each
 * may get the other's reply. With addresses of up to 47 bits, two identities
 * can share a key only if
 * - both are longer, and less than 64 KiB from 128 GiB or a multiple of it
 *   apart (0 is such a multiple: no two control blocks fold to the same number
 *   when they are that close, but one may fold to 0 and the other to 1); or
 * - one is at most 0x7FFFFFFF and the other folds to it.
 *
 * Netlink port ids are one space for all processes: bind() fails for a key
 * that another process has bound.
 *
 * **fork().** A child process has a copy of the table, so its thread finds its
 * parent's socket and uses it: parent and child share one port id, and each
 * may get the other's reply. Releasing the socket in the child does not help.
 * The child's thread has the identity of the parent's, so a new socket cannot
 * be bound while the parent has its own open. Let only one of the two use the
 * channel until the child has called exec(). If another thread was inside the
 * table when the process forked, the mutex stays locked in the child.
 *
 * **Cancellation.** A thread that is cancelled (pthread_cancel()) in a request
 * leaves no lock and no memory. Its socket stays in the table, as for every
 * thread that ends without DeleteThreadSocket(); the reply, if it still comes,
 * answers the next request over that socket. The wait for a reply can be
 * cancelled. Making and releasing a socket are finished first.
 */
#ifndef SWCTL_KMSG_H
#define SWCTL_KMSG_H

#include <swctl/types.h>

SWCTL_BEGIN_DECLS

/** Netlink protocol of the kernel's switch module. */
#define NETLINK_SWITCH_PROTOCOL 30

/** Most bytes of payload that a message to the kernel may have. */
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
/** What user_send_data_to_kernel() returns if no reply came. A module may answer the same. */
#define SWCTL_KMSG_NO_ANSWER 0xFFFFFFFFu
/** Threads that can have a socket at one time. */
#define SWCTL_KMSG_MAX_THREADS 32

/**
 * @brief Start of every kernel message: 12 bytes without padding.
 */
struct KernelMsgHeader {
  uint16_t msgId;     /**< high half of the message code; the module knows its meaning */
  uint16_t direction; /**< ::SWCTL_KMSG_TO_KERNEL in what a program sends */
  uint16_t msgType;   /**< low half of the message code */
  uint16_t reserved;  /**< 0 */
  uint32_t length;    /**< bytes of payload after the header */
};
typedef struct KernelMsgHeader KernelMsgHeader;

/**
 * @name Messages
 * @{
 */

/**
 * @brief Makes a message with a given header and a payload of zeros.
 *
 * Copies the twelve bytes of the header as they are, whatever they hold.
 * Prints nothing, and leaves nothing allocated on failure.
 *
 * @param header copied; its `length` is the number of zeros after it
 * @return `length` + 12 bytes that the caller releases with free(); null if
 *         `length` is greater than ::SWCTL_KMSG_MAX_PAYLOAD or memory runs out
 */
SWCTL_API uint8_t *MSG_CreateMessage(const KernelMsgHeader *header);

/**
 * @brief Makes a message from a program to the kernel.
 *
 * Fills a header: `msgId` is the high half of the code, `direction` is
 * ::SWCTL_KMSG_TO_KERNEL, `msgType` is the low half, `reserved` is 0, and
 * `length` is `payloadLength`. Then calls MSG_CreateMessage() and copies the
 * payload. Prints nothing, and leaves nothing allocated on failure.
 *
 * @param msgCode       message code
 * @param payload       `payloadLength` bytes, copied
 * @param payloadLength 1 to ::SWCTL_KMSG_MAX_PAYLOAD
 * @return `payloadLength` + 12 bytes that the caller releases with free();
 *         null if `payload` is null, if the length is less than 1 or greater
 *         than ::SWCTL_KMSG_MAX_PAYLOAD, or if memory runs out
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
 * Uses the calling thread's socket, which is made if the thread has none. The
 * first message of a process clears the table of sockets with
 * InitThreadSocketData(); the socket comes from GetThreadSocket(). Then there
 * are exactly three system calls: sendmsg(), one select() on the socket, and
 * recvmsg(). An interrupted select() is not repeated.
 *
 * On the wire, the message follows a netlink header that has the length, no
 * flags, and the thread's key as port id. Type and sequence number of that
 * header are not assigned: they are whatever the new buffer held, and the
 * module ignores them. The netlink header of the reply is skipped unread.
 *
 * Replies are not matched to requests: one that comes after the time-out
 * answers the thread's next request. The reply's own `length` is believed and
 * not compared with what was received. There is room for a reply of 16,372
 * bytes of payload; one that is longer, or says that it is, is copied from
 * beyond the buffer. Only the kernel's module can send such a reply.
 *
 * Prints on failure (system errors on standard error, the rest on standard
 * output):
 * - no socket: "MSG_UserSendAndRecvMessage:330 ERROR to get socket!";
 * - sendmsg() failed: the system error, after "sendmsg error:";
 * - time-out: "Receive message time out! iRet:%d~ socket:0x%X iPid:0x%X" with
 *   the bytes sent, the descriptor and the key;
 * - the socket has ended: "Exit.";
 * - recvmsg() failed: the system error, after "recvmsg:", then "Recive message
 *   error!~".
 *
 * The memory for the datagram and for the reply is used without checking
 * whether it could be allocated.
 *
 * @param message        a kernel message, or null; it need not be aligned
 * @param timeoutSeconds how long to wait for the reply. 0 does not wait. With
 *                       a negative number the message is sent, and then
 *                       select() fails; a reply answers the next request.
 * @param reply          receives a new copy of the reply's kernel message, its
 *                       `length` + 12 bytes, which the caller releases with
 *                       free(); written only if a reply was received
 * @return the bytes received, netlink header included; 0 for a null message, a
 *         time-out or a socket that has ended; -1 if there is no socket or if
 *         sending or receiving failed; the negative result of a select() that
 *         failed or was interrupted
 */
SWCTL_API int32_t MSG_UserSendAndRecvMessage(const uint8_t *message, int32_t timeoutSeconds,
                                             void **reply);

/**
 * @brief Sends data to the kernel's switch module and returns its answer.
 *
 * Makes a data request: ::SWCTL_KMSG_DATA_REQUEST_SIZE bytes, which hold the
 * length of the data in two bytes, the data, and zeros. Sends it with
 * MSG_CreateUserToKernelMessage() and MSG_UserSendAndRecvMessage(), with a
 * time-out of ::SWCTL_KMSG_TIMEOUT seconds. MSG_UserSendAndRecvMessage()
 * prints what went wrong.
 *
 * The copy of the reply is not released: every answered call leaves it
 * allocated. A module must answer with at least four bytes of payload; the
 * answer word of a shorter reply is read from beyond the end of its copy.
 *
 * @param msgCode    the high half says what is asked; the low half is replaced
 *                   by ::SWCTL_KMSG_DATA_REQUEST
 * @param data       the data, or null for zeros
 * @param dataLength bytes of data; only the low 16 bits count. They must not
 *                   exceed ::SWCTL_KMSG_MAX_DATA. This is not checked: more
 *                   data are copied beyond the request, over the stack.
 * @return the first four bytes of the reply's payload as a word;
 *         ::SWCTL_KMSG_NO_ANSWER if no reply came. A module that answers this
 *         same value cannot be told from none.
 */
SWCTL_API uint32_t user_send_data_to_kernel(uint32_t msgCode, const void *data,
                                            uint32_t dataLength);
/** @} */

/**
 * @name The threads' sockets
 * A process has one table with places for ::SWCTL_KMSG_MAX_THREADS sockets,
 * empty at start. A place is taken when a thread first needs a socket. It
 * stays taken until DeleteThreadSocket() is called with the thread's key, even
 * if the thread ends; a later thread with the same identity finds the socket
 * and goes on with it.
 *
 * **A full table is final.** The call that finds no free place leaves the
 * mutex locked. From then on InitThreadSocketData(), SetSockData() and
 * DeleteThreadSocket() block for ever, and so does every thread that needs a
 * new socket. Threads that have a socket go on working.
 * @{
 */

/**
 * @brief Clears the table unless that has been done.
 *
 * Locks the mutex. The sockets of a table that is cleared are not closed.
 *
 * @return 1
 */
SWCTL_API int32_t InitThreadSocketData(void);

/**
 * @brief Makes a socket for a key and stores it in the table.
 *
 * Opens a raw netlink socket, binds it to the key as its port id and stores it
 * with SetSockData(). If the table is full, closes the socket again. If bind()
 * fails, the socket stays open.
 *
 * If no socket can be opened, prints "ERROR in CreateThreadSocket:162 create
 * socket" and the system error after "socket". If it cannot be bound, prints
 * the system error after "bind".
 *
 * @param key the thread's key
 * @return the socket's descriptor; -1 on every failure; -1 without a word if
 *         the key is 0 or negative
 */
SWCTL_API int32_t CreateThreadSocket(int32_t key);

/**
 * @brief The socket of a key, made if there is none.
 *
 * Calls GetSockData(), then CreateThreadSocket().
 *
 * @param key the thread's key
 * @return the socket's descriptor; -1 if the key is 0 or negative, or if the
 *         socket could not be made
 */
SWCTL_API int32_t GetThreadSocket(int32_t key);

/**
 * @brief Closes every socket that is stored under a key and frees its place.
 *
 * Locks the mutex around SetFreeSockData(). Key 0 is the key of every free
 * place: its old descriptor is closed once more, which is descriptor 0 for a
 * place that was never taken.
 *
 * @param key the thread's key
 * @return -1, always
 */
SWCTL_API int32_t DeleteThreadSocket(uint32_t key);

/**
 * @brief DeleteThreadSocket() for the key made of a process and a thread.
 *
 * The key is (`thread` << 16) | `pid`. MSG_UserSendAndRecvMessage() stores
 * sockets under another key, so this finds none of them. It is for programs
 * that store sockets under such keys themselves.
 *
 * @param pid    process id
 * @param thread the thread's identity as a 32-bit word
 * @return -1, always
 */
SWCTL_API int32_t __HandleThreadExit(uint32_t pid, uint32_t thread);

/**
 * @brief __HandleThreadExit() for the calling thread.
 *
 * Passes getpid() and the low 32 bits of pthread_self(), which are not folded.
 * For threads that call it as they end; the library never does.
 *
 * @return -1, always
 */
SWCTL_API int32_t HandleThreadExit(void);

/**
 * @brief The first free place of the table.
 *
 * Takes no lock. SetSockData() calls it.
 *
 * @return 0 to 31, or -1 if all places are taken
 */
SWCTL_API int32_t GetFreeSockData(void);

/**
 * @brief Closes the sockets of a key and frees their places.
 *
 * The caller must hold the mutex. DeleteThreadSocket() calls it. Looks at
 * every place. A place that is freed keeps its descriptor.
 *
 * @param key the thread's key
 * @return -1, always
 */
SWCTL_API int32_t SetFreeSockData(uint32_t key);

/**
 * @brief Stores a socket in the first free place.
 *
 * Locks the mutex. If the table is full, prints "max thread number already!"
 * and leaves the mutex locked. A key that is already stored gets a second
 * place.
 *
 * @param socket descriptor
 * @param key    the thread's key
 * @return 0; -1 if the table is full
 */
SWCTL_API int32_t SetSockData(int32_t socket, uint32_t key);

/**
 * @brief The socket in the first place that has a key.
 *
 * Takes no lock, and does not ask whether the place is in use. A free place
 * has key 0 and keeps its last descriptor, so GetSockData(0) returns a
 * descriptor that is closed, or 0 if the place was never taken; it returns -1
 * only if no place is free.
 *
 * @param key the thread's key
 * @return the socket's descriptor, or -1 if no place has the key
 */
SWCTL_API int32_t GetSockData(uint32_t key);
/** @} */

SWCTL_END_DECLS

#endif
