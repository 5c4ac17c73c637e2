#!/usr/bin/env bash
# Builds vxsettings if necessary and runs it with the arguments. Standard output has only the output of the command.
set -euo pipefail
source "$(dirname -- "$(realpath -- "${BASH_SOURCE[0]}")")/common.sh"

"$project/scripts/setup.sh" --quiet >&2
alone release build release vxsettings
exec "$project/build/release/bin/vxsettings" "$@"
