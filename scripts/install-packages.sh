# SPDX-License-Identifier: MIT
# Sourced by the other scripts: installs the Debian packages that are missing.
# shellcheck shell=bash

# install_packages NAME...
install_packages()
{
    local missing=()
    local name
    for name in "$@"; do
        [ "$(dpkg-query -W -f '${db:Status-Status}' "$name" 2>/dev/null)" = installed ] \
            || missing+=("$name")
    done
    [ ${#missing[@]} -eq 0 ] && return 0

    local as_root=()
    if [ "$(id -u)" -ne 0 ]; then
        if ! command -v sudo >/dev/null; then
            echo "These packages are missing, and there is no sudo to install them:" >&2
            echo "  ${missing[*]}" >&2
            return 1
        fi
        as_root=(sudo)
    fi
    echo "Installing ${missing[*]}" >&2
    "${as_root[@]}" apt-get update -qq
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
        apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
}

# Everything that a build needs, and the terminal's window.
build_packages=(
    ca-certificates ccache cmake g++ libgl-dev ninja-build
    qt6-base-dev qt6-base-dev-tools qt6-l10n-tools qt6-svg-dev
    qt6-translations-l10n qt6-tools-dev qt6-tools-dev-tools fonts-dejavu-core
)
# What the test suite needs beyond that.
test_packages=(
    locales tzdata clang-format xvfb openbox libxtst-dev mawk gawk python3-pandas
    python3-dask python3-distributed dpkg-dev file appstream desktop-file-utils lintian lld clang
)
# What scripts/check-style.sh looks at changed files with, and scripts/coverage.sh counts with.
tidy_packages=(clang-tidy clang-tidy-19)
coverage_packages=(gcovr)
# What the sanitizers and the fuzzer are built with: it takes half as long as g++ does, and sees other faults.
clang_packages=(clang llvm libclang-rt-14-dev)
# What scripts/bench.sh measures with and beside.
bench_packages=(libbenchmark-dev mawk python3-pandas time)

# Where npm puts what the store is read with beside our own programs; below the project's root.
peers_folder=build/peers
duckdb_package=@duckdb/node-api@1.5.6-r.1 # one version, so that tables can be compared

install_duckdb()
{
    [ -d "$peers_folder/node_modules/@duckdb/node-api" ] && return 0
    command -v npm >/dev/null || install_packages nodejs npm
    mkdir -p "$peers_folder"
    npm install --prefix "$peers_folder" --no-audit --no-fund --loglevel=error "$duckdb_package" >&2
}
