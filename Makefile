# What a user and a developer call. Each target installs the Debian packages that it needs first.

PRESET ?= dev
PREFIX ?= /usr/local

.PHONY: run install uninstall deb test test-desktops soak check bench fuzz tidy format clean

run: ## Builds the program and starts it; without a display, takes a tour of it on a private desktop.
	@tools/install-packages run $(if $(DISPLAY),,desktop)
	@cmake --preset release --log-level=WARNING
	@cmake --build --preset release
	@$(if $(DISPLAY),build/release/tavropro,tools/desktop-session -- tools/tour build/tour)

install: ## Builds and installs; PREFIX and DESTDIR as usual.
	@tools/install-packages run
	@cmake --preset install --log-level=WARNING -DCMAKE_INSTALL_PREFIX=$(PREFIX)
	@cmake --build --preset install
	@cmake --install build/install

uninstall: ## Removes what "make install" has put there, with the same DESTDIR.
	@packaging/uninstall build/install/install_manifest.txt "$(DESTDIR)"

deb: ## Builds the Debian package into build/deb.
	@tools/install-packages run package
	@packaging/make-deb build/deb

test: ## Builds and runs every test; PRESET=asan for the sanitizers.
	@tools/install-packages run desktop test
	@cmake --preset $(PRESET) --log-level=WARNING
	@cmake --build --preset $(PRESET)
	@ctest --preset $(PRESET)

test-desktops: ## Two scenarios on each of nine desktops; writes the table of README.md.
	@tools/install-packages run desktop test desktops
	@cmake --preset $(PRESET) --log-level=WARNING
	@cmake --build --preset $(PRESET)
	@ctest --test-dir build/$(PRESET) -L '^desktops$$' -j 2 --output-on-failure; outcome=$$?; \
		tools/desktop-matrix && exit $$outcome

soak: ## Presents 2000 times while windows, devices and screens come and go.
	@tools/install-packages run desktop test
	@cmake --preset $(PRESET) --log-level=WARNING
	@cmake --build --preset $(PRESET)
	@TAVRO_SAMPLE_WINDOW=build/$(PRESET)/sample-window TAVRO_PRESENTATIONS=2000 \
		tools/desktop-session -- build/$(PRESET)/soak_test

check: ## What a maintainer runs before merging, besides the tests.
	@tools/install-packages run desktop test package
	@tools/check
	@packaging/validate
	@cmake --preset dev --log-level=WARNING
	@cmake --build --preset dev
	@tools/tidy build/dev --changed
	@cmake --preset asan --log-level=WARNING
	@cmake --build --preset asan --target without_desktop
	@ctest --preset asan-without-desktop
	@cmake --preset offline --log-level=WARNING
	@cmake --build --preset offline
	@cmake --preset release --log-level=WARNING
	@cmake --build --preset release
	@tools/hardening build/release
	@cmake --preset bench --log-level=WARNING
	@cmake --build --preset bench

bench: ## Measures, and writes bench/RESULTS.md.
	@tools/install-packages run desktop test
	@bench/run

fuzz: ## Feeds every decoder with random bytes, a minute each.
	@tools/install-packages run test
	@cmake --preset fuzz --log-level=WARNING
	@cmake --build --preset fuzz
	@fuzz/run 60

tidy: ## clang-tidy over the sources.
	@tools/install-packages run test
	@cmake --preset $(PRESET) --log-level=WARNING
	@cmake --build --preset $(PRESET)
	@tools/tidy build/$(PRESET)

format: ## Formats the sources.
	@git ls-files -z --cached --others --exclude-standard '*.h' '*.cpp' | xargs -0 clang-format -i

clean:
	@rm -rf build
