#!/bin/bash
# SPDX-License-Identifier: MIT
# consumer.sh SOURCE_DIR BUILD_DIR CC EMULATOR...
# Installs the build into a new prefix and builds the examples against it twice,
# with the CMake package and with pkg-config, and runs both. Then the installed
# shell, which must find its libraries where they were installed.
set -euo pipefail
source_dir=$1 build_dir=$2 cc=$3
shift 3
emulator=("$@")

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
prefix=$work/prefix
cmake --install "$build_dir" --prefix "$prefix" >"$work/install.log"

libdir=$(dirname "$(find "$prefix" -name libswctl.so)")
export PKG_CONFIG_PATH=$libdir/pkgconfig
flags=$(pkg-config --cflags --libs swctl swctl-vchip)
mkdir "$work/pkgconfig"
# The flags are words.
# shellcheck disable=SC2086
"$cc" -std=c99 -Wall -Wextra -Werror "$source_dir/examples/port_status.c" \
  -o "$work/pkgconfig/port_status" $flags -Wl,-rpath,"$libdir"

# The program that the README shows.
sed -n '/^```c$/,/^```$/p' "$source_dir/README.md" | sed '/^```/d' >"$work/readme.c"
# shellcheck disable=SC2086
"$cc" -std=c99 -Wall -Wextra -Werror "$work/readme.c" -o "$work/readme" $flags \
  -Wl,-rpath,"$libdir"
said=$("${emulator[@]}" "$work/readme")
[ "$said" = "interface 3 is down" ] || { echo "consumer: the README's program said: $said"; exit 1; }

toolchain=()
if [ ${#emulator[@]} -gt 0 ]; then
  toolchain=(--toolchain "$source_dir/cmake/mips-linux-gnu.cmake")
fi
cmake -S "$source_dir/examples" -B "$work/cmake" -Dswctl_DIR="$libdir/cmake/swctl" \
  "${toolchain[@]}" >"$work/configure.log"
cmake --build "$work/cmake" >"$work/build.log"

for program in "$work/pkgconfig/port_status" "$work/cmake/port_status"; do
  lines=$("${emulator[@]}" "$program" 3 | grep -c '^interface ')
  [ "$lines" -eq 26 ] || { echo "consumer: $program printed $lines lines"; exit 1; }
done
"${emulator[@]}" "$prefix/bin/swctl" port show 3 >"$work/shell.log"
[ -s "$work/shell.log" ]
for program in swctl vchipctl swctl-replay swctl-faults; do
  [ -s "$prefix/share/bash-completion/completions/$program" ]
  grep -q "^complete -c $program " "$prefix/share/fish/vendor_completions.d/$program.fish"
  grep -q "^#compdef.* $program\b" "$prefix"/share/zsh/site-functions/_*
done
[ -s "$prefix/share/swctl/swctl.schema.json" ]
python3 "$source_dir/tests/checks/links.py" "$prefix"
echo "consumer: built with pkg-config and with CMake, 26 interfaces each; installed shell runs"
