#!/usr/bin/env bash
# Line and branch coverage of the library by the unit tests: a Debug build with
# --coverage in its own directory, the unit tests (label unit), and the gcovr summary
# over src/ and lmcore/ without the generated tables.
#
#   tools/coverage.sh                  build in build-coverage/
#   tools/coverage.sh --build-dir DIR  any other build directory
#   tools/coverage.sh --html FILE      also write a detailed HTML report
#
# gcovr (Debian package gcovr) is installed here when it is missing, so the plain
# test command does not need it. Branches that only the compiler made (exception
# paths, unreachable ones) are left out of the count.
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
build_dir="$root/build-coverage"
html=""
while (($#)); do
    case "$1" in
        --build-dir) build_dir="$2"; shift ;;
        --build-dir=*) build_dir="${1#*=}" ;;
        --html) html="$2"; shift ;;
        --html=*) html="${1#*=}" ;;
        -h|--help) sed -n '2,12p' "${BASH_SOURCE[0]}" | sed 's/^# \{0,1\}//'; exit 0 ;;
        *) echo "coverage.sh: unknown argument '$1'" >&2; exit 2 ;;
    esac
    shift
done
[[ $build_dir == /* ]] || build_dir="$root/$build_dir"

if [[ ${LUMOTYPES_SKIP_DEPS:-0} != 1 ]]; then
    bash "$root/tools/install-deps.sh"
fi
if ! command -v gcovr >/dev/null 2>&1; then
    as_root=()
    if [[ $(id -u) -ne 0 ]]; then
        command -v sudo >/dev/null 2>&1 || { echo "coverage.sh: install gcovr (Debian package gcovr)" >&2; exit 1; }
        as_root=(sudo)
    fi
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get update -q
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -q --no-install-recommends gcovr
fi

cmake -S "$root" -B "$build_dir" -G Ninja -DCMAKE_BUILD_TYPE=Debug -DLUMOTYPES_BUILD_TESTS=ON \
    -DLUMOTYPES_BUILD_BENCH=OFF -DLUMOTYPES_BUILD_EXAMPLES=OFF -DLUMOTYPES_SANITIZE=OFF \
    -DCMAKE_CXX_FLAGS="--coverage" -DCMAKE_EXE_LINKER_FLAGS="--coverage" -DCMAKE_SHARED_LINKER_FLAGS="--coverage"
cmake --build "$build_dir"
# Counters of an earlier run would add to this one.
find "$build_dir" -name '*.gcda' -delete
ctest --test-dir "$build_dir" -L unit --output-on-failure -j "${LUMOTYPES_TEST_JOBS:-2}" >"$build_dir/coverage-ctest.log" ||
    { tail -n 30 "$build_dir/coverage-ctest.log"; echo "coverage.sh: the unit tests failed" >&2; exit 1; }

report=(--root "$root" --object-directory "$build_dir" --filter "$root/src/" --filter "$root/lmcore/"
        --exclude '.*/generated/.*' --exclude-unreachable-branches --exclude-throw-branches)
[[ -n $html ]] && report+=(--html-details "$html")
gcovr "${report[@]}" --print-summary --txt "$build_dir/coverage.txt" | tail -n 3
echo "coverage.sh: per-file table in $build_dir/coverage.txt"
