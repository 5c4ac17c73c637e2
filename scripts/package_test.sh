#!/usr/bin/env bash
# Installs the project, moves the installation, builds Debian packages, and uses each of them from another project;
# then builds only the module for an external platform and compares the trees.
#
#   scripts/package_test.sh           with the embedded service framework
#   scripts/package_test.sh PREFIX    the installations also with the CppMicroServices that is installed in PREFIX
set -euo pipefail
source "$(dirname -- "$(realpath -- "${BASH_SOURCE[0]}")")/common.sh"
[[ $# == 0 || ($# == 1 && -d $1) ]] || fail "give at most the installation prefix of CppMicroServices"

"$project/scripts/setup.sh" --ci --quiet
work=$project/build/package # a fixed name, because ccache depends on paths
setting=verdix.commandwindow.NumericFormat
sample_bundle=$project/build/dev/lib/libvx_sample_bundle.so
export XDG_CONFIG_HOME=$work/none XDG_CONFIG_DIRS=$work/none CMAKE_GENERATOR=Ninja

alone dev build dev vx_sample_bundle

# expect WHAT WANTED FOUND
expect() {
    [[ $3 == "$2" ]] || fail "$1 printed '$3' instead of '$2'"
}

# build_project SOURCE FOLDER [OPTION...]
build_project() {
    local launcher=()
    type ccache &>/dev/null && launcher=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
    quietly cmake -S "$1" -B "$2" "${launcher[@]}" -DCMAKE_CXX_FLAGS="-Wall -Wextra -Werror" "${@:3}"
    quietly cmake --build "$2"
}

# use_by_cmake PREFIX FOLDER [FRAMEWORK]
use_by_cmake() {
    build_project "$project/tests/consumer" "$2" -DCMAKE_PREFIX_PATH="$1${3:+;$3}"
    expect "the consumer built by CMake from $1" "$setting = short" \
        "$("$2/consumer" "$(<"$2/module_file")" "$2/libnotation.so" $setting)"
}

# use_by_pkg_config PREFIX FOLDER: the bundle of the consumer in FOLDER is used
use_by_pkg_config() {
    local libraries
    libraries=$(dirname -- "$(find "$1" -name pkgconfig)")
    local -x PKG_CONFIG_PATH=$libraries/pkgconfig
    local flags
    read -ra flags < <(pkg-config --cflags --libs verdix-factory-settings)
    c++ -std=c++20 -I"$project/tests/consumer" "$project/tests/consumer/main.cpp" "${flags[@]}" -o "$work/plain_consumer"
    expect "the consumer built by pkg-config from $1" "$setting = short" "$(LD_LIBRARY_PATH=$libraries \
        "$work/plain_consumer" "$(pkg-config --variable=bundle verdix-factory-settings)" "$2/libnotation.so" $setting)"
}

# use_command PREFIX
use_command() {
    expect "$1/bin/vxsettings" short "$("$1/bin/vxsettings" get $setting)"
    [[ $("$1/bin/vxsettings" describe $setting) == *"  meaning  "* ]] || fail "$1/bin/vxsettings has no catalog"
    "$1/bin/vxsettings" doctor >"$work/doctor" || fail "$1/bin/vxsettings reports a problem: $(<"$work/doctor")"
    ! grep -E "$project/build/(release|debian|system)/" "$work/doctor" ||
        fail "$1/bin/vxsettings uses files of the build folder"
}

# check_data_files PREFIX FOLDER: FOLDER is that of the zsh functions, which differs on Debian
check_data_files() {
    local data=$1/share shell file
    [[ -n $(find "$data/man/man1" -name 'vxsettings.1*' -size +1k) ]] || fail "$1 has no manual page"
    LC_ALL=C "$1/bin/vxsettings" export --format json-schema --factory | cmp - "$data/verdix/settings.schema.json"
    python3 -m json.tool "$data/verdix/settings.schema.json" >/dev/null
    for shell in bash:bash-completion/completions/vxsettings fish:fish/vendor_completions.d/vxsettings.fish \
        "zsh:zsh/$2/_vxsettings"; do
        file=$data/${shell#*:}
        "$1/bin/vxsettings" completion "${shell%%:*}" | cmp - "$file"
    done
    python3 "$project/tests/tool/completion/completion_test.py" "$1/bin/vxsettings" "$sample_bundle" zsh \
        "fpath=('$data/zsh/$2' \$fpath); autoload -U compinit && compinit -u"
}

# check_components PREFIX [FRAMEWORK]
check_components() {
    local refusal
    ! refusal=$(cmake -S "$project/tests/consumer" -B "$work/refused" -DCMAKE_PREFIX_PATH="$1${2:+;$2}" \
        -DCOMPONENTS="Module;Tree" 2>&1) || fail "the CMake package accepts a component that does not exist"
    [[ $(tr -s '[:space:]' ' ' <<<"$refusal") == *"no component Tree; this installation has: Module, Interfaces, Platform"* ]] ||
        fail "the error for a missing component does not list the components: $refusal"
}

# Prints the tree in the format of recording_host: path, kind and alias target of each node.
recorded_tree() {
    "$1/bin/vxsettings" export --format json | python3 -c '
import json, sys

for node in json.load(sys.stdin)["nodes"]:
    kind = "group" if node["node"] == "group" else "setting"
    print(node["path"], kind, node["aliasTarget"] or "")'
}

# Builds only the module, for an external platform.
use_other_platform() {
    build_project "$project/tests/external_platform" "$work/platform" -DCMAKE_PREFIX_PATH="$1"
    quietly cmake --install "$work/platform" --prefix "$work/platform_installed"
    build_project "$project" "$work/module" -DVERDIX_PLATFORM=external -DCMAKE_BUILD_TYPE=Debug \
        -DCMAKE_PREFIX_PATH="$work/platform_installed;$1"
    recorded_tree "$1" >"$work/expected_record"
    "$work/platform/recording_host" "$work"/module/lib/verdix/bundles/* >"$work/record"
    diff "$work/expected_record" "$work/record" ||
        fail "the tree of the module differs on the external platform"
    ! ldd "$work"/module/lib/verdix/bundles/* | grep -E 'libvx(data|foundation|settingscore)' ||
        fail "the module built for an external platform is linked with the embedded platform"
}

# use_installation BUILD NAME [FRAMEWORK]: installs, moves, and uses the installation before and after.
use_installation() {
    local first=$work/$2 moved=$work/$2_moved consumer=$work/$2_consumer
    quietly cmake --install "$1" --prefix "$first" --strip
    use_command "$first"
    check_data_files "$first" site-functions
    check_components "$first" "${@:3}"
    use_by_cmake "$first" "$consumer" "${@:3}"
    quietly cmake --build "$consumer" --target headers
    use_by_pkg_config "$first" "$consumer"

    mv -- "$first" "$moved"
    use_command "$moved"
    expect "the consumer built before the installation moved" "$setting = short" "$(LD_LIBRARY_PATH=$moved/lib \
        "$consumer/consumer" "$moved"/lib/verdix/bundles/* "$consumer/libnotation.so" $setting)"
    use_by_cmake "$moved" "${consumer}_of_moved" "${@:3}"
    use_by_pkg_config "$moved" "${consumer}_of_moved"
}

# build_variant PRESET FOLDER [OPTION...]
build_variant() {
    quietly cmake -S "$project" --preset "$1" -B "$project/build/$2" -DVERDIX_BUILD_TESTS=OFF "${@:3}"
    quietly ninja -C "$project/build/$2"
}

use_debian_packages() {
    local package root=$work/root/usr
    build_variant debian debian
    (umask 077 && quietly cpack --config "$project/build/debian/CPackConfig.cmake" -B "$work/package") # must not matter
    quietly lintian --allow-root --fail-on error,warning "$work"/package/*.deb
    for package in "$work"/package/*.deb; do
        dpkg-deb --extract "$package" "$work/root"
    done
    use_command "$root"
    check_data_files "$root" vendor-completions
    use_by_cmake "$root" "$work/consumer_of_package"
    use_by_pkg_config "$root" "$work/consumer_of_package"
}

test_package() {
    build_variant release release
    "$project/scripts/symbols.sh" --check "$project/build/release/lib"
    rm -rf -- "$work"
    mkdir -- "$work"
    use_installation "$project/build/release" embedded
    use_other_platform "$work/embedded_moved"
    use_debian_packages
    if (($#)); then
        build_variant release system -DVERDIX_SERVICE_FRAMEWORK=system -DCppMicroServices_ROOT="$1"
        use_installation "$project/build/system" system "$1"
    fi
    echo "Tested installations, moved installations and packages with the command, CMake and pkg-config;" \
        "$(wc -l <"$work/record") nodes are the same on the external platform."
}

alone release test_package "$@"
