#!/usr/bin/env bash
# Installs the project, moves the installation, builds the Debian package, and uses each of them from another project;
# then builds only the module for an external platform and compares the trees.
set -euo pipefail
source "$(dirname -- "$(realpath -- "${BASH_SOURCE[0]}")")/common.sh"
(($# == 0)) || fail "unknown argument '$1'; see the head of this file"

"$project/scripts/setup.sh" --ci --quiet
folder=$project/build/release
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

# use_by_cmake PREFIX FOLDER
use_by_cmake() {
    build_project "$project/tests/consumer" "$2" -DCMAKE_PREFIX_PATH="$1"
    expect "the consumer built by CMake from $1" short "$("$2/consumer" "$(<"$2/bundle_file")" $setting)"
}

# use_by_pkg_config PREFIX
use_by_pkg_config() {
    local -x PKG_CONFIG_PATH=$1/lib/pkgconfig
    local flags
    read -ra flags < <(pkg-config --cflags --libs verdix-factory-settings)
    c++ -std=c++20 "$project/tests/consumer/main.cpp" "${flags[@]}" -o "$work/plain_consumer"
    expect "the consumer built by pkg-config from $1" short "$(LD_LIBRARY_PATH=$1/lib \
        "$work/plain_consumer" "$(pkg-config --variable=bundle verdix-factory-settings)" $setting)"
}

# use_command PREFIX
use_command() {
    expect "$1/bin/vxsettings" short "$("$1/bin/vxsettings" get $setting)"
    [[ $("$1/bin/vxsettings" describe $setting) == *"  meaning  "* ]] || fail "$1/bin/vxsettings has no catalog"
    "$1/bin/vxsettings" doctor >"$work/doctor" || fail "$1/bin/vxsettings reports a problem: $(<"$work/doctor")"
    ! grep -F -e "$folder/bin" -e "$folder/lib" "$work/doctor" || fail "$1/bin/vxsettings uses files of the build folder"
}

# check_data_files PREFIX FOLDER: FOLDER is that of the zsh functions, which differs on Debian
check_data_files() {
    local data=$1/share shell file
    [[ -s $data/man/man1/vxsettings.1 ]] || fail "$1 has no manual page"
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

check_components() {
    local refusal
    ! refusal=$(cmake -S "$project/tests/consumer" -B "$work/refused" -DCMAKE_PREFIX_PATH="$1" \
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

test_package() {
    quietly cmake -S "$project" --preset release -DVERDIX_BUILD_TESTS=OFF
    quietly ninja -C "$folder"
    rm -rf -- "$work"
    mkdir -- "$work"

    quietly cmake --install "$folder" --prefix "$work/first" --strip
    use_command "$work/first"
    check_data_files "$work/first" site-functions
    check_components "$work/first"
    use_by_cmake "$work/first" "$work/consumer"
    quietly cmake --build "$work/consumer" --target headers
    use_by_pkg_config "$work/first"

    mv -- "$work/first" "$work/moved"
    use_command "$work/moved"
    expect "the consumer built before the installation moved" short "$(LD_LIBRARY_PATH=$work/moved/lib \
        "$work/consumer/consumer" "$work"/moved/lib/verdix/bundles/* $setting)"
    use_by_cmake "$work/moved" "$work/consumer_of_moved"
    use_by_pkg_config "$work/moved"

    quietly cpack --config "$folder/CPackConfig.cmake" -B "$work/package"
    dpkg-deb --extract "$work"/package/*.deb "$work/root"
    use_command "$work/root/usr"
    check_data_files "$work/root/usr" vendor-completions
    use_by_cmake "$work/root/usr" "$work/consumer_of_package"
    use_other_platform "$work/moved"
    echo "Tested the installation, the moved installation and the package with the command, CMake and pkg-config;" \
        "$(wc -l <"$work/record") nodes are the same on the external platform."
}

alone release test_package
