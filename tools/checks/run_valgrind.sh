#!/usr/bin/env bash
# Runs the test programs under valgrind's memcheck, two at a time, and fails when one of them, or the command that they
# start, touches memory that it must not, uses a value that was never set, or leaves memory behind.
#
#   tools/checks/run_valgrind.sh [BUILD]     the build folder; build/valgrind else, configured here when it is new
#
# Needs valgrind besides what the tests need. VALGRIND_PROGRAMS names the programs to run (all). Logs and times stand
# in valgrind/ in the build folder.
set -euo pipefail
root=$(cd "$(dirname "$0")/../.." && pwd)
build=${1:-$root/build/valgrind}
mkdir -p "$build"
build=$(cd "$build" && pwd)
export root build logs=$build/valgrind

# Some optimisation, because time counts here; lines of source in the reports. Tests that keep a time by the processor
# give this build as much of it as one with sanitizers.
if [ ! -f "$build/CMakeCache.txt" ]; then
    cmake -S "$root" -B "$build" -DCMAKE_BUILD_TYPE=RelWithDebInfo \
        -DCMAKE_CXX_FLAGS_RELWITHDEBINFO="-O1 -g -DQXCMS_TESTS_SANITIZED" >/dev/null
fi
nice cmake --build "$build" --parallel "${JOBS:-$(nproc)}" >"$build/build.log" || {
    tail -n 30 "$build/build.log" >&2
    exit 1
}

# Findings end a program with a code of their own, also the command where a test runs it. The tests that make memory
# fail, or count it, bring a malloc or an operator new of their own, which is to stay in place: what is behind it is
# watched.
export memcheck="valgrind --quiet --vgdb=no --error-exitcode=99 --num-callers=30 --leak-check=full
    --show-leak-kinds=definite,indirect,possible --errors-for-leak-kinds=definite,indirect,possible
    --soname-synonyms=somalloc=nouserintercepts --trace-children=yes
    --trace-children-skip=/bin/*,/usr/bin/*,/usr/lib/*"

# What is left out, and why.
excluded() {
    case $1 in
    qxcms_cli_tests)
        # Limits the memory of the command, which valgrind itself lives in.
        echo commandMemory.tooLittle_isToldWithExitCode5
        ;;
    qxcms_tests)
        # valgrind computes with 64 bits where the machine has a long double of 80.
        echo parseDouble.roundsRandomHexadecimalSubnormalsLikeTheMachine
        # Limits the memory of the process, which valgrind itself lives in.
        echo interpolation.withoutMemory_aPointIsRefused
        # The processor can more than valgrind.
        echo instructionSet.whatTheSystemNames_isTaken
        # Counts 2147483648 characters.
        echo streamHelpers.textTooLongForItsLength_setsFailbitAndWritesNothing
        # Keep a time by the clock on the wall.
        echo interpolation.aMillionPoints_areInsertedInSecondsInAnyOrder
        echo itemString.longStrings_takeTimeInProportion
        echo parseDouble.readsAMebibyteOfDigitsAtOnce
        echo parseInt.readsAMillionDigits
        echo reflectionSpectrum.xyz_ofTwoThousandPatchesTakesMilliseconds
        echo textToDouble.costsNoWalkThroughTheTextBehindTheNumber
        echo weighting.twoThousandWeightings_takeNoTimeToSpeakOf
        ;;
    esac
}
export -f excluded

# One test program, or one of the two halves of a long one; the corpus programs take their folder of inputs.
check_program() {
    local program=${1%:*} half=${1#*:} log filter start corpus=
    log=$logs/$program.$half.log
    filter=$(excluded "$program" | paste -sd :)
    [ "$half" = all ] || export GTEST_TOTAL_SHARDS=2 GTEST_SHARD_INDEX=$half
    [ "$program" = "${program#qxcms_corpus_}" ] || corpus=$root/fuzz/corpus/${program#qxcms_corpus_}
    start=$(date +%s)
    # The options are a list of words.
    # shellcheck disable=SC2086
    if nice $memcheck "$build/bin/$program" ${corpus:+"$corpus"} ${filter:+"--gtest_filter=-$filter"} >"$log" 2>&1; then
        echo "$program ($half): no finding, $(($(date +%s) - start)) s"
    else
        echo "$program ($half): FAILED, see $log"
        grep -E -m 20 '^==[0-9]+==|Failure$|^\[  FAILED' "$log" || tail -n 5 "$log"
        return 1
    fi
}
export -f check_program

mkdir -p "$logs"
rm -f "$logs"/*
runs=()
corpora=$(cd "$build/bin" && echo qxcms_corpus_*)
for program in ${VALGRIND_PROGRAMS:-qxcms_cli_tests qxcms_tests qxcms_hostile_tests qxcms_failing_platform_tests \
    qxcms_failing_memory_tests qxcms_fuzz_files_tests $corpora}; do
    [ -x "$build/bin/$program" ] || continue
    case $program in
    qxcms_cli_tests | qxcms_tests | qxcms_hostile_tests) runs+=("$program:0" "$program:1") ;;
    *) runs+=("$program:all") ;;
    esac
done
[ "${#runs[@]}" -gt 0 ] || {
    echo "There is no test program in $build/bin" >&2
    exit 1
}

# "$1" belongs to the inner shell.
# shellcheck disable=SC2016
if ! printf '%s\n' "${runs[@]}" | xargs -P 2 -n 1 bash -c 'check_program "$1"' check_program; then
    echo "valgrind has found something; the full logs stand in $logs" >&2
    exit 1
fi
