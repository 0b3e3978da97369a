# The two everyday commands: `make run` opens the editors on the sample project, `make test`
# installs what is missing, builds and runs every test.
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

# Random order, so a test that passes only after another one shows up.
test: build
	ctest --test-dir $(BUILD) --output-on-failure --schedule-random -j $(JOBS)
	$(MAKE) --no-print-directory package-check

# `make memcheck`: every test binary of $(BUILD) under Valgrind's memcheck; an uninitialised read, an
# invalid access or a definite leak fails it. Slow (minutes): not part of `make test` or CI. Qt runs
# without its regular-expression JIT, whose generated code memcheck cannot follow.
MEMCHECK_TESTS ?= model_tests fast_paths_differential_test exports/exports_tests api/api_tests api/headless_editors_test common/common_tests editors/editor_tests tools/tools_tests ui/ui_tests ui/entry_point_end_to_end_test
MEMCHECK = valgrind --tool=memcheck --error-exitcode=99 --leak-check=full --errors-for-leak-kinds=definite \
           --track-origins=yes --suppressions=tests/valgrind.supp --quiet
.PHONY: memcheck
memcheck: build
	@status=0; for t in $(MEMCHECK_TESTS); do \
	  echo "== memcheck $$t"; \
	  QT_QPA_PLATFORM=offscreen QT_ENABLE_REGEXP_JIT=0 $(MEMCHECK) $(BUILD)/tests/$$t --gtest_brief=1 || status=1; \
	done; exit $$status

$(BUILD_SAN)/build.ninja: | deps
	cmake -S . -B $(BUILD_SAN) $(CMAKE_FLAGS) -DCMAKE_BUILD_TYPE=Debug -DORVANE_SANITIZE=ON

sanitize: deps $(BUILD_SAN)/build.ninja
	cmake --build $(BUILD_SAN) -j $(JOBS)

test-sanitize: sanitize
	ctest --test-dir $(BUILD_SAN) --output-on-failure -j $(JOBS)

bench: deps
	cmake -S . -B $(BUILD)-bench -G Ninja -DCMAKE_BUILD_TYPE=Release -DORVANE_BENCH=ON -DORVANE_TESTS=OFF
	cmake --build $(BUILD)-bench -j $(JOBS)
	@# Raised priority where allowed (root): other work on the machine disturbs the figures less.
	@for b in $(BUILD)-bench/bench/orvane_bench_steps $(BUILD)-bench/bench/orvane_bench_merge; do \
	  [ -x "$$b" ] && nice -n -5 "$$b"; done

clean:
	rm -rf $(BUILD) $(BUILD_SAN) $(BUILD)-bench $(BUILD_FUZZ) $(BUILD_COV) $(BUILD_PKG)

# The Debian packages liborvane0, liborvane-dev and orvane (docs/packaging.md), built for the
# prefix /usr in $(BUILD_PKG) without the tests; `make package-check` also checks them and runs
# lintian (make test runs it too).
BUILD_PKG    ?= $(BUILD)-package
.PHONY: package package-check
package: deps
	cmake -S . -B $(BUILD_PKG) -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DCMAKE_INSTALL_PREFIX=/usr \
	  -DORVANE_TESTS=OFF -DORVANE_WERROR=$(WERROR)
	cmake --build $(BUILD_PKG) -j $(JOBS) --target package

package-check: package
	bash scripts/check-packages.sh $(BUILD_PKG)

# `make check`: every test under ASan, UBSan and LeakSanitizer (check-sanitize; any report fails
# it), then each fuzz target for FUZZ_SECONDS (check-fuzz). The fuzz build is clang's, in
# $(BUILD_FUZZ); the new inputs a run finds go to $(BUILD_FUZZ)/corpus/<target>, a crashing input to
# $(BUILD_FUZZ)/crash-*. One target by hand:
#     make fuzz && build-fuzz/fuzz/orvane_fuzz_csv_import -dict=fuzz/dict/csv_import.dict \
#         -max_total_time=600 build-fuzz/corpus/csv_import fuzz/corpus/csv_import
BUILD_FUZZ   ?= build-fuzz
FUZZ_SECONDS ?= 60
FUZZ_TARGETS  = pset_reader qset_reader round_trip message_file catalogue csv_import property_merge quantity_merge
SANITIZER_ENV = ASAN_OPTIONS=detect_leaks=1:abort_on_error=1 \
                UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1

.PHONY: fuzz check check-sanitize check-fuzz

$(BUILD_FUZZ)/build.ninja: | deps
	CC=clang CXX=clang++ cmake -S . -B $(BUILD_FUZZ) -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo \
	  -DORVANE_FUZZ=ON -DORVANE_TESTS=OFF

fuzz: deps $(BUILD_FUZZ)/build.ninja
	cmake --build $(BUILD_FUZZ) -j $(JOBS) --target fuzz_targets

check: check-sanitize check-fuzz

check-sanitize: sanitize
	$(SANITIZER_ENV) ctest --test-dir $(BUILD_SAN) --output-on-failure -j $(JOBS)

check-fuzz: fuzz
	@for target in $(FUZZ_TARGETS); do \
	  echo "== fuzzing $$target for $(FUZZ_SECONDS) s"; \
	  mkdir -p $(BUILD_FUZZ)/corpus/$$target; \
	  $(SANITIZER_ENV) $(BUILD_FUZZ)/fuzz/orvane_fuzz_$$target -max_total_time=$(FUZZ_SECONDS) -timeout=20 \
	    -dict=fuzz/dict/$$target.dict -artifact_prefix=$(BUILD_FUZZ)/ -print_final_stats=1 \
	    $(BUILD_FUZZ)/corpus/$$target fuzz/corpus/$$target || exit 1; \
	done

# `make run`: the property-set editor on a fresh copy of samples/ (in $(BUILD)/run-samples, so the
# repository's samples stay as they are), opened by the sample host through the entry point a CAD
# program calls. EDITOR=assign, qsets or assign-qsets opens the other editors. It builds only the
# library and the sample host. Without a display (no DISPLAY or WAYLAND_DISPLAY) the editor is
# served through Qt's VNC platform on 127.0.0.1, port RUN_PORT: view it with any VNC viewer; Ctrl+C
# stops it. Qt's VNC server would listen on every interface: loopback_only.so keeps it on loopback.
EDITOR   ?= psets
RUN_PORT ?= 5900
RUN_SIZE ?= 1280x800
.PHONY: run screenshots

run: deps $(BUILD)/build.ninja
	cmake --build $(BUILD) -j $(JOBS) --target orvane_sample_host orvane_loopback_only
	@rm -rf $(BUILD)/run-samples && cp -r samples $(BUILD)/run-samples && rm -rf $(BUILD)/run-samples/host
	@if [ -n "$$DISPLAY$$WAYLAND_DISPLAY$$QT_QPA_PLATFORM" ]; then \
	  $(BUILD)/samples/host/orvane_sample_host $(BUILD)/run-samples $(EDITOR); \
	else \
	  echo "No display here: the editor is served through VNC on 127.0.0.1:$(RUN_PORT)."; \
	  echo "View it with a VNC viewer on this machine, e.g.  vncviewer 127.0.0.1:$(RUN_PORT)"; \
	  echo "(from another machine: ssh -L $(RUN_PORT):127.0.0.1:$(RUN_PORT) THIS-HOST, then the same)."; \
	  echo "It asks for no password, so it listens on the loopback address only. Ctrl+C stops it."; \
	  LD_PRELOAD=$(abspath $(BUILD))/samples/host/liborvane_loopback_only.so \
	  QT_QPA_PLATFORM=vnc:size=$(RUN_SIZE):port=$(RUN_PORT) \
	    $(BUILD)/samples/host/orvane_sample_host $(BUILD)/run-samples $(EDITOR); \
	fi
	@echo "The edited copy is in $(BUILD)/run-samples (each document next to its .bak)."

# Pictures of every dialog on the sample project, drawn offscreen, for docs/screenshots.
screenshots: build
	$(BUILD)/ui/orvane_screenshots samples docs/screenshots

# `make coverage`: every test in a gcc --coverage build ($(BUILD_COV)), then the line and branch
# coverage of model/, api/, editors/, ui/ and tools/ (gcovr; per file in $(BUILD_COV)/coverage/).
# Counts from an earlier run are cleared first, so the figures are this run's alone.
BUILD_COV ?= build-coverage
.PHONY: coverage

$(BUILD_COV)/build.ninja: | deps
	cmake -S . -B $(BUILD_COV) -G Ninja -DCMAKE_BUILD_TYPE=Debug -DORVANE_COVERAGE=ON

coverage: deps $(BUILD_COV)/build.ninja
	cmake --build $(BUILD_COV) -j $(JOBS)
	find $(BUILD_COV) -name '*.gcda' -delete
	ctest --test-dir $(BUILD_COV) --output-on-failure -j $(JOBS)
	bash scripts/coverage-report.sh $(BUILD_COV)
