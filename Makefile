# The short way in. Everything behind it is CMake: see CMakePresets.json.

JOBS ?= $(shell nproc)

# A recipe needs the packages that the one before it installs.
.NOTPARALLEL:

.PHONY: all demo test exhaustive asan bench valgrind fuzz fuzz-coverage install setup setup-bench setup-checks setup-fuzz \
    format check check-compilers check-constants check-format check-tidy regenerate clean

all: build/release/Makefile
	cmake --build --preset release --parallel $(JOBS)

# Compares the shipped spectra of a chart with its published aim values.
demo: setup build/release/Makefile
	cmake --build --preset release --parallel $(JOBS) --target qxcms_command
	./build/release/bin/qxcms diff data/charts/colorchecker_spectral.txt data/charts/colorchecker_aims.txt \
	    --illuminant "CIE Illuminant C" --observer "2 degree"

test: setup all
	ctest --preset release --parallel $(JOBS)

# Every positive float, and 368,640,000 doubles, through the conversions that have a faster way; four minutes of
# processor time. Ends with 77 where the processor has nothing to compare.
exhaustive: setup build/release/Makefile
	cmake --build --preset release --parallel $(JOBS) --target qxcms_every_float qxcms_many_doubles
	./build/release/bin/qxcms_every_float
	./build/release/bin/qxcms_many_doubles

# The suite under the address and undefined-behaviour sanitizers.
asan: setup build/asan/Makefile
	cmake --build --preset asan --parallel $(JOBS)
	ctest --preset asan --parallel $(JOBS)

bench: setup-bench build/bench/Makefile
	cmake --build --preset bench --parallel $(JOBS)
	./build/bench/bin/qxcms_bench

# PREFIX=DIR chooses the place, DESTDIR=DIR stages it.
install: all
	cmake --install build/release $(if $(PREFIX),--prefix "$(PREFIX)")

setup:
	@tools/setup/install_packages.sh g++ cmake libgtest-dev libgmock-dev libcli11-dev nlohmann-json3-dev \
	    librapidcheck-dev liblcms2-dev libsqlite3-dev locales pkgconf
	@tools/setup/make_locale.sh

# The test programs under valgrind; takes long.
valgrind: setup
	@tools/setup/install_packages.sh valgrind
	tools/checks/run_valgrind.sh

# Every fuzzer for FUZZ_SECONDS (60) seconds.
fuzz: setup-fuzz build/fuzz/Makefile
	cmake --build --preset fuzz --parallel $(JOBS)
	tools/checks/run_fuzzers.sh $(FUZZ_SECONDS)

# What the committed inputs of the fuzzers reach.
fuzz-coverage: setup-fuzz
	tools/checks/fuzz_coverage.sh

# Changes every number of the kernel, one at a time; takes long.
check-constants: setup
	@tools/setup/install_packages.sh python3
	tools/checks/check_constants.py

setup-fuzz: setup
	@tools/setup/install_packages.sh clang llvm libclang-rt-14-dev

setup-checks: setup
	@tools/setup/install_packages.sh clang clang-format clang-tidy

setup-bench: setup
	@tools/setup/install_packages.sh libbenchmark-dev

# What a change must pass besides the suite: every warning of two compilers, equal results of their builds, the checks
# of clang-tidy, the formatting.
check: check-format check-tidy
	tools/checks/check_compilers.sh

# The suite and the digests of g++ and clang++, -O0 and -O3.
check-compilers: setup-checks
	tools/checks/check_compilers.sh all

# Rewrites the tables, illuminants and charts that are made from data/*.csv.
regenerate: build/release/Makefile
	cmake --build --preset release --parallel $(JOBS) --target regenerate_data

build/%/Makefile: CMakePresets.json
	cmake --preset $*

SOURCES = $(shell git ls-files '*.h' '*.cpp')

format:
	clang-format -i $(SOURCES)

check-format: setup-checks
	clang-format --dry-run --Werror $(SOURCES)

# How far the analyzer follows the paths through a function; its own limit of 225000 takes twice the time.
TIDY_NODES ?= 20000

check-tidy: setup-checks build/release/Makefile
	printf '%s\n' $(filter-out tests/% bench/% fuzz/%,$(filter %.cpp,$(SOURCES))) | \
	    xargs -P $(JOBS) -n 4 clang-tidy --quiet -p build/release --extra-arg=-Wno-unknown-warning-option \
	    --extra-arg=-Xclang --extra-arg=-analyzer-config --extra-arg=-Xclang --extra-arg=max-nodes=$(TIDY_NODES)

clean:
	rm -rf build
