#!/usr/bin/env bash
# Runs what the documentation shows: docs.sh ZY FILE... Each block of the language that is followed
# by a block of text must print just that, and nothing on standard error.
zy=$(realpath "$1")
shift
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
count=0 failed=0
for page in "$@"; do
    rm -f "$work"/*
    awk -v work="$work" '
        /^```c$/ { n++; file = work "/" n ".zy"; next }
        /^```text$/ { file = work "/" n ".expected"; next }
        /^```/ { file = ""; next }
        file != "" { print > file }' "$page"
    for expected in "$work"/*.expected; do
        [ -e "$expected" ] || { echo "$page: nothing to run"; failed=1; continue; }
        count=$((count + 1))
        if ! timeout 5 "$zy" "${expected%.expected}.zy" 2>&1 </dev/null | diff "$expected" -; then
            echo "$page: block $(basename "$expected" .expected) (expected <, got >)"
            failed=1
        fi
    done
done
echo "$count blocks"
exit $failed
