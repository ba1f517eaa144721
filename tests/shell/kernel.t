The object kernel, on a machine without the kernel's switch module. With it,
kernel_vm_test runs the same commands.

  $ . "$TESTDIR/setup.sh"

  $ swctl kernel status
  protocol  30
  module    absent
  sockets   0
  $ swctl -j kernel status
  [{"protocol":30,"module":false,"sockets":0}]

A request that cannot be sent, with what the library has to say:

  $ swctl kernel send 7 0a0b -T 1
  ERROR in CreateThreadSocket:162 create socket
  socket: Protocol not supported
  MSG_UserSendAndRecvMessage:330 ERROR to get socket!
  swctl: kernel send 7 0a0b -T 1: the kernel's switch module cannot be reached
  [2]
  $ data swctl -j kernel send 0xFFFF
  {"error":{"message":"kernel send 0xFFFF: the kernel's switch module cannot be reached","culprit":null,"expected":[],"suggestions":[],"status":2}}
  [2]

Words that are wrong:

  $ swctl kernel send
  swctl: kernel send: missing MSGID, expected a number 0-65535
  [1]
  $ swctl kernel send 65536
  swctl: kernel send: bad value "65536", expected a number 0-65535
  [1]
  $ swctl kernel send 1 0a0
  swctl: kernel send 1: bad value "0a0": "0" is no byte, expected one of: up to 2046 bytes in hexadecimal such as 0a0b0c, -T
  [1]
  $ swctl kernel send 1 0a 0b
  swctl: kernel send 1 0a: unknown word "0b", expected -T
  [1]
  $ swctl kernel send 1 $(printf '%04094d' 0) 2>&1 | tail -c 95
  : 2047 bytes are too many, expected one of: up to 2046 bytes in hexadecimal such as 0a0b0c, -T
  $ swctl kernel send 1 -T
  swctl: kernel send 1 -T: missing value, expected a number 0-86400 s
  [1]
  $ swctl kernel send 1 -T 90000
  swctl: kernel send 1 -T: bad value "90000", expected a number 0-86400 s
  [1]
  $ swctl -complete 4 swctl kernel send 1 -
  -T
  -json
  -pretty
  -batch
  -force
  -atomic
  -may-exist
  -no-pager
  -echo-status
  -unit
  -help
  -Version
