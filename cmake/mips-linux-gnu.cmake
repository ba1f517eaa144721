# SPDX-License-Identifier: MIT
# Big-endian 32-bit MIPS with Debian's cross compiler (g++-mips-linux-gnu);
# tests run under qemu-user. Copy it for a board's own compiler.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR mips)
set(CMAKE_C_COMPILER mips-linux-gnu-gcc)
set(CMAKE_CXX_COMPILER mips-linux-gnu-g++)
set(CMAKE_CROSSCOMPILING_EMULATOR qemu-mips;-L;/usr/mips-linux-gnu)
set(CMAKE_FIND_ROOT_PATH /usr/mips-linux-gnu)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
# No table of procedures: only debuggers of another age read it. Segments meet
# at 16 KB, the largest page of the boards in mind, rather than at the default
# of 64 KB: together that makes the library a third smaller as a file.
set(CMAKE_C_FLAGS_INIT -Wa,-mno-pdr)
set(CMAKE_CXX_FLAGS_INIT -Wa,-mno-pdr)
set(CMAKE_SHARED_LINKER_FLAGS_INIT -Wl,-z,max-page-size=16384)
