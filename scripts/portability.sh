#!/usr/bin/env bash
# Compiles the module, without linking, for Windows (MinGW-w64) and with libc++. docs/portability.md describes what
# this covers.
#
#   scripts/portability.sh
set -euo pipefail
source "$(dirname -- "$(realpath -- "${BASH_SOURCE[0]}")")/common.sh"

(($# == 0)) || fail "unknown argument '$1'; see the head of this file"
"$project/scripts/setup.sh" --ci --quiet
cd -- "$project"

# Boost's headers are the only system headers that can be used for all targets.
headers=$(mktemp -d)
trap 'rm -rf -- "$headers"' EXIT
ln -s /usr/include/boost "$headers/boost"

# Compiles all sources of the module as one, because most of the time is spent on the headers that they share.
compile() {
    printf '#include <%s>\n' builder/*.cpp migration/*.cpp tree/*.cpp component/*.cpp |
        "$@" -std=c++20 -x c++ -fsyntax-only -Wall -Wextra -Wpedantic -Werror -I. -Iinterfaces \
            -Iplatform/service_framework/include -isystem "$headers" -
}

echo "Windows, $(x86_64-w64-mingw32-g++-posix --version | head -n 1)"
compile x86_64-w64-mingw32-g++-posix
echo "libc++, $(clang++-14 --version | head -n 1)"
compile clang++-14 -stdlib=libc++
