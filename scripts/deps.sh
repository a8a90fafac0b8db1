#!/usr/bin/env bash
# Installs the Debian packages the build needs, when they are missing.
set -euo pipefail
packages=(cmake make g++ pkg-config libgtest-dev libgmock-dev libbenchmark-dev nlohmann-json3-dev
    libcli11-dev libcairo2-dev)
# Clang builds the project too, and its runtime libraries carry libFuzzer (scripts/fuzz.sh).
packages+=(clang clang-tidy libclang-rt-dev)
# gerbv judges the Gerber films' pictures (tests/kernel/gerber-vs-gerbv.sh, bench/gerber-vs-gerbv.sh).
packages+=(gerbv)
missing=()
for p in "${packages[@]}"; do
    dpkg -s "$p" >/dev/null 2>&1 || missing+=("$p")
done
if [ ${#missing[@]} -gt 0 ]; then
    echo "installing: ${missing[*]}"
    sudo_cmd=""
    [ "$(id -u)" -ne 0 ] && sudo_cmd="sudo"
    $sudo_cmd apt-get update -qq
    DEBIAN_FRONTEND=noninteractive $sudo_cmd apt-get install -y -qq "${missing[@]}"
fi
