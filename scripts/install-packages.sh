#!/usr/bin/env bash
# Installs the Debian packages that are missing, without asking; as root or through sudo.
#   scripts/install-packages.sh build   what building and running needs
#   scripts/install-packages.sh test    the same, and what the tests compare with
set -euo pipefail

build=(
    build-essential cmake ninja-build ccache
    qt6-base-dev qt6-base-dev-tools qt6-tools-dev-tools qt6-svg-dev qt6-translations-l10n
    fonts-noto-core
    # LibreOffice's programming interface for the bridge to Writer, and Writer itself for the letters
    libreoffice-dev libreoffice-writer
)
test=(
    libgtest-dev libgmock-dev
    mdbtools unzip poppler-utils python3
    xvfb xauth xdotool
)

wanted=("${build[@]}")
if [ "${1:-build}" = test ]; then
    wanted+=("${test[@]}")
fi

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
