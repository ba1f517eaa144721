// SPDX-License-Identifier: MIT
/*
 * Reference for the kernel side of the message channel: a switch module that
 * answers data requests of netlink protocol 30. A board's own module takes its
 * place; this one has registers instead of a switch.
 *
 * A message that is not sound is dropped without an answer, and so is one from
 * a sender without CAP_NET_ADMIN. How many were answered and dropped is in
 * /sys/module/swctl_switch/parameters. Every message is logged at debug level
 * (dyndbg=+p).
 */
#define pr_fmt(format) KBUILD_MODNAME ": " format

#include <linux/atomic.h>
#include <linux/capability.h>
#include <linux/module.h>
#include <linux/netlink.h>
#include <linux/skbuff.h>
#include <linux/string.h>
#include <net/net_namespace.h>
#include <net/netlink.h>
#include <net/sock.h>

#include "protocol.h"

#define MESSAGE_BYTES (NLMSG_HDRLEN + sizeof(struct switch_header) + sizeof(struct switch_data))

static_assert(sizeof(struct switch_header) == 12);
static_assert(sizeof(struct switch_data) == 2048);

static struct sock *channel;
/* Single words, so that readers and writers need no lock. */
static u32 registers[SWITCH_REGISTERS];
static atomic_t answered = ATOMIC_INIT(0);
static atomic_t dropped = ATOMIC_INIT(0);

static int counter_get(char *text, const struct kernel_param *parameter) {
  return sysfs_emit(text, "%d\n", atomic_read((atomic_t *)parameter->arg));
}

static const struct kernel_param_ops counter = {.get = counter_get};
module_param_cb(answered, &counter, &answered, 0444);
MODULE_PARM_DESC(answered, "Requests that were answered");
module_param_cb(dropped, &counter, &dropped, 0444);
MODULE_PARM_DESC(dropped, "Messages that were dropped");

/* The netlink type and sequence number are whatever the sender left there. */
static const char *netlink_fault(struct sk_buff *skb) {
  const struct nlmsghdr *netlink = nlmsg_hdr(skb);

  if (!netlink_capable(skb, CAP_NET_ADMIN)) return "sender lacks CAP_NET_ADMIN";
  if (skb->len != MESSAGE_BYTES) return "not the size of a data request";
  if (netlink->nlmsg_len != skb->len) return "netlink length is not the size";
  if (netlink->nlmsg_flags != 0) return "netlink flags";
  if (netlink->nlmsg_pid != NETLINK_CB(skb).portid) return "port id of another socket";
  return NULL;
}

static const char *header_fault(const struct switch_header *header) {
  if (header->direction != SWITCH_TO_KERNEL) return "direction";
  if (header->type != SWITCH_DATA) return "type";
  if (header->reserved != 0) return "reserved field";
  if (header->length != sizeof(struct switch_data)) return "length";
  return NULL;
}

static const char *data_fault(const struct switch_data *data) {
  if (data->length > SWITCH_DATA_BYTES) return "data length";
  if (memchr_inv(data->bytes + data->length, 0, SWITCH_DATA_BYTES - data->length))
    return "bytes after the data";
  return NULL;
}

static u32 first_word(const struct switch_data *data) {
  u32 word;

  memcpy(&word, data->bytes, sizeof(word));
  return word;
}

static u32 sum(const struct switch_data *data) {
  u32 total = 0;
  u16 index;

  for (index = 0; index < data->length; ++index) total += data->bytes[index];
  return total;
}

static u32 has_pattern(const struct switch_data *data) {
  u16 index;

  for (index = 0; index < data->length; ++index) {
    if (data->bytes[index] != SWITCH_PATTERN_BYTE(data->length, index)) return 0;
  }
  return 1;
}

static u32 use_register(u32 *place, const struct switch_data *data) {
  if (data->length == 0) return READ_ONCE(*place);
  if (data->length != sizeof(*place)) return SWITCH_REFUSED;
  WRITE_ONCE(*place, first_word(data));
  return first_word(data);
}

static u32 answer_to(u16 id, const struct switch_data *data) {
  if (id >= SWITCH_REGISTER_FIRST && id < SWITCH_REGISTER_FIRST + SWITCH_REGISTERS)
    return use_register(&registers[id - SWITCH_REGISTER_FIRST], data);
  switch (id) {
    case SWITCH_ECHO: return data->length < sizeof(u32) ? SWITCH_REFUSED : first_word(data);
    case SWITCH_SUM: return sum(data);
    case SWITCH_PATTERN: return has_pattern(data);
    default: return SWITCH_REFUSED;
  }
}

static int send_answer(u32 portid, u16 id, u32 word) {
  const struct switch_header header = {id, SWITCH_TO_USER, SWITCH_DATA, 0, sizeof(word)};
  struct sk_buff *skb = nlmsg_new(sizeof(header) + sizeof(word), GFP_KERNEL);
  struct nlmsghdr *netlink;

  if (!skb) return -ENOMEM;
  netlink = nlmsg_put(skb, 0, 0, NLMSG_MIN_TYPE, sizeof(header) + sizeof(word), 0);
  if (!netlink) {
    nlmsg_free(skb);
    return -EMSGSIZE;
  }
  memcpy(nlmsg_data(netlink), &header, sizeof(header));
  memcpy(nlmsg_data(netlink) + sizeof(header), &word, sizeof(word));
  return nlmsg_unicast(channel, skb, portid);
}

static void answer(u32 portid, u16 id, const struct switch_data *data) {
  const u32 word = answer_to(id, data);
  const int result = send_answer(portid, id, word);

  pr_debug("port %u, request %#x, %u bytes: %#x, result %d\n", portid, id, data->length, word,
           result);
  if (result == 0) atomic_inc(&answered);
}

/* Runs in the sender's context, for several senders at once. */
static void receive(struct sk_buff *skb) {
  const u32 portid = NETLINK_CB(skb).portid;
  const struct switch_header *header = nlmsg_data(nlmsg_hdr(skb));
  const struct switch_data *data = (const void *)(header + 1);
  const char *fault = netlink_fault(skb);

  if (!fault) fault = header_fault(header);
  if (!fault) fault = data_fault(data);
  if (fault) {
    atomic_inc(&dropped);
    pr_debug("port %u, %u bytes dropped: %s\n", portid, skb->len, fault);
  } else if (header->id == SWITCH_SILENCE) {
    pr_debug("port %u, request %#x: no answer\n", portid, header->id);
  } else {
    answer(portid, header->id, data);
  }
}

static int __init switch_start(void) {
  struct netlink_kernel_cfg configuration = {.input = receive};

  channel = netlink_kernel_create(&init_net, SWITCH_PROTOCOL, &configuration);
  return channel ? 0 : -EADDRINUSE;
}

static void __exit switch_end(void) {
  netlink_kernel_release(channel);
}

module_init(switch_start);
module_exit(switch_end);
MODULE_DESCRIPTION("Reference switch module for the libswctl message channel");
MODULE_LICENSE("Dual MIT/GPL");
