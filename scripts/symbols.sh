#!/usr/bin/env bash
# Compares the symbols that the libraries of the platform export with the lists in platform/symbols. docs/releasing.md
# says what a difference means.
#
#   scripts/symbols.sh --check             builds the libraries with the preset release, and compares
#   scripts/symbols.sh --check FOLDER      compares the libraries in FOLDER
#   scripts/symbols.sh --write [FOLDER]    replaces the lists
set -euo pipefail
source "$(dirname -- "$(realpath -- "${BASH_SOURCE[0]}")")/common.sh"

libraries=(libvxdata libvxfoundation libvxserviceframework libvxsettingscore)
lists=$project/platform/symbols

# exported LIBRARY: prints its SONAME, and the names of the symbols that it exports.
exported() {
    local file=$folder/$1.so symbols
    [[ -e $file ]] || fail "$file does not exist: give the folder with the built libraries"
    symbols=$(nm --dynamic --defined-only --format=just-symbols "$file" | sed 's/@.*//' | LC_ALL=C sort -u)
    ! grep -E '^_Z(T.|GV|Z)*N?K?(St|9__gnu_cxx|5boost)' <<<"$symbols" >&2 ||
        fail "$file exports these symbols of std or boost: hide them in cmake/public_exports.map.in"
    readelf --dynamic "$file" | sed -n 's/.*Library soname: \[\(.*\)\]/\1/p'
    c++filt <<<"$symbols" | LC_ALL=C sort -u
}

compare_lists() {
    local library symbols status=0
    for library in "${libraries[@]}"; do
        symbols=$(exported "$library")
        diff --unified=0 --label "$lists/$library" "$lists/$library" --label "$library" - <<<"$symbols" || status=1
    done
    ((status == 0)) || fail "exported symbols differ from the lists: a missing one (-) is an incompatible change, see" \
        "docs/releasing.md; run scripts/symbols.sh --write when all differences are wanted"
    echo "The symbols of ${#libraries[@]} libraries are those in platform/symbols."
}

write_lists() {
    local library symbols
    for library in "${libraries[@]}"; do
        symbols=$(exported "$library")
        printf '%s\n' "$symbols" >"$lists/$library"
    done
}

[[ $# -le 2 && ${1-} =~ ^--(check|write)$ ]] || fail "give --check or --write; see the head of this file"
folder=${2-$project/build/release/lib}
if (($# == 1)); then
    "$project/scripts/setup.sh" --quiet
    alone release build release "${libraries[@]/%/.so}"
fi
if [[ $1 == --check ]]; then compare_lists; else write_lists; fi
