#!/usr/bin/env bash
# Installs what the benchmarks need beyond the build: Google Benchmark and the word
# lists the string benchmarks walk (German and American English, /usr/share/dict), and
# ICU, the peer of the string benchmark.
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
bash "$root/tools/install-deps.sh"
missing=()
for pkg in wngerman wamerican libicu-dev; do
    dpkg-query -W -f='${Status}' "$pkg" 2>/dev/null | grep -q "install ok installed" || missing+=("$pkg")
done
if ((${#missing[@]})); then
    sudo=""
    [[ $(id -u) -eq 0 ]] || sudo=sudo
    $sudo env DEBIAN_FRONTEND=noninteractive apt-get update
    $sudo env DEBIAN_FRONTEND=noninteractive apt-get install -y --no-install-recommends "${missing[@]}"
fi
