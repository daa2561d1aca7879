#!/usr/bin/env bash
# Installs the Debian packages that Sorvane needs and that are missing.
set -euo pipefail

PACCHETTI=(
    build-essential cmake pkg-config
    qt6-base-dev qt6-base-dev-tools libqt6sql6-sqlite
    libgl-dev fonts-dejavu-core
    libkainjow-mustache-dev
    libgtest-dev libbenchmark-dev
    poppler-utils
)

mancanti=()
for p in "${PACCHETTI[@]}"; do
    if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed"; then
        mancanti+=("$p")
    fi
done

if [ ${#mancanti[@]} -gt 0 ]; then
    echo "Installing: ${mancanti[*]}"
    SUDO=""
    if [ "$(id -u)" -ne 0 ]; then SUDO="sudo"; fi
    $SUDO apt-get update -qq
    DEBIAN_FRONTEND=noninteractive $SUDO apt-get install -y -qq --no-install-recommends "${mancanti[@]}"
fi
