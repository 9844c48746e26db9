# shellcheck shell=bash
# What the scripts share; they source it after changing to the top folder.

jobs="$(nproc 2>/dev/null || echo 2)"
stageStarted=$SECONDS
stageName=

# Says what begins, and how long what came before took.
stage() {
    endStage
    stageName="$1"
    stageStarted=$SECONDS
    printf '\n== %s\n' "$stageName"
}

endStage() {
    if [[ -n "$stageName" ]]; then
        printf '== %s: %d s\n' "$stageName" $((SECONDS - stageStarted))
        stageName=
    fi
}

# configure PRESET [cmake argument...]
configure() {
    if command -v ccache >/dev/null; then
        # Compilations are shared between checkouts and presets that differ in their folder only.
        export CCACHE_BASEDIR="${CCACHE_BASEDIR:-$PWD}" CCACHE_NOHASHDIR=1
        export CMAKE_C_COMPILER_LAUNCHER=ccache CMAKE_CXX_COMPILER_LAUNCHER=ccache CMAKE_OBJCXX_COMPILER_LAUNCHER=ccache
    fi
    cmake --preset "$@"
}

# build PRESET [target...]
build() {
    ninja -C "build/$1" -j "$jobs" "${@:2}"
}

# runTests PRESET [ctest argument...]
runTests() {
    ctest --test-dir "build/$1" --output-on-failure --no-tests=error -j "$jobs" "${@:2}"
}
