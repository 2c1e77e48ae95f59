# Shared by run, test and .ci/run. To be sourced by bash, with `root` set to the project directory.
# shellcheck shell=bash

# Everything said here goes to stderr: stdout belongs to the program that is run.
note() {
    printf '%s\n' "$*" >&2
}

die() {
    note "error: $*"
    exit 1
}

is_installed() {
    [[ $(dpkg-query -W -f='${db:Status-Abbrev}' "$1" 2>/dev/null) == "ii "* ]]
}

# require_packages <package>...: installs the Debian packages that are missing.
require_packages() {
    if ! command -v dpkg-query >/dev/null || ! command -v apt-get >/dev/null; then
        note "This is not a Debian system; trusting that the equivalents of these are there: $*"
        return 0
    fi

    local package missing=()
    for package in "$@"; do
        is_installed "$package" || missing+=("$package")
    done
    [[ ${#missing[@]} -gt 0 ]] || return 0

    local install="apt-get update && apt-get install -y --no-install-recommends ${missing[*]}"
    local as_root=(env DEBIAN_FRONTEND=noninteractive)
    if [[ $(id -u) -ne 0 ]]; then
        if command -v sudo >/dev/null && { sudo -n true 2>/dev/null || [[ -t 0 && -t 2 ]]; }; then
            as_root=(sudo "${as_root[@]}")
        else
            note "These Debian packages are missing: ${missing[*]}"
            note "Installing them needs root. Run this, with su or with sudo sh -c '...', and try again:"
            note "    su - -c '$install'"
            exit 1
        fi
    fi

    note "Installing Debian packages: ${missing[*]}"
    "${as_root[@]}" sh -c "$install" >&2 </dev/null || die "could not install: ${missing[*]}"
}

# quietly <log file> <command>...: shows the output of the command only if it fails.
quietly() {
    local log=$1 status=0
    shift
    "$@" >"$log" 2>&1 </dev/null || status=$?
    if [[ $status -ne 0 ]]; then
        cat "$log" >&2
        note "error: $* failed with status $status"
    fi
    return "$status"
}

# A build directory remembers where its sources are; one that was copied or moved starts afresh.
configure_preset() {
    local preset=$1 cache=$root/build/$1/CMakeCache.txt fresh=()
    shift
    if [[ -f $cache ]] && ! grep -qxF "CMAKE_HOME_DIRECTORY:INTERNAL=$root" "$cache"; then
        fresh=(--fresh)
    fi
    cmake --preset "$preset" "${fresh[@]}" "$@"
}

# build_preset <preset> [target ...]: configures and builds everything, or the targets named, with a
# log in build/<preset>/. Without the test framework the targets can be built, everything cannot.
build_preset() (
    preset=$1
    shift
    tests=ON targets=()
    if [[ $# -gt 0 ]]; then
        targets=(--target "$@")
        is_installed libgtest-dev || tests=OFF
    fi

    mkdir -p "$root/build/$preset" || die "cannot write to $root/build"
    log=$root/build/$preset/build-log.txt
    cd "$root" || exit
    exec 9>"build/$preset/.lock" || die "cannot write to $root/build/$preset"
    flock 9
    note "Building (preset $preset) ..."
    quietly "$log" configure_preset "$preset" "-DMMSLIB_BUILD_TESTS=$tests" &&
        quietly "$log" cmake --build --preset "$preset" "${targets[@]}"
)

# test_preset <preset> [ctest arguments]: runs the tests of a preset that is built.
test_preset() (
    preset=$1
    shift
    cd "$root" || exit
    ctest --preset "$preset" --output-on-failure -j2 "$@"
)

build_packages=(g++ cmake ninja-build libcli11-dev)
test_packages=("${build_packages[@]}" libgtest-dev pkg-config)
