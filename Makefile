# The two commands of the README: `make test` and `make run`. Everything they need
# is installed and built on the way.
PRESET ?= default
JOBS ?= $(shell nproc 2>/dev/null || echo 2)
BUILD_DIR = build/$(PRESET)
CMAKE_FLAGS ?=

.PHONY: all deps configure build test run bench asan test-asan fuzz format clean

all: build

deps:
	@scripts/install-deps

configure: deps
	@cmake --preset $(PRESET) $(CMAKE_FLAGS) >/dev/null

build: configure
	@cmake --build --preset $(PRESET) -j $(JOBS)

test: build
	@ctest --preset $(PRESET) -j $(JOBS)

# The recorder, once it is built; until then the simulator's help, or a plain word.
run: build
	@if [ -x $(BUILD_DIR)/host/solva-sim ] && [ -f $(BUILD_DIR)/stage/title/libMicrophoneWidget.so ]; then \
	  scripts/run-recorder $(BUILD_DIR); \
	elif [ -x $(BUILD_DIR)/host/solva-sim ]; then \
	  echo "The recorder title is not built yet; here is the simulator that will run it:"; \
	  $(BUILD_DIR)/host/solva-sim --help; \
	else \
	  echo "Neither the recorder title nor the simulator (solva-sim) is built yet:"; \
	  echo "only the framework foundation and its tests exist so far (make test)."; \
	fi

bench: PRESET = default
bench: build
	@cmake --build --preset default --target benchmarks -j $(JOBS)
	@for b in build/default/bench/bench_*; do echo "== $$b"; $$b; done

asan test-asan:
	@$(MAKE) --no-print-directory test PRESET=asan

fuzz:
	@$(MAKE) --no-print-directory build PRESET=fuzz

format:
	@git ls-files '*.cpp' '*.h' | xargs clang-format -i

clean:
	@rm -rf build
