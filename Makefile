# The two commands of the README: `make test` and `make run`. Everything they need
# is installed and built on the way.
PRESET ?= default
JOBS ?= $(shell nproc 2>/dev/null || echo 2)
BUILD_DIR = build/$(PRESET)
CMAKE_FLAGS ?=

.PHONY: all deps configure build test run bench profile asan test-asan fuzz fuzz-run format clean

all: build

deps:
	@scripts/install-deps

configure: deps
	@cmake --preset $(PRESET) $(CMAKE_FLAGS) >/dev/null

build: configure
	@cmake --build --preset $(PRESET) -j $(JOBS)

test: build
	@ctest --preset $(PRESET) -j $(JOBS)

# The recorder (or TITLE=walker, the second title): in a window where there is a
# display, else the headless demo. The build says one line when it has something
# to do, and nothing when not.
TITLE ?= recorder
run: configure
	@[ -x scripts/run-$(TITLE) ] || { echo "make run: no title $(TITLE); TITLE=recorder (the default) or walker"; exit 2; }
	@scripts/quiet-build $(PRESET) $(JOBS)
	@scripts/run-$(TITLE) $(BUILD_DIR)

bench: PRESET = default
bench: build
	@cmake --build --preset default --target benchmarks -j $(JOBS)
	@for b in build/default/bench/bench_*; do echo "== $$b"; $$b; done

# Instructions of one recorder frame under callgrind: repeatable, unlike timings.
profile: PRESET = default
profile: build
	@cmake --build --preset default --target bench_recorder -j $(JOBS)
	@scripts/profile-frames build/default/bench/bench_recorder

asan test-asan:
	@$(MAKE) --no-print-directory test PRESET=asan

fuzz:
	@$(MAKE) --no-print-directory build PRESET=fuzz

# Every harness for FUZZ_SECONDS (default 60) on its seeds; FUZZ_ONLY="a b" for some.
fuzz-run: fuzz
	@scripts/fuzz-run

format:
	@git ls-files '*.cpp' '*.h' | xargs clang-format -i

clean:
	@rm -rf build
