#!/usr/bin/env bash
# Checks the order of the rooms: rooms.sh SOURCE_FOLDER
# A source includes headers of its own room and of lower ones, and record and open headers of any
# room. Only
# platform/ includes headers of the operating system.
set -eu
cd "$1"
mapfile -t rooms < <(grep -oE '^[a-z]+' docs/rooms.txt)
declare -A height
for i in "${!rooms[@]}"; do height[${rooms[$i]}]=$i; done

status=0
complain() { echo "$*"; status=1; }
system='unistd|dlfcn|fcntl|termios|pwd|dirent|sys/[a-z]+|pthread|sched|spawn|netdb|arpa/.*|netinet/.*'
for room in "${rooms[@]}"; do
    [ -d "$room" ] || { complain "docs/rooms.txt names $room, which is no folder"; continue; }
    while IFS=: read -r file line; do
        target=${line#*\"} target=${target%%\"*}
        other=${target%%/*}
        [ -n "${height[$other]:-}" ] || continue  # the public header
        if [ "${height[$other]}" -gt "${height[$room]}" ] &&
            ! head -1 "$target" | grep -qE '(record|open) header'; then
            complain "$file includes $target, a header of an upper room"
        fi
    done < <(grep -rE '^#include "' "$room" --include='*.cpp' --include='*.h')
    if [ "$room" != platform ]; then
        found=$(grep -rnE "^#include <($system)(\.h)?>" "$room" --include='*.cpp' --include='*.h' || true)
        [ -z "$found" ] || complain "system headers outside platform/: $found"
    fi
done
exit $status
