#!/bin/bash
# Packs what was built in build/release as a Debian package, build/fernhop_VERSION_ARCHITECTURE.deb.
set -euo pipefail

cd "$(dirname "${BASH_SOURCE[0]}")/.."
cd build/release
cpack -G DEB -B ..
