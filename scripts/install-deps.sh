#!/usr/bin/env bash
# Installs the Debian packages the build needs, and only those that are missing.
set -euo pipefail

packages=(cmake g++ make libgtest-dev libbenchmark-dev nlohmann-json3-dev libcli11-dev libfmt-dev
          python3 python3-jsonschema)
# `install-deps.sh fuzz`: also clang and the libFuzzer runtime, for `make fuzz`.
if [ "${1:-}" = "fuzz" ]; then
  packages+=(clang libclang-rt-14-dev)
fi

missing=()
for p in "${packages[@]}"; do
  if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed"; then
    missing+=("$p")
  fi
done

if [ ${#missing[@]} -eq 0 ]; then
  exit 0
fi

echo "Installing missing packages: ${missing[*]}"
sudo=""
if [ "$(id -u)" -ne 0 ]; then
  sudo="sudo"
fi
export DEBIAN_FRONTEND=noninteractive
$sudo apt-get update -qq
$sudo apt-get install -y -qq --no-install-recommends "${missing[@]}"
