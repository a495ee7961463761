#!/bin/sh
# Builds by g++ and clang++, each without optimisation and fully optimised. The digests over the results of every
# numeric operation must be equal; the builds that are named (g++-O0, g++-O3, clang++-O0, clang++-O3, all) must pass
# the whole suite besides. All that is shipped is built by clang++ in any case.
#
#     tools/checks/check_compilers.sh [build ...]
set -eu

suites=" $* "
cd "$(dirname "$0")/../.."
jobs=${JOBS:-$(nproc)}
digests=build/compilers/digests
mkdir -p "$digests"
rm -f "$digests"/*

configure() { # folder, compiler, level
    type=Release
    [ "$3" = O0 ] && type=Debug
    cmake -S . -B "$1" -DCMAKE_CXX_COMPILER="$2" -DCMAKE_BUILD_TYPE=$type \
        -DCMAKE_CXX_FLAGS_DEBUG=-O0 -DCMAKE_CXX_FLAGS_RELEASE="-O3 -DNDEBUG" >"$1.log"
}

for compiler in g++ clang++; do
    for level in O0 O3; do
        folder=build/compilers/$compiler-$level
        configure "$folder" $compiler $level
        echo "$compiler -$level"
        case "$suites" in
        *" $compiler-$level "* | *" all "*)
            cmake --build "$folder" --parallel "$jobs" >>"$folder.log"
            ctest --test-dir "$folder" --parallel "$jobs" --output-on-failure >"$folder.tests.log" || {
                cat "$folder.tests.log"
                exit 1
            }
            tail -n 5 "$folder.tests.log"
            ;;
        *)
            targets=qxcms_digest
            [ $compiler-$level = clang++-O0 ] && targets="qxcms_digest qxcms_qc qxcms_command"
            cmake --build "$folder" --parallel "$jobs" --target $targets >>"$folder.log"
            ;;
        esac
        "$folder/bin/qxcms_digest" >"$digests/$compiler-$level"
    done
done

for other in "$digests"/*; do
    diff "$digests/g++-O3" "$other" || {
        echo "The digests of $other are not those of g++ -O3: results depend on the build." >&2
        exit 1
    }
done
cat "$digests/g++-O3"
echo "The digests of g++ and clang++, -O0 and -O3, are equal."
