#!/bin/bash
# Packages the build in build/release as build/fernhop_VERSION_ARCHITECTURE.deb.
set -euo pipefail

cd "$(dirname "${BASH_SOURCE[0]}")/.."
cd build/release
cpack -G DEB -B ..
