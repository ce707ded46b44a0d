#!/usr/bin/env bash
# Installs the build into a prefix, then builds a host from it in the two ways that users have, and
# runs it: install.sh BUILD_FOLDER COMPILER_FLAGS
set -eu
build=$1 flags=$2
here=$(cd "$(dirname "$0")" && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

cmake --install "$build" --prefix "$work/zy" >/dev/null
expected="Professional 15421 "

export PKG_CONFIG_PATH="$work/zy/lib/pkgconfig"
# shellcheck disable=SC2046
cc $flags "$here/host.c" -o "$work/host" $(pkg-config --cflags --libs embedzy)
got=$("$work/host" "$(pkg-config --variable=zyhome embedzy)")
[ "$got" = "$expected" ] || { echo "pkg-config: got '$got'"; exit 1; }

cmake -S "$here" -B "$work/outside" -DCMAKE_PREFIX_PATH="$work/zy" -DCMAKE_C_FLAGS="$flags" >/dev/null
cmake --build "$work/outside" >/dev/null
got=$("$work/outside/host" "$(cat "$work/outside/home")")
[ "$got" = "$expected" ] || { echo "CMake package: got '$got'"; exit 1; }

for copy in "$work"/zy/toolkit/embedzy/extern/lib/zymt*.dl; do
    cmp "$copy" "$work/zy/toolkit/embedzy/extern/lib/libembedzy.so"
    [ "$(stat -c %h "$copy")" = 1 ] || { echo "$copy is a link"; exit 1; }
done
"$work/zy/bin/zy" --version >/dev/null
"$work/zy/bin/zys" --version >/dev/null
