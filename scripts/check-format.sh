#!/usr/bin/env bash
# Checks the format of all C++ sources; with --fix, formats them. Says so and passes where clang-format is missing.
set -euo pipefail
cd "$(dirname "$0")/.."
if ! command -v clang-format >/dev/null; then
    echo "clang-format n'est pas installé : la mise en forme n'est pas vérifiée."
    exit 0
fi
mode=(--dry-run -Werror)
if [ "${1:-}" = --fix ]; then
    mode=(-i)
fi
git ls-files '*.cpp' '*.h' | xargs -r clang-format "${mode[@]}"
