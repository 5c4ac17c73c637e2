#!/usr/bin/env bash
# Installs the Debian packages that the project needs; does nothing if they are installed.
#
#   scripts/setup.sh             compilers and libraries, to build and to test
#   scripts/setup.sh --ci        also what the CI needs: git, pre-commit, clang, clang-format, clang-tidy, shellcheck,
#                                Chromium and Node, python3-jsonschema, the shells with completion support,
#                                lintian, MinGW-w64, libc++, Doxygen and man
#   scripts/setup.sh --coverage  also what scripts/coverage.sh needs: gcovr
#   scripts/setup.sh --bench     also what the benchmarks need: Google Benchmark, valgrind, and GLib, Qt and
#                                nlohmann JSON for comparison
#   scripts/setup.sh --quiet     prints nothing if there is nothing to install
set -euo pipefail
source "$(dirname -- "$(realpath -- "${BASH_SOURCE[0]}")")/common.sh"

packages=(
    g++ binutils cmake ninja-build ccache pkg-config python3 help2man
    libboost1.81-dev libboost-log1.81-dev libboost-json1.81-dev
    libcli11-dev libgtest-dev libgmock-dev libminizip-dev zlib1g-dev
    dpkg-dev file
)
check_packages=(
    git pre-commit clang-14 clang-format-14 clang-tidy-14 libclang-rt-14-dev shellcheck python3-jsonschema chromium
    zsh fish lintian g++-mingw-w64-x86-64-posix libc++-14-dev libc++abi-14-dev
    doxygen groff-base man-db
)
bench_packages=(
    libbenchmark-dev valgrind libglib2.0-dev libglib2.0-bin qtbase5-dev nlohmann-json3-dev
)
# Node is often installed from another source, which conflicts with Debian's package.
type node npm &>/dev/null || check_packages+=(nodejs npm)

quiet=false
for argument in "$@"; do
    case $argument in
    --ci) packages+=("${check_packages[@]}") ;;
    --bench) packages+=("${bench_packages[@]}") ;;
    --coverage) packages+=(gcovr) ;;
    --quiet) quiet=true ;;
    *) fail "unknown argument '$argument'; see the head of this file" ;;
    esac
done

find_missing() {
    local installed
    installed=$(dpkg-query -W -f='${binary:Package} ${db:Status-Status}\n' "${packages[@]}" 2>/dev/null |
        sed -n 's/^\([^: ]*\).* installed$/\1/p') || true
    mapfile -t missing < <(comm -23 <(printf '%s\n' "${packages[@]}" | sort) <(sort <<<"$installed"))
}

# Sets as_root, the prefix for commands that need root.
choose_privilege() {
    as_root=()
    if ((EUID != 0)); then
        command -v sudo >/dev/null ||
            fail "sudo is not installed and you are not root; ask an administrator to install: ${missing[*]}"
        as_root=(sudo)
    fi
}

install_missing() {
    echo "Installing from Debian: ${missing[*]}"
    quietly "${as_root[@]}" apt-get update -qq
    quietly "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
        apt-get install -qq --yes --no-install-recommends "${missing[@]}" ||
        fail "apt-get cannot install these packages (the project supports Debian 12): ${missing[*]}"
}

type dpkg-query apt-get &>/dev/null ||
    fail "this is not Debian: install the equivalents of: ${packages[*]}; then use cmake --preset dev"

find_missing
if ((${#missing[@]} == 0)); then
    $quiet || echo "Nothing to do: all ${#packages[@]} packages are installed."
    exit
fi
choose_privilege
mkdir -p -- "$project/build"
exec 9>"$project/build/.setup_lock"
flock 9
find_missing  # another run may have installed them while this one waited
((${#missing[@]} == 0)) || install_missing
