#!/bin/bash
# SPDX-License-Identifier: MIT
# Every C and C++ file of the tree is as clang-format leaves it.
set -euo pipefail
cd "$1"
mapfile -t files < <(git ls-files --cached --others --exclude-standard '*.h' '*.c' '*.cpp')
clang-format --dry-run --Werror "${files[@]}"
echo "format: ${#files[@]} files"
