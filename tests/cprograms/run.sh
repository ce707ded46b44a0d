#!/usr/bin/env bash
# Runs plain C programs as scripts and compares them with what a C compiler makes of them:
# run.sh ZY FOLDER [NAME...]
# Both get NAME.in, if it is there, as their input, and must print the same, and both succeed or both
# fail: a script's status is 0 or 255.
zy=$(realpath "$1")
cd "$2" || exit 2
shift 2
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
passed=0 failed=0
[ $# -gt 0 ] || set -- *.c
for source in "$@"; do
    name=${source%.c}
    input=/dev/null
    [ -e "$name.in" ] && input=$name.in
    if ! ${CC:-cc} -std=gnu11 -w -o "$work/program" "$name.c" -lm; then
        echo "$name.c: the compiler refuses it"
        failed=$((failed + 1))
        continue
    fi
    timeout 10 "$work/program" <"$input" >"$work/expected"
    echo "failed: $(($? != 0))" >>"$work/expected"
    timeout "${ZY_SECONDS:-10}" "$zy" "$name.c" <"$input" >"$work/out" 2>"$work/err"
    echo "failed: $(($? != 0))" >>"$work/out"
    if cmp -s "$work/expected" "$work/out" && [ ! -s "$work/err" ]; then
        passed=$((passed + 1))
    else
        echo "$name.c differs (compiler <, script >)"
        diff "$work/expected" "$work/out" | head -10
        head -5 "$work/err"
        failed=$((failed + 1))
    fi
done
echo "$passed passed, $failed failed"
[ $failed -eq 0 ] && [ $passed -gt 0 ]
