# shellcheck shell=bash disable=SC2034
# What ./run, ./test and ./bench share: the packages they need, and the build. Sourced, not run.
#
# Missing packages are installed when the script runs as root; any other user is told the one command to
# run. Packages that only make things better are installed where they exist and otherwise passed over.

required_packages=(g++ cmake ninja-build qt6-base-dev qt6-svg-dev libsqlite3-dev libcli11-dev
                   nlohmann-json3-dev libtomlplusplus-dev libpugixml-dev)
test_packages=(libgtest-dev libgmock-dev python3 gzip)
bench_packages=(libbenchmark-dev sqlite3)
package_packages=(debhelper dpkg-dev fakeroot lintian xz-utils python3)
# They judge what is installed beside the programs; the tests of it are skipped without them.
checker_packages=(desktop-file-utils appstream mandoc zsh fish x11-utils)
# Faster builds, independent readers for tests and benchmarks, a display for machines without one, fonts.
helpful_packages=(ccache lld mdbtools libxml2-utils xvfb xauth fonts-dejavu-core
                  pngquant)

say() { printf '%s\n' "$*" >&2; }

missing_of() {
    local package
    for package in "$@"; do
        [ "$(dpkg-query -W -f '${db:Status-Abbrev}' "$package" 2>/dev/null)" = "ii " ] || echo "$package"
    done
}

# ensure_packages PACKAGE...: all of them are there afterwards, or the script ends and says what to do.
ensure_packages() {
    if ! command -v dpkg-query >/dev/null || ! command -v apt-get >/dev/null; then
        say "No Debian package tools here; the build needs what these Debian packages hold: $*"
        return 0
    fi
    local missing helpful
    mapfile -t missing < <(missing_of "$@")
    mapfile -t helpful < <(missing_of "${helpful_packages[@]}")
    if [ "${#missing[@]}" -eq 0 ] && [ "${#helpful[@]}" -eq 0 ]; then return 0; fi
    if [ "$(id -u)" -ne 0 ]; then
        if [ "${#missing[@]}" -eq 0 ]; then return 0; fi
        say "Some packages are missing. Please run:"
        say "    sudo apt-get update && sudo apt-get install -y --no-install-recommends ${missing[*]}"
        say "and start this script again."
        exit 1
    fi
    install_packages
}

# Uses the arrays `missing` and `helpful` of ensure_packages.
install_packages() {
    export DEBIAN_FRONTEND=noninteractive
    say "Installing packages: ${missing[*]} ${helpful[*]}"
    if ! apt-get update -qq >&2; then say "apt-get update failed; trying with the lists at hand."; fi
    if [ "${#missing[@]}" -gt 0 ]; then
        if ! apt-get install -y -qq --no-install-recommends "${missing[@]}" >&2; then
            say "These packages could not be installed: ${missing[*]}"
            exit 1
        fi
    fi
    local package
    for package in "${helpful[@]}"; do
        apt-get install -y -qq --no-install-recommends "$package" >&2 ||
            say "Going on without $package."
    done
}

# build_preset PRESET [TARGET...]: configures and builds; the script ends when either fails.
build_preset() {
    local preset=$1
    shift
    cmake --preset "$preset" >&2 || { say "Configuring preset $preset failed."; exit 1; }
    local targets=()
    if [ "$#" -gt 0 ]; then targets=(--target "$@"); fi
    cmake --build --preset "$preset" -j "$(nproc)" "${targets[@]}" >&2 ||
        { say "Building preset $preset failed."; exit 1; }
}
