# The two entry points of the project: `make demo` and `make test`.
# Both install what the build needs (only what is missing), configure and build.

BUILD      ?= build
ASAN_BUILD ?= build-asan
JOBS       ?= $(shell nproc 2>/dev/null || echo 2)
EXAMPLE    ?= examples/office-building.json
DEMO_NAME  ?= Office

.PHONY: all deps build build-asan build-bench demo test bench fuzz clean

all: build

deps:
	@scripts/install-deps.sh

# The program, its tests and tools; the benchmarks build apart (`make bench`), which keeps
# `make test` within its time.
build: deps
	cmake -S . -B $(BUILD) -DCMAKE_BUILD_TYPE=Release -DVTT_BENCHMARKS=OFF
	cmake --build $(BUILD) -j $(JOBS)

build-asan: deps
	cmake -S . -B $(ASAN_BUILD) -DCMAKE_BUILD_TYPE=Debug -DVTT_SANITIZE=ON
	cmake --build $(ASAN_BUILD) -j $(JOBS)

# The bundled office building into out/$(DEMO_NAME)/, its record files into
# out/TRELK/Records/EqkeGroup/: nothing is written outside ./out.
demo: build
	mkdir -p out
	$(BUILD)/vask2trelk transfer $(EXAMPLE) --dir out --name $(DEMO_NAME) --trelk-path out/TRELK
	@ls -l out/$(DEMO_NAME) out/TRELK/Records/EqkeGroup

# The Google Benchmark programs (Release, in $(BENCH_BUILD)), then the whole transfer of a
# generated building of 10,000 joints, phase by phase. `scripts/measure-transfer.sh`
# measures larger buildings.
BENCH_BUILD ?= build-bench

build-bench: deps
	cmake -S . -B $(BENCH_BUILD) -DCMAKE_BUILD_TYPE=Release -DVTT_BENCHMARKS=ON
	cmake --build $(BENCH_BUILD) -j $(JOBS) --target vask2trelk_bench

bench: build-bench
	$(BENCH_BUILD)/vask2trelk_bench --benchmark_filter='^BM_Transfer/'

# Under the sanitizers the unit tests run in one process a processor (a sanitized process
# is slow to start, and ctest would start one a test); the other tests through ctest.
SANITIZER_ENV = ASAN_OPTIONS=detect_leaks=1 UBSAN_OPTIONS=print_stacktrace=1
# Seconds of fuzzing for each fuzz target at the end of `make test`.
FUZZ_BRIEFLY_SECONDS ?= 20

test: build build-asan
	cd $(BUILD) && ctest --output-on-failure -j $(JOBS)
	cd $(ASAN_BUILD) && $(SANITIZER_ENV) $(CURDIR)/scripts/run-test-shards.sh ./vask2trelk_tests $(JOBS)
	cd $(ASAN_BUILD) && $(SANITIZER_ENV) ctest --output-on-failure -j $(JOBS) -LE unit
	$(SANITIZER_ENV) scripts/fuzz-briefly.sh $(ASAN_BUILD) $(FUZZ_BRIEFLY_SECONDS)

# Each fuzz target for FUZZ_SECONDS (clang, libFuzzer, ASan and UBSan), one after the other,
# its corpus in $(FUZZ_BUILD)/corpus/<target> seeded from the example and test models and
# fuzz/corpus; a finding is written to $(FUZZ_BUILD)/artifacts/<target>/ and stops the run.
FUZZ_BUILD   ?= build-fuzz
FUZZ_SECONDS ?= 600
FUZZ_TARGETS ?= model_file_fuzz transfer_fuzz
FUZZ_FLAGS   ?= -max_len=65536 -timeout=10 -rss_limit_mb=2048

FUZZ_DIR      = $(abspath $(FUZZ_BUILD))

# Optimised, with asserts kept.
fuzz:
	@scripts/install-deps.sh fuzz
	CC=clang CXX=clang++ cmake -S . -B $(FUZZ_BUILD) -DCMAKE_BUILD_TYPE=RelWithDebInfo \
	  -DCMAKE_CXX_FLAGS_RELWITHDEBINFO="-O1 -g" -DVTT_FUZZ=ON -DVTT_BENCHMARKS=OFF
	cmake --build $(FUZZ_BUILD) -j $(JOBS) --target $(FUZZ_TARGETS)
	set -e; for t in $(FUZZ_TARGETS); do \
	  mkdir -p $(FUZZ_DIR)/corpus/$$t $(FUZZ_DIR)/artifacts/$$t $(FUZZ_DIR)/run/$$t \
	    fuzz/regressions/$$t; \
	  cp examples/*.json fuzz/corpus/*/* $(FUZZ_DIR)/corpus/$$t/; \
	  for m in tests/models/*/model.json; do \
	    cp $$m $(FUZZ_DIR)/corpus/$$t/$$(basename $$(dirname $$m)).json; done; \
	  (cd $(FUZZ_DIR)/run/$$t && $(FUZZ_DIR)/$$t $(FUZZ_FLAGS) -max_total_time=$(FUZZ_SECONDS) \
	    -dict=$(CURDIR)/fuzz/model.dict -artifact_prefix=$(FUZZ_DIR)/artifacts/$$t/ \
	    $(FUZZ_DIR)/corpus/$$t $(CURDIR)/fuzz/regressions/$$t); \
	done

clean:
	rm -rf $(BUILD) $(ASAN_BUILD) $(BENCH_BUILD) $(FUZZ_BUILD)
