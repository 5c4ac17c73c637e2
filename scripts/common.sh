# shellcheck shell=bash
# Functions for the other scripts: source it, do not run it.

project=$(dirname -- "$(dirname -- "$(realpath -- "${BASH_SOURCE[0]}")")")

fail() {
    printf '%s: %s\n' "$(basename -- "$0")" "$*" >&2
    exit 1
}

# quietly COMMAND [ARGUMENT...]: shows the output on a terminal; elsewhere only if the command fails.
quietly() {
    if [[ -t 2 ]]; then
        "$@" </dev/null >&2
        return
    fi
    local log status=0
    log=$(mktemp)
    "$@" </dev/null >"$log" 2>&1 || status=$?
    if ((status != 0)); then
        cat -- "$log" >&2
    fi
    rm -f -- "$log"
    return "$status"
}

# alone PRESET COMMAND [ARGUMENT...]: runs the command while holding the lock of the preset's build folder.
alone() {
    local folder="$project/build/$1"
    shift
    mkdir -p -- "$folder"
    (
        flock 9
        "$@"
    ) 9>"$folder/.lock"
}

# configure PRESET [FOLDER [OPTION...]]: runs CMake for FOLDER (build/PRESET) unless there is a usable configuration;
# ninja reconfigures when CMake files change.
configure() {
    local folder=${2-$project/build/$1}
    if ! grep -qsxF "CMAKE_HOME_DIRECTORY:INTERNAL=$project" "$folder/CMakeCache.txt"; then
        quietly cmake -S "$project" --preset "$1" -B "$folder" --fresh "${@:3}" # needed after the checkout was moved
    elif [[ ! -e $folder/build.ninja || $project/CMakePresets.json -nt $folder/build.ninja ]]; then
        quietly cmake -S "$project" --preset "$1" -B "$folder" "${@:3}"
    fi
}

# build PRESET [TARGET...]: builds the targets (all).
build() {
    local folder="$project/build/$1"
    configure "$1"
    shift
    if ! ninja -C "$folder" -n "$@" 2>&1 | grep -q 'no work to do'; then
        quietly ninja -C "$folder" "$@"
    fi
}

# build_benchmarks [TARGET...]: builds the targets (all benchmarks) in build/bench with the preset release.
build_benchmarks() {
    local folder="$project/build/bench"
    (($#)) || set -- bench
    "$project/scripts/setup.sh" --bench --quiet
    configure release "$folder" -DVERDIX_BUILD_BENCH=ON -DVERDIX_BUILD_TESTS=OFF
    quietly ninja -C "$folder" "$@"
}

# node_packages FOLDER: installs the npm packages that its package-lock.json lists, unless they are there.
node_packages() {
    if [[ ! $1/node_modules/.package-lock.json -nt $1/package-lock.json ]]; then
        quietly npm ci --prefix "$1"
    fi
}

# read_preset [ARGUMENT...]: sets preset to the NAME of --preset NAME, to dev without arguments; refuses others.
read_preset() {
    preset=dev
    if [[ ${1-} == --preset ]]; then
        preset=${2-}
        [[ -n $preset ]] || fail "--preset needs a name; cmake --list-presets shows them"
        shift 2
    fi
    (($# == 0)) || fail "unknown argument '$1'; see the head of this file"
}
