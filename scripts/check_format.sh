#!/bin/bash
# Every source of ours is laid out as .clang-format says.
set -euo pipefail
cd "$(dirname "$0")/.."
git ls-files -co --exclude-standard -z -- '*.h' '*.cpp' | xargs -0 -P "$(nproc)" -n 20 clang-format-14 --dry-run -Werror
echo "format: all files are laid out alike"
