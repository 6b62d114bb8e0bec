# The two commands a newcomer needs:
#   make demo   install what is missing, build, and run veltor on the sample drawing
#   make test   install what is missing, build, and run every test (also under sanitizers,
#               and the Windows plug-in's check: make check-arx)
# Both only redo what changed.

BUILD      ?= build
BUILD_SAN  ?= build-asan
JOBS       ?= $(shell nproc)
WERROR     := $(if $(CI),ON,OFF)

.PHONY: all setup build build-san demo test test-fast test-san check-arx oracle bench fuzz clean

all: build

setup: $(BUILD)/.setup-done

$(BUILD)/.setup-done: scripts/setup.sh
	@scripts/setup.sh
	@mkdir -p $(BUILD) && touch $@

$(BUILD)/build.ninja: | setup
	cmake -S . -B $(BUILD) -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DVELTOR_WERROR=$(WERROR)

build: setup $(BUILD)/build.ninja
	cmake --build $(BUILD) -j $(JOBS)

$(BUILD_SAN)/build.ninja: | setup
	cmake -S . -B $(BUILD_SAN) -G Ninja -DCMAKE_BUILD_TYPE=Debug -DVELTOR_SANITIZE=ON \
	  -DVELTOR_BENCH=OFF -DVELTOR_WERROR=$(WERROR)

build-san: setup $(BUILD_SAN)/build.ninja
	cmake --build $(BUILD_SAN) -j $(JOBS)

demo: build
	$(BUILD)/bin/veltor examples/city.dxf -s examples/demo.scr -o $(BUILD)/demo-out.dxf
	@echo "demo: the drawing, its NOTES layer turned on and its parcel areas written, was saved to $(BUILD)/demo-out.dxf"

test-fast: build
	cd $(BUILD) && ctest --output-on-failure -j $(JOBS)

test-san: build-san
	cd $(BUILD_SAN) && ASAN_OPTIONS=detect_leaks=1 UBSAN_OPTIONS=print_stacktrace=1 \
	  ctest --output-on-failure -j $(JOBS) -LE oracle

# The Windows plug-in as far as Linux can check it (scripts/check_arx.sh, docs/windows.md):
# the portable layers and src/arx compiled for 64-bit Windows, and the Win32 smoke program.
# `make check-arx ARX_SDK=DIR [MAP_SDK=DIR]` also checks against a real SDK's headers.
check-arx: setup
	@ARX_SDK="$(ARX_SDK)" MAP_SDK="$(MAP_SDK)" JOBS=$(JOBS) scripts/check_arx.sh $(BUILD)

test: test-fast test-san check-arx

bench: build
	$(BUILD)/bin/veltor_bench

BUILD_FUZZ   ?= build-fuzz
FUZZ_SECONDS ?= 600

$(BUILD_FUZZ)/build.ninja: | setup
	CC=clang CXX=clang++ cmake -S . -B $(BUILD_FUZZ) -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo \
	  -DVELTOR_FUZZ=ON -DVELTOR_BENCH=OFF

# Builds the fuzz targets and runs each for FUZZ_SECONDS (see tests/fuzz/README.md).
fuzz: $(BUILD_FUZZ)/build.ninja
	cmake --build $(BUILD_FUZZ) -j $(JOBS) --target dxf_reader_fuzzer session_fuzzer
	tests/fuzz/make_seeds.sh $(BUILD_FUZZ)/seeds
	mkdir -p $(BUILD_FUZZ)/corpus-run $(BUILD_FUZZ)/session-run $(BUILD_FUZZ)/session-seeds $(BUILD_FUZZ)/artifacts
	for f in tests/scripts/*.scr; do (printf '\000'; cat "$$f") > "$(BUILD_FUZZ)/session-seeds/$$(basename "$$f")"; done
	cd $(BUILD_FUZZ) && bin/dxf_reader_fuzzer corpus-run seeds -dict=../tests/fuzz/dxf.dict \
	  -max_total_time=$(FUZZ_SECONDS) -rss_limit_mb=4096 -timeout=10 -max_len=20000 \
	  -print_final_stats=1 -artifact_prefix=artifacts/
	cd $(BUILD_FUZZ) && bin/session_fuzzer session-run session-seeds -dict=../tests/fuzz/session.dict \
	  -max_total_time=$(FUZZ_SECONDS) -rss_limit_mb=4096 -timeout=20 -max_len=4000 \
	  -print_final_stats=1 -artifact_prefix=artifacts/

clean:
	rm -rf $(BUILD) $(BUILD_SAN)
