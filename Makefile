# The short way in. Everything behind it is CMake: see CMakePresets.json.

JOBS ?= $(shell nproc)

# A recipe needs the packages that the one before it installs.
.NOTPARALLEL:

.PHONY: all demo test asan bench install setup setup-bench format check-format check-tidy regenerate clean

all: build/release/Makefile
	cmake --build --preset release --parallel $(JOBS)

# Compares the shipped spectra of a chart with its published aim values.
demo: setup build/release/Makefile
	cmake --build --preset release --parallel $(JOBS) --target qxcms_command
	./build/release/bin/qxcms diff data/charts/colorchecker_spectral.txt data/charts/colorchecker_aims.txt \
	    --illuminant "CIE Illuminant C" --observer "2 degree"

test: setup all
	ctest --preset release --parallel $(JOBS)

# The suite under the address and undefined-behaviour sanitizers.
asan: setup build/asan/Makefile
	cmake --build --preset asan --parallel $(JOBS)
	ctest --preset asan --parallel $(JOBS)

bench: setup-bench build/bench/Makefile
	cmake --build --preset bench --parallel $(JOBS)
	./build/bench/bin/qxcms_bench

install: all
	cmake --install build/release

setup:
	@tools/setup/install_packages.sh g++ cmake libgtest-dev libgmock-dev libcli11-dev nlohmann-json3-dev locales
	@tools/setup/make_locale.sh

setup-bench: setup
	@tools/setup/install_packages.sh libbenchmark-dev

# Rewrites the tables, illuminants and charts that are made from data/*.csv.
regenerate: build/release/Makefile
	cmake --build --preset release --parallel $(JOBS) --target regenerate_data

build/%/Makefile: CMakePresets.json
	cmake --preset $*

SOURCES = $(shell git ls-files '*.h' '*.cpp')

format:
	clang-format -i $(SOURCES)

check-format:
	clang-format --dry-run --Werror $(SOURCES)

check-tidy: build/release/Makefile
	clang-tidy --quiet -p build/release $(filter-out tests/% bench/%,$(filter %.cpp,$(SOURCES)))

clean:
	rm -rf build
