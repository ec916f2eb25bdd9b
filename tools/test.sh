#!/usr/bin/env bash
# Builds everything (library, tests, benchmarks, example) with warnings as errors and
# runs the whole test suite.
#
#   tools/test.sh                     GCC build in build/
#   tools/test.sh --sanitize          ASan+UBSan build in build-asan/
#   tools/test.sh --compiler clang    Clang build in build-clang/ (build-clang-asan/ with --sanitize)
#   tools/test.sh --build-dir DIR     any other build directory (or LUMOTYPES_BUILD_DIR=DIR)
#   tools/test.sh -- -L unit          arguments after -- go to ctest
#
# LUMOTYPES_SKIP_DEPS=1 skips tools/install-deps.sh; LUMOTYPES_TEST_JOBS sets ctest's
# parallelism (2). The ctest output is kept in DIR/ctest.log.
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)

usage() {
    sed -n '2,14p' "${BASH_SOURCE[0]}" | sed 's/^# \{0,1\}//'
}

sanitize=0
compiler=""
build_dir="${LUMOTYPES_BUILD_DIR:-}"
ctest_args=()
while (($#)); do
    case "$1" in
        --sanitize) sanitize=1 ;;
        --compiler)
            [[ $# -ge 2 ]] || { echo "test.sh: --compiler needs gcc or clang" >&2; exit 2; }
            compiler="$2"
            shift ;;
        --compiler=*) compiler="${1#*=}" ;;
        --build-dir)
            [[ $# -ge 2 ]] || { echo "test.sh: --build-dir needs a directory" >&2; exit 2; }
            build_dir="$2"
            shift ;;
        --build-dir=*) build_dir="${1#*=}" ;;
        -h|--help) usage; exit 0 ;;
        --) shift; ctest_args=("$@"); break ;;
        *) echo "test.sh: unknown argument '$1'" >&2; usage >&2; exit 2 ;;
    esac
    shift
done

case "$compiler" in
    "") cxx="" ;;
    gcc|g++) cxx=g++ ;;
    clang|clang++) cxx=clang++ ;;
    *) echo "test.sh: unknown compiler '$compiler' (gcc or clang)" >&2; exit 2 ;;
esac

if [[ -z $build_dir ]]; then
    build_dir=build
    [[ $cxx == clang++ ]] && build_dir+=-clang
    ((sanitize)) && build_dir+=-asan
fi
# A relative directory is taken from the top of the source tree.
[[ $build_dir == /* ]] || build_dir="$root/$build_dir"

if [[ ${LUMOTYPES_SKIP_DEPS:-0} != 1 ]]; then
    bash "$root/tools/install-deps.sh"
fi

# A build directory made by another generator cannot be reused; say so instead of
# failing deep inside CMake.
if [[ -f $build_dir/CMakeCache.txt ]] && ! grep -q '^CMAKE_GENERATOR:INTERNAL=Ninja$' "$build_dir/CMakeCache.txt"; then
    echo "test.sh: $build_dir was configured with another generator; remove it first" >&2
    exit 1
fi

config=(
    -S "$root" -B "$build_dir" -G Ninja
    -DCMAKE_BUILD_TYPE="$( ((sanitize)) && echo Debug || echo RelWithDebInfo )"
    -DLUMOTYPES_WERROR=ON
    -DLUMOTYPES_SANITIZE="$( ((sanitize)) && echo ON || echo OFF )"
    -DLUMOTYPES_BUILD_TESTS=ON
    -DLUMOTYPES_BUILD_BENCH=ON
    -DLUMOTYPES_BUILD_EXAMPLES=ON
)
# The compiler is read from CXX when the build directory is first configured.
if [[ -n $cxx ]]; then
    CXX="$cxx" cmake "${config[@]}"
else
    cmake "${config[@]}"
fi
cmake --build "$build_dir"

if ((sanitize)); then
    # Stop at the first report, and count leaks as failures.
    export ASAN_OPTIONS="${ASAN_OPTIONS:+$ASAN_OPTIONS:}halt_on_error=1:abort_on_error=1:detect_leaks=1:strict_string_checks=1:detect_stack_use_after_return=1"
    export UBSAN_OPTIONS="${UBSAN_OPTIONS:+$UBSAN_OPTIONS:}halt_on_error=1:abort_on_error=1:print_stacktrace=1"
fi

ctest --test-dir "$build_dir" --output-on-failure --no-tests=error -j "${LUMOTYPES_TEST_JOBS:-2}" \
    "${ctest_args[@]}" 2>&1 | tee "$build_dir/ctest.log"
