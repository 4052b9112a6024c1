#!/usr/bin/env bash
# Runs a Windows program under wine, with a prefix of its own in the build tree:
#   scripts/wine.sh PROGRAM ARGUMENT...
#   scripts/wine.sh --server OPTION...      speaks to the prefix's server (-p: stay, -k: end)
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
export WINEPREFIX=${QUARDELE_WINE_PREFIX:-$root/build/wine-prefix}
# No questions about Mono and Gecko, no menu entries, no talk about what wine lacks.
export WINEDLLOVERRIDES='mscoree,mshtml=;winemenubuilder.exe=d' WINEDEBUG=-all
unset DISPLAY
if [ "${1:-}" = --server ]; then
    shift
    exec wineserver "$@"
fi

# GoogleTest makes the first file when it begins and deletes it at its end: a program that wine has lost in between may
# well end with 0. On a busy machine wine may fail to start a program, and says so itself. Then it is tried again, and
# only then: a program that has begun is never run twice.
notes=$(mktemp -d)
trap 'rm -rf "$notes"' EXIT
export TEST_PREMATURE_EXIT_FILE=$notes/unfinished
for attempt in 1 2 3; do
    status=0
    wine "$@" 2>"$notes/errors" || status=$?
    cat "$notes/errors" >&2
    if [ -e "$TEST_PREMATURE_EXIT_FILE" ]; then
        echo "$1 n'est pas allé jusqu'au bout." >&2
        exit 1
    fi
    if [ "$status" -eq 0 ] || ! grep -qE '^wine: (could not|cannot|failed to) ' "$notes/errors"; then
        exit "$status"
    fi
    echo "wine n'a pas lancé $1 (essai $attempt)." >&2
    sleep 1
done
exit "$status"
