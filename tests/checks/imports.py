# SPDX-License-Identifier: MIT
"""imports.py NM READELF LIBRARY SOURCE_DIR

The library leaves to others exactly the platform's calls and a short list of
libc functions; it needs no library but libc, binds everything when it is
loaded and runs no code of its own then.
"""
import pathlib
import re
import sys

import elf

LIBC = {
    # printing
    "printf", "puts", "putchar", "fprintf", "fwrite", "snprintf", "stderr",
    # dump files
    "fopen", "fread", "fclose",
    # comparing addresses
    "memcmp",
    "__printf_chk", "__fprintf_chk", "__snprintf_chk",
    # the kernel channel: its socket, the messages, the table's mutex
    "socket", "bind", "sendmsg", "select", "recvmsg", "close", "perror", "malloc", "calloc", "free",
    "getpid", "pthread_self", "pthread_mutex_lock", "pthread_mutex_unlock", "__errno_location",
    # and what a thread does there that is cancelled
    "pthread_setcancelstate", "__pthread_register_cancel", "__pthread_unregister_cancel",
    "__pthread_unwind_next", "__sigsetjmp", "__sigsetjmp_cancel",
    # waiting
    "sleep",
    # every shared library
    "__cxa_finalize", "__gmon_start__", "__stack_chk_fail", "__stack_chk_guard",
    "_ITM_deregisterTMCloneTable", "_ITM_registerTMCloneTable",
    # the compiler's own
    "memcpy", "memset",
}


def platform_calls(source):
    names = {"Log_logging_func", "sys_trace_get", "sys_trace_add_log"}
    for path in sorted((source / "include/swctl/platform/calls").glob("*.def")):
        names |= set(re.findall(r"^SWCTL_CALL\((\w+)", path.read_text(), flags=re.MULTILINE))
    return names


def binds_now(readelf, library):
    flags = elf.dynamic(readelf, library, "FLAGS") + elf.dynamic(readelf, library, "FLAGS_1")
    return bool(elf.dynamic(readelf, library, "BIND_NOW")) or any("NOW" in flag for flag in flags)


def main():
    nm, readelf, library, source = sys.argv[1:4] + [pathlib.Path(sys.argv[4])]
    imports = elf.undefined(nm, library)
    platform = platform_calls(source)

    problems = [f"{name} is neither a platform call nor an allowed libc function"
                for name in sorted(imports - platform - LIBC)]
    needed = elf.needed(readelf, library)
    problems += [f"needs {name}" for name in needed if not name.startswith("libc.so.")]
    if not binds_now(readelf, library):
        problems.append("is not bound when it is loaded")
    # One entry of one pointer is the compiler's own (frame_dummy).
    pointer = 8 if "ELF64" in elf.run(readelf, "-h", library) else 4
    for value in elf.dynamic(readelf, library, "INIT_ARRAYSZ"):
        if int(value.split()[0]) > pointer:
            problems.append(f"runs constructors when it is loaded (INIT_ARRAYSZ {value})")

    used = len(imports & platform)
    elf.finish("imports", problems, f"{used} platform calls, NEEDED {' '.join(needed)}")


main()
