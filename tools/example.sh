#!/usr/bin/env bash
# Builds the example program in build/ (or LUMOTYPES_BUILD_DIR) and runs it.
# Arguments are handed to the program. LUMOTYPES_SKIP_DEPS=1 skips tools/install-deps.sh.
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
build_dir="${LUMOTYPES_BUILD_DIR:-build}"
[[ $build_dir == /* ]] || build_dir="$root/$build_dir"

if [[ ${LUMOTYPES_SKIP_DEPS:-0} != 1 ]]; then
    bash "$root/tools/install-deps.sh"
fi

if [[ -f $build_dir/CMakeCache.txt ]] && ! grep -q '^CMAKE_GENERATOR:INTERNAL=Ninja$' "$build_dir/CMakeCache.txt"; then
    echo "example.sh: $build_dir was configured with another generator; remove it first" >&2
    exit 1
fi

# Only the build type is set here, so that a directory that tools/test.sh also uses
# keeps its other settings and is not rebuilt from scratch.
cmake -S "$root" -B "$build_dir" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DLUMOTYPES_BUILD_EXAMPLES=ON
cmake --build "$build_dir" --target lmexample
exec "$build_dir/examples/lmexample" "$@"
