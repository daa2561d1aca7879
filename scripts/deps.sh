#!/usr/bin/env bash
# Installs the Debian packages that Sorvane needs and that are missing.
set -euo pipefail

PACCHETTI=(
    build-essential cmake pkg-config
    qt6-base-dev qt6-base-dev-tools libqt6sql6-sqlite
    libgl-dev
    libkainjow-mustache-dev
    libgtest-dev libbenchmark-dev
    # The report templates name Arial; Liberation Sans is its metric twin, so
    # a page holds what it holds on the office's machines. DejaVu is the
    # desktop's own family, the second one the page counts are proven with.
    fonts-liberation2 fonts-dejavu-core fontconfig
    # Qt's own Italian texts for the standard dialogs (print, file, preview).
    qt6-translations-l10n
    # pdftotext, with which the tests read the printed pages back.
    poppler-utils
    # sorvane-importa reads the legacy Access files with mdbtools' library;
    # its tests compare what it reads with mdb-export's output.
    mdbtools-dev mdbtools
    # The benches measure the lists and exports against the sqlite3 tool.
    sqlite3
    # The server store: Qt's PostgreSQL driver, and the server itself (with
    # citext) for the private cluster the tests and benches start.
    libqt6sql6-psql postgresql postgresql-contrib
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
