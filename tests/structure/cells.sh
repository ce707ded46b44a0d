#!/usr/bin/env bash
# Checks where the state of an instance lives: cells.sh OBJECT_FILE...
# A writable variable of the library stands in a source named ...State.cpp, so that a reader finds a
# room's cells in one place and the end of an instance can be checked against it.
set -eu
[ $# -gt 10 ] || { echo "no objects given"; exit 1; }
status=0
for object in "$@"; do
    case $object in *State.cpp.o) continue ;; esac
    # Constant tables of pointers are relocated at load and read-only afterwards.
    found=$(nm -C -f sysv "$object" | grep -E '^[^|]*\|[^|]*\|[^|]*\| *(OBJECT|COMMON|TLS)' |
        grep -E '\| *(\.bss|\.data|\.tbss|\.tdata|COM)[^|]*$' | grep -v '\.data\.rel\.ro' |
        cut -d'|' -f1 | grep -v 'DW\.ref\.' || true)
    if [ -n "$found" ]; then
        echo "$object has writable variables:"
        echo "$found"
        status=1
    fi
done
exit $status
