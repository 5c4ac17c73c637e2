#!/usr/bin/env bash
# exported_symbols.sh READELF LIBRARY
#
# The bundle shows the loader these functions and no other symbol, no data either: the service framework finds the
# first three by name, the last four are merged with the copies in other libraries, which takes weak symbols.
set -euo pipefail

expected='GLOBAL DeleteInstance_settings_verdix_FactorySettingsVerdix
GLOBAL NewInstance_settings_verdix_FactorySettingsVerdix
GLOBAL _us_set_bundle_context_instance_com_tarnwick_verdix_factory_settings
WEAK _ZN5boost13serialization16singleton_module4lockEv
WEAK _ZN5boost13serialization16singleton_module6unlockEv
WEAK _ZN5boost13serialization16singleton_module8get_lockEv
WEAK _ZN5boost13serialization16singleton_module9is_lockedEv'

# Columns: number, value, size, type, binding, visibility, section, name.
actual=$("$1" --dyn-syms --wide "$2" | awk '$1 ~ /^[0-9]+:$/ && $7 != "UND" { sub(/@.*/, "", $8); print $5, $8 }')

difference=$(diff <(sort <<<"$expected") <(sort <<<"$actual")) || true
if [[ -n $difference ]]; then
    echo "$2: exported symbols differ from what they have to be (mend: component/exports.map)"
    sed -n 's/^< /missing: /p; s/^> /not wanted: /p' <<<"$difference"
    exit 1
fi
