"""Compares the bill of materials with what the product's files are linked with, in both directions.

    bill_of_materials.py READELF BILL FILE...
"""

import fnmatch
import json
import re
import subprocess
import sys

readelf, bill, *files = filter(None, sys.argv[1:])
with open(bill, encoding="utf-8") as document:
    packages = json.load(document)["packages"]
recorded = {
    pattern: package["name"]
    for package in packages
    for pattern in package.get("comment", "linked:").removeprefix("linked:").split()
}
dynamic = subprocess.run([readelf, "-d", *files], check=True, capture_output=True, text=True).stdout
linked = {name for name in re.findall(r"NEEDED.*\[(.*)\]", dynamic) if not name.startswith("libvx")}
unknown = [name for name in linked if not any(fnmatch.fnmatch(name, pattern) for pattern in recorded)]
unused = [pattern for pattern in recorded if not fnmatch.filter(linked, pattern)]
if unknown or unused or not linked:
    sys.exit(
        f"linked, but not recorded: {unknown}; recorded, but not linked: {unused}; "
        "mend the vx_record_dependency that stands beside the dependency's find_package"
    )
print(f"{len(linked)} libraries of {len(packages) - 1} dependencies")
