# The main commands are `make run` and `make test`; on Debian and Ubuntu, each installs what it needs.

PREFIX ?= $(HOME)/.local
BUILD := build/release

.DEFAULT_GOAL := build
.PHONY: help run demo test check format build install uninstall bench fuzz deb clean

help: ## Show this list
	@sed -n 's/^\([a-z]*\):.*## \(.*\)/  make \1\t\2/p' $(MAKEFILE_LIST) | expand -t 20

run: ## Build and start Fernhop in this session; with no display, the demonstration
	@scripts/run.sh

demo: ## The demonstration on a private desktop, also where there is a display
	@scripts/run.sh --demo

test: ## Build everything and run every test
	@scripts/test.sh

check: ## Formatting, layout and static checks
	@scripts/check.sh

format: ## Format all C++ sources in place
	@scripts/checks/format.sh --fix

build: ## Build what gets installed
	@scripts/build.sh

install: build ## Install under PREFIX (~/.local when not given)
	@cmake --install $(BUILD) --prefix "$(PREFIX)"

uninstall: ## Remove what `make install` put under PREFIX; hands the browser role back first
	@scripts/uninstall.sh "$(PREFIX)"

bench: ## Run the benchmarks
	@scripts/bench.sh

fuzz: ## Run each fuzzer for FERNHOP_FUZZ_SECONDS (60 when not given)
	@scripts/fuzz.sh

deb: build ## Make a Debian package in build/
	@scripts/deb.sh

clean: ## Remove everything that was built
	rm -rf build
