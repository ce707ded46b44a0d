# The build itself is CMake's (CMakeLists.txt, CMakePresets.json); this file names what people do.
#   make          build the library and stage it in build/home
#   make run      set up, build, run an example script
#   make test     set up, build, run all tests
#   make check    the tests under AddressSanitizer and UndefinedBehaviorSanitizer
#   make bench    the project's own measurements
#   make header   write extern/include/embedzy.h anew from the list of services
#   make install PREFIX=/opt/zy

PREFIX ?= /opt/zy
JOBS ?= $(shell nproc)

.PHONY: all setup run test check debug bench header format install clean

all: build/release/build.ninja
	cmake --build --preset release -j $(JOBS)

setup:
	@./setup

run: setup all
	build/home/bin/zy examples/collatz.zy

test: setup all
	ctest --preset release

check: setup
	cmake --preset sanitize
	cmake --build --preset sanitize -j $(JOBS)
	ctest --preset sanitize

debug:
	cmake --preset debug
	cmake --build --preset debug -j $(JOBS)

bench: setup all
	bench/run build/release

header: build/release/build.ninja
	cmake --build --preset release -j $(JOBS) --target header

format:
	git ls-files '*.cpp' '*.h' '*.c' | grep -v '^extern/include/' | xargs clang-format -i

install: all
	cmake --install build/release --prefix $(PREFIX)

clean:
	rm -rf build

build/%/build.ninja: CMakeLists.txt CMakePresets.json
	cmake --preset $*
	@touch $@
