# Quick start on a fresh Debian 12 machine:
#   make demo   installs what is missing, builds, analyses the sample log
#   make test   installs what is missing, builds, runs every test

BUILD ?= build
JOBS ?= $(shell nproc)
SAMPLE ?= samples/evening.log
DEMO_OUT ?= $(BUILD)/demo

FUZZ_BUILD ?= build-fuzz
FUZZ_SECONDS ?= 300
ASAN_BUILD ?= build-asan

PREFIX ?= /usr/local

.PHONY: all deps build demo test test-sanitize fuzz bench screenshots install package clean

all: build

deps:
	@bash scripts/install-deps

$(BUILD)/Makefile: CMakeLists.txt
	cmake -S . -B $(BUILD) -DCMAKE_BUILD_TYPE=RelWithDebInfo

build: deps $(BUILD)/Makefile
	cmake --build $(BUILD) -j $(JOBS)

demo: build
	@mkdir -p $(DEMO_OUT)
	@$(BUILD)/vantor-cli --side-dir $(DEMO_OUT) --output-dir $$(realpath $(DEMO_OUT)) --table $(SAMPLE); \
	  status=$$?; \
	  echo; echo "Report: $$(realpath $(DEMO_OUT))/$$(basename $(SAMPLE) .log).html"; \
	  echo "Side files: $$(realpath $(DEMO_OUT))"; exit $$status

test: build
	cd $(BUILD) && ctest --output-on-failure -j $(JOBS)

# The whole test suite built with AddressSanitizer and UndefinedBehaviorSanitizer.
# Every finding, a leak included, fails the test it happens in (programs the
# tests start inherit the options); nothing is suppressed.
SANITIZER_OPTIONS = ASAN_OPTIONS=detect_leaks=1:abort_on_error=1:detect_stack_use_after_return=1:check_initialization_order=1:strict_init_order=1 \
  UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1

test-sanitize: deps
	cmake -S . -B $(ASAN_BUILD) -DCMAKE_BUILD_TYPE=Debug -DVANTOR_SANITIZE=ON
	cmake --build $(ASAN_BUILD) -j $(JOBS)
	cd $(ASAN_BUILD) && $(SANITIZER_OPTIONS) ctest --output-on-failure -j $(JOBS)

# The pipeline fuzzer for FUZZ_SECONDS seconds (clang's libFuzzer).
fuzz: deps
	cmake -S . -B $(FUZZ_BUILD) -DCMAKE_CXX_COMPILER=clang++-14 -DCMAKE_BUILD_TYPE=RelWithDebInfo \
	  -DVANTOR_FUZZ=ON -DVANTOR_BUILD_GUI=OFF -DVANTOR_BUILD_TESTS=OFF
	cmake --build $(FUZZ_BUILD) -j $(JOBS) --target vantor_fuzz
	scripts/fuzz $(FUZZ_BUILD) $(FUZZ_SECONDS)

# Installs the programs, desktop entry, icons and manual under PREFIX.
install: build
	cmake --install $(BUILD) --prefix $(PREFIX)

# Builds the Debian package $(BUILD)/vantor-log-analyzer_<version>_<arch>.deb.
package: build
	cd $(BUILD) && cpack -G DEB

bench: build
	@if [ -x scripts/bench ]; then scripts/bench; else echo "no benchmarks yet"; fi

screenshots: build
	@BUILD=$(BUILD) SAMPLE=$(SAMPLE) scripts/screenshots

clean:
	rm -rf $(BUILD) $(ASAN_BUILD) $(FUZZ_BUILD)
