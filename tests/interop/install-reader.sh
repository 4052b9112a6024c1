#!/usr/bin/env bash
# Installs the independent reader, in the version of the lock file, beside the copy of dump.mjs in a build tree.
#   tests/interop/install-reader.sh build/dev/tests/interop
# Where it cannot be had, says so and is content: the tests that need it are then reported as skipped.
set -euo pipefail
source=$(cd "$(dirname "$0")" && pwd)
target=$1

if cmp -s "$source/package-lock.json" "$target/package-lock.json" && [ -d "$target/node_modules/mdb-reader" ]; then
    exit 0
fi
mkdir -p "$target"
cp "$source/package.json" "$source/package-lock.json" "$target/"
if ! (cd "$target" && npm ci --ignore-scripts --no-audit --no-fund --loglevel=error >/dev/null); then
    echo "Le paquet npm mdb-reader n'a pas pu être installé : les comparaisons avec lui seront sautées."
    rm -f "$target/package-lock.json"
fi
