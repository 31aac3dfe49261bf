# A thin face over the CMake presets: every target can be had with cmake and ctest alone. CONTRIBUTING.md tells how.
.DEFAULT_GOAL := help
.PHONY: help run test check check-tsan bench fuzz format clean

tour := build/tour

help: ## Show this
	@awk -F ':.*## ' '/^[a-z-]+:.*## / { printf "  make %-11s %s\n", $$1, $$2 }' $(MAKEFILE_LIST)

run: ## Open the demo host; without a display make the guided tour, with its pictures in build/tour
	@scripts/setup
	@scripts/build dev material-host
	@scripts/run-host $(tour)

test: ## Build everything and run all tests
	@scripts/setup
	@scripts/build dev
	@scripts/with-display --own ctest --preset dev

check: ## Check format, lint and Windows files, run all tests under address and undefined-behaviour sanitizers, fuzz briefly
	@scripts/setup build check
	@scripts/format --check
	@scripts/build dev
	@scripts/lint dev
	@scripts/check-windows
	@scripts/build asan
	@scripts/with-display --own scripts/sanitized ctest --preset asan
	@$(MAKE) --no-print-directory fuzz FUZZ_SECONDS=10

check-tsan: ## Run all tests under the thread sanitizer
	@scripts/setup
	@scripts/build tsan
	@scripts/with-display --own scripts/sanitized ctest --preset tsan

FUZZ_SECONDS ?= 60
fuzz: ## Fuzz each parser for FUZZ_SECONDS (60); what is found lands in build/fuzz/found
	@scripts/setup build check
	@scripts/build fuzz fuzzers
	@scripts/sanitized scripts/fuzz $(FUZZ_SECONDS)

bench: ## Measure the product beside its floors; JSON in build/bench
	@scripts/setup build bench
	@scripts/build release
	@scripts/with-display --own scripts/bench

format: ## Format all C++ files
	@scripts/setup build check
	@scripts/format

clean: ## Remove everything built
	rm -rf build
