# The main commands are `make run` and `make test`; on Debian and Ubuntu, each installs what it needs.

PREFIX ?= $(HOME)/.local
BUILD := build/release

.DEFAULT_GOAL := build
.PHONY: help run demo test attack sanitize check format build install uninstall bench fuzz deb clean

help: ## Show this list
	@sed -n 's/^\([a-z]*\):.*## \(.*\)/  make \1\t\2/p' $(MAKEFILE_LIST) | expand -t 20

run: ## Build and start Fernhop in this session; without a display, run the demonstration
	@scripts/run.sh

demo: ## Run the demonstration on a private desktop
	@scripts/run.sh --demo

test: ## Build everything and run every test
	@scripts/test.sh

attack: ## Attack Fernhop with hostile input, shortage and kills
	@scripts/attack.sh

sanitize: ## Run the tests under sanitizers, each fuzzer briefly, and compile each header alone
	@scripts/sanitize.sh

check: ## Run the formatting, layout and static checks
	@scripts/check.sh

format: ## Format all C++ sources in place
	@scripts/checks/format.sh --fix

build: ## Build the version to install
	@scripts/build.sh

install: build ## Install under PREFIX (default: ~/.local)
	@cmake --install $(BUILD) --prefix "$(PREFIX)"

uninstall: ## Remove the installation under PREFIX, and restore the default browser
	@scripts/uninstall.sh "$(PREFIX)"

bench: ## Run the benchmarks
	@scripts/bench.sh

fuzz: ## Run each fuzzer for FERNHOP_FUZZ_SECONDS (default: 60)
	@scripts/fuzz.sh

deb: build ## Make a Debian package in build/
	@scripts/deb.sh

clean: ## Remove all build results
	rm -rf build
