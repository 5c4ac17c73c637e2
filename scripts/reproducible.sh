#!/usr/bin/env bash
# Builds the bundle again, in another folder, with another locale and time zone and without ccache, and compares it
# byte for byte with the one in build/release.
set -euo pipefail
source "$(dirname -- "$(realpath -- "${BASH_SOURCE[0]}")")/common.sh"
(($# == 0)) || fail "unknown argument '$1'; see the head of this file"

bundle=lib/verdix/bundles/libcom_tarnwick_verdix_factory_settings.so
copy=$(mktemp -d)
trap 'rm -rf -- "$copy"' EXIT

"$project/scripts/setup.sh" --quiet
alone release build release com_tarnwick_verdix_factory_settings
git -C "$project" ls-files -z | tar -c -C "$project" --null -T - | tar -x -C "$copy"
export LC_ALL=C.UTF-8 TZ=Asia/Kolkata CCACHE_DISABLE=1
quietly cmake -S "$copy" --preset release -B "$copy/elsewhere" -DVERDIX_BUILD_TESTS=OFF -DCCACHE_PROGRAM=
quietly ninja -C "$copy/elsewhere" com_tarnwick_verdix_factory_settings
cmp -- "$project/build/release/$bundle" "$copy/elsewhere/$bundle" ||
    fail "two builds of the same sources differ: look for paths, times or unstable orders (diffoscope shows where)"
sha256sum -- "$copy/elsewhere/$bundle" | sed "s|  .*|  $bundle, reproduced|"
