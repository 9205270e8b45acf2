#!/usr/bin/env bash
# Sets everything up, builds, and evaluates the bundled demo sounding into a readable table.
set -euo pipefail
cd "$(dirname "$0")/.."

bash scripts/setup.sh
cmake -S . -B build -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
cmake --build build -j "$(nproc)" --target koru
./build/app/koru/koru --root demo site list
./build/app/koru/koru --root demo vertical list SITE_1
./build/app/koru/koru --root demo vertical eval SITE_1 VERT_1 --table
