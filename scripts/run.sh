#!/usr/bin/env bash
# Builds what is not built yet, and runs: vxsettings ARGUMENTS. Standard output holds the command's output only.
set -euo pipefail
source "$(dirname -- "$(realpath -- "${BASH_SOURCE[0]}")")/common.sh"

"$project/scripts/setup.sh" --quiet >&2
alone release build release vxsettings
exec "$project/build/release/bin/vxsettings" "$@"
