"""Checks that the bill of materials lists the shared libraries that the product's files need, and no others.

    bill_of_materials.py READELF BILL FILE...
"""

import fnmatch
import json
import re
import subprocess
import sys

# Libraries that may be recorded without being linked: whether the compiler needs them depends on the optimisation.
OPTIONAL = ("libm.so.*", "ld-linux*")

readelf, bill, *files = filter(None, sys.argv[1:])
with open(bill, encoding="utf-8") as document:
    packages = json.load(document)["packages"]
recorded = {
    package["name"]: package["comment"].removeprefix("linked: ").split()
    for package in packages
    if "comment" in package
}
dynamic = subprocess.run([readelf, "-d", *files], check=True, capture_output=True, text=True).stdout
linked = {name for name in re.findall(r"NEEDED.*\[(.*)\]", dynamic) if not name.startswith("libvx")}
matches = {
    f"{name}: {pattern}": fnmatch.filter(linked, pattern) for name, patterns in recorded.items() for pattern in patterns
}
unknown = linked.difference(*matches.values())
unused = [pattern for pattern, found in matches.items() if not found and not pattern.endswith(OPTIONAL)]
if unknown or unused or not linked:
    sys.exit(
        f"linked, but not recorded: {sorted(unknown)}; recorded, but not linked: {unused}; "
        "fix LIBRARIES in the vx_record_dependency call after the dependency's find_package"
    )
print(f"{len(linked)} libraries of {len(packages) - 1} dependencies")  # the first package is the product
