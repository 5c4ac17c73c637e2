#!/usr/bin/env bash
# Publishes the coming release: records its baseline, closes its list of release changes and opens the next one, turns
# docs/changed-settings into a section of CHANGELOG.md, raises the version, and commits all of it for review.
#
#   scripts/release.sh R2026b
#   scripts/release.sh R2026b --checks "scripts/test.sh"    runs these checks instead of .ci/run, for a rehearsal
#
# Environment variables on which factory values depend have no effect. Nothing is written unless all checks pass; if a
# later step fails, the checkout is restored.
set -euo pipefail
source "$(dirname -- "$(realpath -- "${BASH_SOURCE[0]}")")/common.sh"
cd -- "$project"

table=migration/release_changes.cpp
changed=docs/changed-settings
notes_file=CHANGELOG.md

# next_release R2026a: prints the release that follows.
next_release() {
    local year=${1:1:4}
    if [[ $1 == *a ]]; then echo "R${year}b"; else echo "R$((year + 1))a"; fi
}

# last_baseline: prints the name of the newest baseline, without patch releases.
last_baseline() {
    local files=(docs/baseline/R?????.json)
    basename -- "${files[-1]}" .json
}

# newest_tree: prints the newest baseline of the last release, which may be that of a patch release.
newest_tree() {
    local patches=(docs/baseline/"$last".*.json)
    if [[ -e ${patches[0]} ]]; then
        printf '%s\n' "${patches[@]}" | sort --version-sort | tail -n 1
    else
        echo "docs/baseline/$last.json"
    fi
}

require_ready() {
    [[ $release == "$(next_release "$last")" ]] || fail "$release does not follow $last, the newest in docs/baseline:" \
        "the next release is $(next_release "$last")"
    grep -q "{\"$release\", ${release,}}" "$table" || fail "$table has no list for $release"
    [[ -z $(git status --porcelain) ]] || fail "the checkout has changes: commit or remove them"
}

# Writes the baseline and its checksum.
record_baseline() {
    scripts/run.sh export --format baseline -o "docs/baseline/$release.json"
    (cd docs/baseline && cksum -- "$release.json" >>checksums)
}

# Writes a list for the release after this one. An empty list of this release is dropped.
open_next_list() {
    if grep -q "^constexpr Changes ${release,} = {};" "$table"; then
        sed -i "s/\b${release,}\b/${next,}/g; s/\"$release\"/\"$next\"/" "$table"
    else
        sed -i "s/^struct Release$/constexpr Changes ${next,} = {};\n\n&/; s/{\"$release\", ${release,}},/& {\"$next\", ${next,}},/" "$table"
    fi
    clang-format-14 -i "$table"
}

raise_version() {
    sed -i "/^project(/s/VERSION $version /VERSION $next_version /" CMakeLists.txt
}

# Moves what is unreleased into a section of this release, and adds the changes of the settings.
write_changelog() {
    local notes
    notes=$(mktemp)
    scripts/run.sh diff "$published_tree" "docs/baseline/$release.json" --format markdown \
        --changed-settings "$changed" >"$notes"
    awk -v title="## [$next_version] - $(date +%F)" -v heading="### Settings of $release" -v notes="$notes" '
        function write_settings() {
            if (in_section) {
                if ((getline line < notes) > 0) {
                    print heading "\n\n" line
                    while ((getline line < notes) > 0) print line
                    print ""
                }
                in_section = 0
            }
        }
        /^## \[Unreleased\]/ { print $0 "\n\n" title; in_section = 1; next }
        /^## / { write_settings() }
        { print; last = $0 }
        END { if (in_section && last != "") print ""; write_settings() }
    ' "$notes_file" | sed -e :a -e '/^\n*$/{$d;N;ba' -e '}' >"$notes.all"
    cp -- "$notes.all" "$notes_file"
    rm -- "$notes" "$notes.all"
}

# Removes all lines but the description at the top.
empty_changed_settings() {
    sed -i '/^[^#]/d' "$changed"
    sed -i -e :a -e '/^\n*$/{$d;N;ba' -e '}' "$changed"
}

# The examples are about the coming release and the last one; those of conversions, about the newest.
renew_documents() {
    sed -i "s/\b$release\b/$next/g; s/\b${release,}\b/${next,}/g; s/\b$last\b/$release/g" docs/moving-a-setting.md
    sed -i "/^## Values of another class/,/^## Guarantees/s/\b$last\b/$release/g" docs/migration.md
}

restore() {
    local status=$?
    if ((status != 0)); then
        git reset --quiet --hard
        git clean --quiet --force docs/baseline
        echo "release.sh: failed, and restored the checkout" >&2
    fi
}

checks=.ci/run
release=${1-}
if [[ ${2-} == --checks && -n ${3-} && $# == 3 ]]; then
    checks=$3
elif (($# != 1)); then
    fail "usage: scripts/release.sh RELEASE [--checks COMMAND]"
fi
[[ $release =~ ^R[0-9]{4}[ab]$ ]] || fail "\"$release\" is no release name: use R, the year, and a or b"
last=$(last_baseline)
published_tree=$(newest_tree)
next=$(next_release "$release")
version=$(sed -n 's/^project(.* VERSION \([0-9.]*\) .*/\1/p' CMakeLists.txt)
published_version=$(sed -n 's/^## \[\([0-9.]*\)\].*/\1/p' "$notes_file" | sort --version-sort | tail -n 1)
if [[ -n $published_version && ${version%%.*} != "${published_version%%.*}" ]]; then
    next_version=$version # for an incompatible binary interface
else
    next_version=$(awk -F. '{ print $1 "." $2 + 1 ".0" }' <<<"$version")
fi
# Factory values depend on these variables.
for variable in "${!VX_@}"; do
    unset "$variable"
done

require_ready
bash -c "$checks" || fail "a check failed: nothing was written"
trap restore EXIT
record_baseline
write_changelog
empty_changed_settings
open_next_list
raise_version
renew_documents
scripts/run.sh history --baseline docs/baseline --changed-settings "$changed"
scripts/run.sh lint
scripts/test.sh
git add --all
git commit --quiet --message "Publish $release as version $next_version"
echo "Review the commit with git show, then tag it: git tag $release"
