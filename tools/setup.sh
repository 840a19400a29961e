#!/usr/bin/env bash
# Installs what building and running Tavix needs on a Debian or Ubuntu machine. Does nothing, and
# needs no rights, when everything is there. `tools/setup.sh tests` adds what the tests need.
set -euo pipefail

packages=(g++ cmake ninja-build qtbase5-dev fonts-wqy-zenhei fonts-dejavu-core)
if [ "${1:-}" = tests ]; then
    packages+=(libgtest-dev python3)
fi

missing=()
for package in "${packages[@]}"; do
    if ! dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q '^install ok installed'; then
        missing+=("$package")
    fi
done
[ ${#missing[@]} -eq 0 ] && exit 0

as_root=()
if [ "$(id -u)" -ne 0 ]; then
    command -v sudo >/dev/null || {
        echo "These packages are missing, and there is no sudo to install them: ${missing[*]}" >&2
        exit 1
    }
    as_root=(sudo)
fi
echo "Installing: ${missing[*]}"
"${as_root[@]}" apt-get update -qq
"${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends \
    "${missing[@]}" >/dev/null
