# The two commands of the README and a few more. Each first installs what the machine lacks (see
# tests/support/setup.sh); build trees lie in build/<preset>.
SHELL := /bin/bash
.SHELLFLAGS := -eu -o pipefail -c
.DEFAULT_GOAL := help
JOBS ?= $(shell nproc)
SETUP := tests/support/setup.sh

# CMake reads these once, at the first configuration of a tree; ccache is used when it is there.
export CMAKE_GENERATOR := Ninja
ifneq ($(shell command -v ccache),)
export CMAKE_CXX_COMPILER_LAUNCHER := ccache
endif

.PHONY: help demo test test-long fuzz test-install static coverage mutants packages
.PHONY: windows-toolchain golden-update bench screenshots format clean

# The C++ compiler of the Windows package: a folder or an archive. A prebuilt archive beside the
# checkout is taken when there is one; otherwise it is built (see packaging/windows-toolchain).
ORVANE_WINDOWS_TOOLCHAIN ?= $(firstword $(wildcard ../shared/windows-toolchain/toolchain.tar.xz))
export ORVANE_WINDOWS_TOOLCHAIN

help:
	@echo "make demo           build the compiler, compile an example and start it under Wine"
	@echo "make test           all tests: development build, sanitizers, Windows executables"
	@echo "make test-long      what make test leaves out: each function and golden program compiled"
	@echo "make fuzz           each fuzzing target for MINUTES (30) minutes, and a table of the runs"
	@echo "make packages       the archives for Windows and Linux, in build/packages"
	@echo "make static         warnings of gcc and clang, clang-tidy and cppcheck over src/"
	@echo "make coverage       lines and branches of src/ that the tests run; fails below 95% of lines"
	@echo "make mutants        change fixed texts of generator and checks; fails when no test notices"
	@echo "make test-install   test those archives, the Windows one under Wine with all window tests"
	@echo "make windows-toolchain  build the C++ compiler of the Windows archive (a quarter of an hour)"
	@echo "make golden-update  write the compiler's present output into the golden cases"
	@echo "make bench          run the benchmarks"
	@echo "make screenshots    take the pictures of all examples in docs/images"
	@echo "make format         format the C++ sources"
	@echo "make clean          remove build/"

demo:
	@$(SETUP) build windows screen
	@tests/support/demo.sh $(EXAMPLE)

test:
	@$(SETUP) build windows tests screen fuzz static
	@JOBS=$(JOBS) tests/support/run-tests.sh

packages:
	@$(SETUP) build windows packages
	@JOBS=$(JOBS) packaging/make-packages.sh

test-install: packages
	@$(SETUP) build windows tests
	@cmake --preset dev > /dev/null
	@cmake --build --preset dev -j$(JOBS) | tail -n 1
	@ctest --preset dev -L '^install' --no-tests=error < /dev/null
	@tests/install/packages_elsewhere.sh
	@tests/install/ui_of_package.sh

windows-toolchain:
	@$(SETUP) build windows toolchain
	@JOBS=$(JOBS) packaging/windows-toolchain/build.sh

test-long:
	@$(SETUP) build windows tests screen
	@cmake --preset dev > /dev/null
	@cmake --build --preset dev -j$(JOBS) | tail -n 1
	@ctest --preset dev -j$(JOBS) --no-tests=error -L '_all$$|_long$$|^screen$$' \
		-LE '^install_long$$' < /dev/null

MINUTES ?= 30
fuzz:
	@$(SETUP) build fuzz
	@JOBS=$(JOBS) tests/fuzz/run-long.sh $(MINUTES) $(TARGETS)

static:
	@$(SETUP) build static
	@JOBS=$(JOBS) tests/support/check-static.sh

coverage:
	@$(SETUP) build tests coverage
	@JOBS=$(JOBS) tests/support/measure-coverage.sh

mutants:
	@$(SETUP) build windows tests
	@cmake --preset dev > /dev/null
	@cmake --build --preset dev --target golden_test unit_codegen orvane -j$(JOBS) | tail -n 1
	@tests/support/mutate-fixed-texts.py build/dev/bin

golden-update:
	@$(SETUP) build windows tests
	@cmake --preset dev > /dev/null
	@cmake --build --preset dev --target update-golden -j$(JOBS)

bench:
	@$(SETUP) build windows tests bench
	@cmake --preset release > /dev/null
	@cmake --build --preset release -j$(JOBS) \
		--target translation_benchmark translate_once generate_source | tail -n 1
	@build/release/bin/translation_benchmark
	@bench/check_instructions.sh build/release/bin
	@bench/compare.sh build/release/bin
	@source tests/support/wine.sh; source tests/support/product.sh; build_product
	@bench/programs.py build/stage
	@bench/builds.py build/stage

screenshots:
	@$(SETUP) build windows screen
	@tests/support/screenshots.sh

format:
	@$(SETUP) format
	@git ls-files '*.cpp' '*.h' | xargs clang-format -i

clean:
	rm -rf build
