# The two entry points of the project: `make demo` and `make test`.
# Both install what the build needs (only what is missing), configure and build.

BUILD      ?= build
ASAN_BUILD ?= build-asan
JOBS       ?= $(shell nproc 2>/dev/null || echo 2)
EXAMPLE    ?= examples/office-building.json
DEMO_NAME  ?= Office

.PHONY: all deps build build-asan demo test clean

all: build

deps:
	@scripts/install-deps.sh

build: deps
	cmake -S . -B $(BUILD) -DCMAKE_BUILD_TYPE=Release
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

test: build build-asan
	cd $(BUILD) && ctest --output-on-failure -j $(JOBS)
	cd $(ASAN_BUILD) && ASAN_OPTIONS=detect_leaks=1 UBSAN_OPTIONS=print_stacktrace=1 ctest --output-on-failure -j $(JOBS)

clean:
	rm -rf $(BUILD) $(ASAN_BUILD)
