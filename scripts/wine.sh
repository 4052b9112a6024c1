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
exec wine "$@"
