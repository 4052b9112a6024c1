#!/usr/bin/env bash
# Installs the Debian packages that are missing, without asking; as root or through sudo.
#   scripts/install-packages.sh build   what building and running needs
#   scripts/install-packages.sh test    the same, and what the tests compare with
#   scripts/install-packages.sh bench   the same as test: the benchmarks compare with the same programs
#   scripts/install-packages.sh fuzz    what building and running the fuzz targets needs
#   scripts/install-packages.sh windows what building the data engine for Windows and running it needs
set -euo pipefail

tools=(build-essential cmake ninja-build ccache)
build=(
    qt6-base-dev qt6-base-dev-tools qt6-tools-dev-tools qt6-svg-dev qt6-translations-l10n
    fonts-noto-core
    # LibreOffice's programming interface for the bridge to Writer, and Writer itself for the letters
    libreoffice-dev libreoffice-writer
)
test=(
    libgtest-dev libgmock-dev libsqlite3-dev clang-format groff
    mdbtools unzip poppler-utils libxml2-utils python3
    # readers of the workbooks that we write
    python3-xlrd python3-xlwt libreoffice-calc libfreexl-dev catdoc gnumeric
    xvfb xauth xdotool
)
# Node and its packages may come from elsewhere than Debian.
command -v node >/dev/null || test+=(nodejs)
command -v npm >/dev/null || test+=(npm)
fuzz=(clang libclang-rt-14-dev libgtest-dev libgmock-dev)
# GoogleTest comes as sources, which the cross compiler makes a library of.
windows=(g++-mingw-w64-x86-64-posix googletest wine wine64)

case "${1:-build}" in
    build) wanted=("${tools[@]}" "${build[@]}") ;;
    test | bench) wanted=("${tools[@]}" "${build[@]}" "${test[@]}") ;;
    fuzz) wanted=("${tools[@]}" "${build[@]}" "${fuzz[@]}") ;;
    windows) wanted=("${tools[@]}" "${windows[@]}") ;;
    *)
        echo "Ensemble de paquets inconnu : $1" >&2
        exit 2
        ;;
esac

missing=()
for package in "${wanted[@]}"; do
    status=$(dpkg-query -W -f='${Status}' "$package" 2>/dev/null || true)
    case "$status" in
        *'ok installed') continue ;;
    esac
    # A machine without screens may have Writer without its windows; that serves as well.
    if [ "$package" = libreoffice-writer ] &&
        dpkg-query -W -f='${Status}' libreoffice-writer-nogui 2>/dev/null | grep -q 'ok installed'; then
        continue
    fi
    missing+=("$package")
done
if [ "${#missing[@]}" -eq 0 ]; then
    exit 0
fi

as_root=()
if [ "$(id -u)" -ne 0 ]; then
    as_root=(sudo)
fi
echo "Installation des paquets Debian manquants : ${missing[*]}"
export DEBIAN_FRONTEND=noninteractive
"${as_root[@]}" apt-get update -qq
"${as_root[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
