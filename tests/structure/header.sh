#!/usr/bin/env bash
# Checks that the public header is the one that the lists give: header.sh MAKE_HEADER SOURCE_FOLDER
set -eu
made=$(mktemp)
trap 'rm -f "$made"' EXIT
"$1" "$2/embed/embedzy.h.in" "$made"
diff "$2/extern/include/embedzy.h" "$made" || { echo "run: make header"; exit 1; }
