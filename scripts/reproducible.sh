#!/usr/bin/env bash
# Builds the bundle twice from the last commit, in different folders, time zones and languages and without ccache, and
# compares the two files byte for byte.
set -euo pipefail
source "$(dirname -- "$(realpath -- "${BASH_SOURCE[0]}")")/common.sh"

bundle=libcom_tarnwick_verdix_factory_settings.so
folder=$(mktemp -d)
trap 'rm -rf -- "$folder"' EXIT

# build_copy NAME [VARIABLE=VALUE...]
build_copy() {
    local copy=$folder/$1
    shift
    git -C "$project" archive --prefix="${copy##*/}/" HEAD | tar -x -C "$folder"
    quietly env "$@" cmake -S "$copy" --preset release -DVERDIX_BUILD_TESTS=OFF -DCCACHE_PROGRAM=
    quietly env "$@" CCACHE_DISABLE=1 ninja -C "$copy/build/release" com_tarnwick_verdix_factory_settings
}

"$project/scripts/setup.sh" --quiet
build_copy one LC_ALL=C TZ=UTC
build_copy another_and_longer_name LC_ALL=C.UTF-8 TZ=Asia/Kolkata
cmp -- "$folder"/{one,another_and_longer_name}/build/release/lib/verdix/bundles/"$bundle" ||
    fail "two builds of one commit differ: look for paths, times or an order that changes (diffoscope shows where)"
sha256sum -- "$folder/one/build/release/lib/verdix/bundles/$bundle" | sed "s|  .*|  $bundle, twice|"
