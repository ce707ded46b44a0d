#!/usr/bin/env bash
# Speed of lexing a file of some 20 MB beside two C compilers on the same text, in one run:
# bench/lexing.sh BUILD_FOLDER
# The text is those scripts of the benchmarks that are C as well, over and over, each inside a
# function so that no name is defined twice. gcc -fsyntax-only also parses and tcc -E also writes
# its output: the ratios, not the figures, compare two versions of the lexer.
set -eu
build=$(cd "$1" && pwd)
scripts=$(cd "$(dirname "$0")" && cd "${ZY_BENCH_SCRIPTS:-../../../shared/bench}" && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work"

number=0
for script in "$scripts"/*/*.zy; do
    number=$((number + 1))
    { echo "void script$number(void) {" && grep -v '^#' "$script" && echo "}"; } >try.c
    gcc -fsyntax-only -w try.c 2>/dev/null && cat try.c >>block.c
done
[ -s block.c ] || { echo "lexing: skipped, no scripts in $scripts"; exit 0; }
awk -v copies=$((20000000 / $(stat -c %s block.c))) '
    { text = text $0 "\n" }
    END { for (i = 0; i < copies; i++) printf "void copy%d(void) {\n%s}\n", i, text }' \
    block.c >big.c
bytes=$(stat -c %s big.c)

# best COMMAND...: seconds of the fastest of five
best() {
    for _ in 1 2 3 4 5; do
        local start
        start=$(date +%s%N)
        "$@" >/dev/null
        echo $(($(date +%s%N) - start))
    done | sort -n | awk 'NR == 1 { print $1 / 1e9 }'
}
ours=$("$build/lexing" big.c 5 | cut -d' ' -f1)
gcc=$(best gcc -fsyntax-only -w big.c)
tcc=$(command -v tcc >/dev/null && best tcc -E big.c || echo 0)
awk -v bytes="$bytes" -v ours="$ours" -v gcc="$gcc" -v tcc="$tcc" 'BEGIN {
    printf "lexing %.1f MB: %.1f MB/s", bytes / 1e6, bytes / 1e6 / ours
    printf ", gcc -fsyntax-only %.1f MB/s (%.2f times)", bytes / 1e6 / gcc, gcc / ours
    if (tcc > 0)
        printf ", tcc -E %.1f MB/s (%.2f times)", bytes / 1e6 / tcc, tcc / ours
    print ""
}'
