# SPDX-License-Identifier: MIT
"""alone.py BUILD_DIR SOURCE_DIR [PART...]

Every file of the tree compiles by itself: each source file, and each header as
if it were one. A build takes several files at a time, so that a file may use
what only another one includes. PARTs choose the files whose path holds one.
"""
import collections
import concurrent.futures
import json
import os
import pathlib
import re
import shlex
import subprocess
import sys


def command_of(entry):
    """The compiler and its options, without file and output."""
    words = shlex.split(entry["command"])
    kept = []
    skip = False
    for word in words:
        if skip:
            skip = False
        elif word in ("-o", "-MF", "-MT"):
            skip = True
        elif word not in ("-c", "-MD", entry["file"]):
            kept.append(word)
    return [*kept, "-fsyntax-only"]


def sources(build, source):
    """file -> (options, working directory), of what the build compiles."""
    found = {}
    for entry in json.loads((build / "compile_commands.json").read_text()):
        path = pathlib.Path(entry["file"])
        if source in path.parents and build not in path.parents:
            found.setdefault(path, (command_of(entry), entry["directory"]))
    return found


INCLUDE = re.compile(r'^#include [<"](?:[^">]*/)?([^/">]+)[">]', re.MULTILINE)


def includers(files):
    """file name -> the files that include one of that name."""
    found = collections.defaultdict(set)
    for path in files:
        for name in INCLUDE.findall(path.read_text(encoding="utf-8")):
            found[name].add(path)
    return found


def users(header, by_name):
    """All files that a header gets into, by others or directly."""
    seen = set()
    todo = [header]
    while todo:
        more = by_name[todo.pop().name] - seen
        seen |= more
        todo += more
    return seen


def nearest(header, compiled, by_name):
    """The options of a source file that uses it and has most of its path in common."""
    def distance(path):
        common = os.path.commonpath([header.parent, path.parent])
        return (-len(pathlib.Path(common).parts), len(path.parts), path)
    sources_cpp = {path for path in compiled if path.suffix == ".cpp"}
    return compiled[min(sources_cpp & users(header, by_name) or sources_cpp, key=distance)]


def headers(source, compiled):
    listed = subprocess.run(["git", "-C", source, "ls-files", "--cached", "--others",
                             "--exclude-standard", "*.h"],
                            check=True, capture_output=True, text=True).stdout.split()
    by_name = includers([*compiled, *(source / name for name in listed)])
    for name in listed:
        header = source / name
        # Halves of a list that is included between them.
        if header.name in ("calls_begin.h", "calls_end.h"):
            continue
        # Forced into a C program, and the kernel's own.
        if name.startswith(("bench/instructions/", "bench/steps/", "kernel/module/")):
            continue
        words, directory = nearest(header, compiled, by_name)
        # Clang takes it for a source file, all of whose functions would have to be used.
        taken = ["-Wno-pragma-once-outside-header", "-Wno-unused-function"]
        yield header, ([*words, *taken, "-xc++"], directory)


def compile_alone(item):
    path, (words, directory) = item
    done = subprocess.run([*words, path], cwd=directory, capture_output=True, text=True, check=False)
    return path, done.returncode, done.stderr


def main():
    build, source = (pathlib.Path(word).resolve() for word in sys.argv[1:3])
    compiled = sources(build, source)
    parts = sys.argv[3:] or [""]
    todo = [item for item in [*compiled.items(), *headers(source, compiled)]
            if any(part in str(item[0].relative_to(source)) for part in parts)]
    if not todo:
        raise SystemExit(f"alone: no file has {' or '.join(parts)} in its path")
    failed = 0
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        for path, status, said in pool.map(compile_alone, todo):
            if status != 0:
                failed += 1
                print(f"alone: {path.relative_to(source)} does not compile by itself\n{said}",
                      file=sys.stderr)
    print(f"alone: {len(todo)} files, {failed} do not compile by themselves")
    return 1 if failed else 0


sys.exit(main())
