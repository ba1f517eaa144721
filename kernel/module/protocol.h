/* SPDX-License-Identifier: MIT */
/*
 * The messages of netlink protocol 30 as the kernel's switch module reads
 * them, after the netlink header, in the order of the host. The module and
 * its test include it; programs use <swctl/kmsg.h>.
 */
#ifndef SWCTL_KERNEL_PROTOCOL_H
#define SWCTL_KERNEL_PROTOCOL_H

#include <linux/types.h>

#define SWITCH_PROTOCOL 30

#define SWITCH_TO_KERNEL 1
#define SWITCH_TO_USER 2
#define SWITCH_DATA 3

struct switch_header {
  __u16 id; /* what is asked */
  __u16 direction;
  __u16 type;
  __u16 reserved; /* 0 */
  __u32 length;   /* of what follows */
};

#define SWITCH_DATA_BYTES 2046

struct switch_data {
  __u16 length;
  __u8 bytes[SWITCH_DATA_BYTES]; /* zeros after `length` */
};

/* What is asked for in a data request, and the word that answers it. */
#define SWITCH_ECHO 1    /* at least four bytes: the first four, as a word */
#define SWITCH_SUM 2     /* the sum of the bytes */
#define SWITCH_PATTERN 3 /* 1 if every byte is SWITCH_PATTERN_BYTE, else 0 */
#define SWITCH_SILENCE 4 /* no answer at all */
/* No bytes: the register's value. Four bytes: they are stored, and answered. */
#define SWITCH_REGISTER_FIRST 0x100
#define SWITCH_REGISTERS 256

#define SWITCH_PATTERN_BYTE(length, index) ((__u8)((length) + 31 * (index)))

/* The answer to a sound request that the module does not know or cannot do. */
#define SWITCH_REFUSED 0xFFFFFFFEu

#endif
