#!/usr/bin/env bash
# What the committed inputs of the fuzzers reach: lines and branches of the sources that read untrusted bytes.
#
#   tools/checks/fuzz_coverage.sh [CORPORA]     the folder of corpora; fuzz/corpus else
#
# Needs clang++, llvm-profdata and llvm-cov. COVERAGE_BUILD names the build folder (build/fuzz_coverage); the report
# with all lines stands there as report.txt.
set -euo pipefail
root=$(cd "$(dirname "$0")/../.." && pwd)
corpora=${1:-$root/fuzz/corpus}
build=${COVERAGE_BUILD:-$root/build/fuzz_coverage}

# Debian installs the tools with their version behind the name.
tool() { command -v "$1" || command -v "$1-14" || { echo "$1 is missing" >&2 && exit 1; }; }
profdata=$(tool llvm-profdata)
cov=$(tool llvm-cov)

cmake -S "$root" -B "$build" -DCMAKE_BUILD_TYPE=Debug -DCMAKE_CXX_COMPILER=clang++ \
    -DQXCMS_BUILD_COMMAND=OFF -DQXCMS_BUILD_TESTS=ON \
    -DCMAKE_CXX_FLAGS="-fprofile-instr-generate -fcoverage-mapping" >/dev/null

programs=()
for source in "$root"/fuzz/*_fuzzer.cpp; do
    programs+=("qxcms_corpus_$(basename "$source" _fuzzer.cpp)")
done
cmake --build "$build" --parallel "$(nproc)" --target "${programs[@]}" >/dev/null

rm -rf "$build/profiles"
objects=()
for program in "${programs[@]}"; do
    # %m tells the program from its shared library.
    LLVM_PROFILE_FILE=$build/profiles/$program-%m.profraw \
        "$build/bin/$program" "$corpora/${program#qxcms_corpus_}" >/dev/null
    objects+=(-object "$build/bin/$program")
done
"$profdata" merge -o "$build/profiles/all.profdata" "$build"/profiles/*.profraw

# The first program stands alone, what follows behind "-object" each. The platform layer is a library of its own.
objects=("${objects[@]:1}" -object "$build/lib/libqxcms_platform.so")

cd "$root"
sources=(base/*.h base/*.cpp cgats/*.cpp spectral/illuminant_file.cpp spectral/spectrum_encoding.cpp
    spectral/tspectrum.cpp support/stream_helpers.cpp support/file_name_escaping.cpp
    platform/default/item_strings.cpp platform/default/real_conversion.cpp)
"$cov" show "${objects[@]}" -instr-profile "$build/profiles/all.profdata" -show-branches=count \
    "${sources[@]}" >"$build/report.txt"
printf '%-35s %8s %8s %8s %10s %8s %8s\n' source lines missed reached branches missed reached
"$cov" report "${objects[@]}" -instr-profile "$build/profiles/all.profdata" "${sources[@]}" |
    awk 'NF == 13 && $8 ~ /^[0-9]+$/ { printf "%-35s %8s %8s %8s %10s %8s %8s\n", $1, $8, $9, $10, $11, $12, $13 }'
