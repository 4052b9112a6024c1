#!/usr/bin/env bash
# Builds the fuzz targets and runs each of them for QUARDELE_FUZZ_SECONDS (120). What is found is left in
# build/fuzz/findings; what was learnt stays in build/fuzz/inputs for the next run.
set -euo pipefail
cd "$(dirname "$0")/.."
seconds=${QUARDELE_FUZZ_SECONDS:-120}
inputs=$PWD/build/fuzz/inputs
findings=$PWD/build/fuzz/findings

cmake --preset fuzz >/dev/null
cmake --build --preset fuzz
mkdir -p "$findings"
failed=()
for program in build/fuzz/bin/fuzz_*; do
    target=$(basename "$program")
    mkdir -p "$inputs/$target"
    options=()
    case "$target" in
        fuzz_sql_*) options=(-dict=tests/fuzz/sql.dict) ;;
    esac
    echo "== $target, $seconds s"
    if ! "$program" "${options[@]}" -max_total_time="$seconds" -timeout=20 -rss_limit_mb=2048 -verbosity=0 -print_final_stats=1 \
        -artifact_prefix="$findings/$target-" "$inputs/$target"; then
        failed+=("$target")
    fi
done
if [ "${#failed[@]}" -gt 0 ]; then
    echo "Trouvailles de ${failed[*]} dans $findings"
    exit 1
fi
