# Quick start on a fresh Debian 12 machine:
#   make demo   installs what is missing, builds, analyses the sample log
#   make test   installs what is missing, builds, runs every test

BUILD ?= build
JOBS ?= $(shell nproc)
SAMPLE ?= samples/evening.log
DEMO_OUT ?= $(BUILD)/demo

.PHONY: all deps build demo test bench screenshots clean

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

bench: build
	@if [ -x scripts/bench ]; then scripts/bench; else echo "no benchmarks yet"; fi

screenshots: build
	@BUILD=$(BUILD) SAMPLE=$(SAMPLE) scripts/screenshots

clean:
	rm -rf $(BUILD)
