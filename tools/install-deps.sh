#!/usr/bin/env bash
# Installs what building and testing lumotypes needs on Debian 12: compilers, CMake and
# Ninja, GoogleTest, Google Benchmark, pkg-config, and the Unicode Character Database
# with python3 for the test that checks the generated character tables.
# When everything is already there it touches neither apt nor the network, so it is
# cheap to call before every build and works offline.
set -euo pipefail

# Debian package, and the command that stands for it when one does ("-" when none).
# A command found on PATH counts as installed even when dpkg does not know it, so a
# hand-installed CMake or Ninja is used as it is.
deps=(
    "cmake cmake"
    "ninja-build ninja"
    "g++ g++"
    "clang clang++"
    "pkg-config pkg-config"
    "python3 python3"
    "googletest -"
    "libgtest-dev -"
    "libbenchmark-dev -"
    "unicode-data -"
)

installed() {
    local status
    status=$(dpkg-query -W -f='${Status}' "$1" 2>/dev/null) || return 1
    [[ $status == "install ok installed" ]]
}

missing=()
for entry in "${deps[@]}"; do
    read -r pkg cmd <<<"$entry"
    if [[ $cmd != - ]] && command -v "$cmd" >/dev/null 2>&1; then
        continue
    fi
    if command -v dpkg-query >/dev/null 2>&1 && installed "$pkg"; then
        continue
    fi
    missing+=("$pkg")
done

if ((${#missing[@]} == 0)); then
    echo "install-deps: everything is present"
    exit 0
fi

echo "install-deps: installing ${missing[*]}"
if ! command -v apt-get >/dev/null 2>&1; then
    echo "install-deps: apt-get not found; install these by hand: ${missing[*]}" >&2
    exit 1
fi

as_root=()
if [[ $(id -u) -ne 0 ]]; then
    if command -v sudo >/dev/null 2>&1; then
        as_root=(sudo)
    else
        echo "install-deps: not root and no sudo; install these by hand: ${missing[*]}" >&2
        exit 1
    fi
fi

export DEBIAN_FRONTEND=noninteractive
"${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get update -q
"${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -q --no-install-recommends "${missing[@]}"
