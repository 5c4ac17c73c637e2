"""Compares the bill of materials with what the product's files are linked with, in both directions.

    bill_of_materials.py READELF BILL FILE...
"""

import fnmatch
import json
import re
import subprocess
import sys

# Whether the compiler calls for these depends on how it optimises.
OF_OPTIMISATION = ("libm.so.*", "ld-linux*")

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
unused = [pattern for pattern, files in matches.items() if not files and not pattern.endswith(OF_OPTIMISATION)]
if unknown or unused or not linked:
    sys.exit(
        f"linked, but not recorded: {unknown}; recorded, but not linked: {unused}; "
        "mend the vx_record_dependency that stands beside the dependency's find_package"
    )
print(f"{len(linked)} libraries of {len(packages) - 1} dependencies")
