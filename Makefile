# The two everyday commands are `make test` and (from the editors on) `make run`.
# Everything goes through CMake and Ninja; this file only strings the steps together.

BUILD        ?= build
BUILD_SAN    ?= build-sanitize
BUILD_TYPE   ?= RelWithDebInfo
JOBS         ?= 2
# Warnings are errors in CI; locally they stay warnings so a newer compiler does not block work.
WERROR       ?= $(if $(filter true 1,$(CI)),ON,OFF)

CMAKE_FLAGS  = -G Ninja -DCMAKE_BUILD_TYPE=$(BUILD_TYPE) -DORVANE_WERROR=$(WERROR)

.PHONY: deps configure build test sanitize test-sanitize bench clean

deps:
	@bash scripts/install-deps.sh

$(BUILD)/build.ninja: | deps
	cmake -S . -B $(BUILD) $(CMAKE_FLAGS)

configure: deps
	cmake -S . -B $(BUILD) $(CMAKE_FLAGS)

build: deps $(BUILD)/build.ninja
	cmake --build $(BUILD) -j $(JOBS)

test: build
	ctest --test-dir $(BUILD) --output-on-failure -j $(JOBS)

$(BUILD_SAN)/build.ninja: | deps
	cmake -S . -B $(BUILD_SAN) $(CMAKE_FLAGS) -DCMAKE_BUILD_TYPE=Debug -DORVANE_SANITIZE=ON

sanitize: deps $(BUILD_SAN)/build.ninja
	cmake --build $(BUILD_SAN) -j $(JOBS)

test-sanitize: sanitize
	ctest --test-dir $(BUILD_SAN) --output-on-failure -j $(JOBS)

bench: deps
	cmake -S . -B $(BUILD)-bench -G Ninja -DCMAKE_BUILD_TYPE=Release -DORVANE_BENCH=ON
	cmake --build $(BUILD)-bench -j $(JOBS)
	@for b in $(BUILD)-bench/bench/orvane_bench_*; do [ -x "$$b" ] && "$$b"; done

clean:
	rm -rf $(BUILD) $(BUILD_SAN) $(BUILD)-bench
