#!/usr/bin/env bash
# Configures and builds into build/ (or $SORVANE_BUILD).
set -euo pipefail
cd "$(dirname "$0")/.."
BUILD="${SORVANE_BUILD:-build}"
cmake -S . -B "$BUILD" -DCMAKE_BUILD_TYPE=RelWithDebInfo "$@" >/dev/null
cmake --build "$BUILD" -j"$(nproc)"
