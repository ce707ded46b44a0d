#!/usr/bin/env bash
# Runs the scripts of a topic and compares what a user would see: run.sh ZY FOLDER
# Beside NAME.zy stand NAME.out (standard output, byte for byte), NAME.err (standard error, empty if
# absent), NAME.rc (exit status, 0 if absent). A script runs for at most some seconds.
zy=$(realpath "$1")
cd "$2" || exit 2
[ -d home ] && export ZYHOME=$PWD/home # a topic may need a start-up file of its own
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
passed=0 failed=0
for script in *.zy; do
    name=${script%.zy}
    timeout "${ZY_SECONDS:-5}" "$zy" "$script" >"$work/out" 2>"$work/err" </dev/null
    echo $? >"$work/rc"
    # A block that is too large is refused, as a system does; the sanitizer remarks on it.
    sed -i '/AddressSanitizer failed to allocate/d' "$work/err"
    for part in out err rc; do
        [ -e "$name.$part" ] && cp "$name.$part" "$work/expected" || : >"$work/expected"
        [ $part = rc ] && [ ! -s "$work/expected" ] && echo 0 >"$work/expected"
        if ! cmp -s "$work/expected" "$work/$part"; then
            echo "$2/$script: .$part differs (expected <, got >)"
            diff "$work/expected" "$work/$part" | head -10
            failed=$((failed + 1))
            continue 2
        fi
    done
    passed=$((passed + 1))
done
echo "$passed passed, $failed failed"
[ $failed -eq 0 ] && [ $passed -gt 0 ]
