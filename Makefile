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

.PHONY: help demo test golden-update bench screenshots format clean

help:
	@echo "make demo           build the compiler, compile an example and start it under Wine"
	@echo "make test           all tests: development build, sanitizers, Windows executables"
	@echo "make golden-update  write the compiler's present output into the golden cases"
	@echo "make bench          run the benchmarks"
	@echo "make screenshots    pictures of all examples in build/screenshots"
	@echo "make format         format the C++ sources"
	@echo "make clean          remove build/"

demo:
	@$(SETUP) build windows screen
	@tests/support/demo.sh $(EXAMPLE)

test:
	@$(SETUP) build windows tests screen
	@JOBS=$(JOBS) tests/support/run-tests.sh

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

screenshots:
	@$(SETUP) build windows screen
	@tests/support/screenshots.sh

format:
	@$(SETUP) format
	@git ls-files '*.cpp' '*.h' | xargs clang-format -i

clean:
	rm -rf build
