#!/bin/sh
# SPDX-License-Identifier: MIT
# Launcher of the cross compiler for what only tests on MIPS: has Clang compile what GCC was
# asked for, in a third of the time. What is under test stays GCC's, as it ships; what Clang
# warns of is asked where it compiles the same files for the desk.
# clang_for_mips.sh COMPILER ARGUMENT...
compiler=$1
shift
case $compiler in
*g++) clang=clang++ ;;
*) clang=clang ;;
esac
for argument; do
  shift
  [ "$argument" = -Wa,-mno-pdr ] || set -- "$@" "$argument"
done
exec $clang --target=mips-linux-gnu -w "$@"
