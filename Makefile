# SPDX-License-Identifier: MIT
# The commands of the project, each with all of its set-up. PRESET is one of those in CMakePresets.json.
PRESET ?= release

# How long each fuzzer runs.
SECONDS_EACH ?= 60

.PHONY: help run build test bench check asan fuzz docs windows test-windows clean
.SILENT:

help:
	echo 'make run     build, and open the window on the sample inventory (a picture where there is no display)'
	echo 'make build   build alone; the program is build/stockbook'
	echo 'make test    build, and run every test'
	echo 'make bench   build, and run the benchmarks'
	echo 'make asan    the tests under AddressSanitizer and UndefinedBehaviorSanitizer'
	echo 'make fuzz    each fuzzer, random journals among them, for a minute, or SECONDS_EACH=n'
	echo 'make docs    the book and the reference as web pages and for Qt Assistant, in build/docs'
	echo 'make windows the component for Windows, in both widths, as a zip; make test-windows tests it under Wine'
	echo 'make check   the checks of the tree, formatting among them'
	echo 'make clean   remove build/'
	echo 'PRESET=dev|release|asan|core-only chooses another preset than release'

run:
	tools/build $(PRESET) stockbook_host_link
	tools/run

build:
	tools/build $(PRESET)

test:
	tools/test $(PRESET)

bench:
	tools/build release
	tools/bench

asan:
	tools/test asan

fuzz:
	tools/fuzz $(SECONDS_EACH)

docs:
	tools/docs

windows:
	tools/windows zip

test-windows:
	tools/windows test

check:
	tools/check

clean:
	rm -rf build
