#!/bin/bash
# Installs what a build needs on Debian 12, and only what is missing. Needs root, or sudo. Further packages can be named.
set -euo pipefail
packages=(build-essential g++-12 clang-14 libclang-rt-14-dev clang-format-14 cmake ninja-build pkg-config binutils git python3
    rapidjson-dev libcli11-dev libexpat1-dev libgsf-1-dev zlib1g-dev libgtest-dev libgmock-dev librapidcheck-dev libbenchmark-dev tzdata
    libpango1.0-dev libcairo2-dev libcpp-httplib-dev fonts-dejavu-core fonts-droid-fallback poppler-utils qpdf mandoc zsh fish valgrind time
    abigail-tools "$@")

missing=()
for package in "${packages[@]}"; do
    dpkg-query -W -f '${Status}' "$package" 2>/dev/null | grep -q 'ok installed' || missing+=("$package")
done
[ ${#missing[@]} -gt 0 ] || exit 0

as_root=()
if [ "$(id -u)" -ne 0 ]; then
    command -v sudo >/dev/null || { echo "setup: missing ${missing[*]}; run me as root" >&2; exit 1; }
    as_root=(sudo)
fi
echo "Installing ${missing[*]}"
export DEBIAN_FRONTEND=noninteractive
"${as_root[@]}" apt-get update -qq
"${as_root[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
