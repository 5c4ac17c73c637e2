#!/usr/bin/env python3
"""The exported JSON Schema and `vxsettings check` agree: on a corpus of files, each bad one for one reason, and on
every setting of the real tree with values at and beyond its bounds.

    agreement.py VXSETTINGS SAMPLE_BUNDLE [FOLDER]

The files are of the bundle's tree; exceptions.json lists those on which a judge errs. In the folder, the values of the
real tree are left as files with one setting a line, each beside the list of the settings that the schema refuses.
"""

import json
import pathlib
import re
import subprocess
import sys
import tempfile

import jsonschema

Validator = jsonschema.validators.validator_for({"$schema": "https://json-schema.org/draft/2020-12/schema"})
CORPUS = pathlib.Path(__file__).parent
ANYTHING = [
    True, 0, -1, 1, 0.5, 1e300, "", "NaN", "Inf", "-Inf", "red", None, {}, [], [[]], ["a"], [["a", "b"]], [True],
    1.0, 1e2, 1e-1, "Inf\n", "14px", "0.5px", "0px", "014px", "14.px", "14px\n", ["plain"], ["italic", "bold"],
    ["plain", "bold"], ["bold", "bold"], [2, 1], [1, 1.0], [[3, 3]], [1], [[1]], [True, False], [1, 2], [0, 0.5, 1],
    [[0, 1, 0]], [-1, 0, 0], [0, 0, 256], [1, 2, 3, 4], ["a", 1],
    [[1, 2], [3, 4]], [[], []], [[[1]]], [None], ["NaN"],
]


def run(tool, *arguments):
    return subprocess.run([*tool, *arguments], capture_output=True, text=True, check=False)


def check(tool, file):
    """Returns the diagnostics of the tool, one line each."""
    result = run(tool, "check", "--all", str(file))
    lines = [line for line in result.stdout.splitlines() if line.startswith(f"{file}:")]
    if result.returncode not in (0, 1) or (result.returncode == 0) != lines[0].endswith("no errors"):
        sys.exit(f"check {file} ended with {result.returncode}: {result.stdout}{result.stderr}")
    return lines if result.returncode else []


def accepts(schema, file):
    try:  # int() throws for NaN and Infinity, which are not JSON
        return Validator(schema).is_valid(json.loads(file.read_text("utf-8-sig"), parse_constant=int))
    except ValueError:
        return False


def judge_corpus(tool, schema):
    """Returns the unexpected verdicts, a line each, and the number of files."""
    unexpected, count = [], 0
    exceptions = json.loads((CORPUS / "exceptions.json").read_text("utf-8"))
    for folder, expected in (("good", True), ("bad", False)):
        for file in sorted((CORPUS / folder).glob("*.json")):
            count += 1
            erring = exceptions.get(f"{folder}/{file.name}", {}).get("judges", [])
            verdicts = {"jsonschema": accepts(schema, file), "check": not check(tool, file)}
            unexpected += [f"{folder}/{file.name}: {judge} says {'good' if verdict else 'bad'}"
                           for judge, verdict in verdicts.items() if (verdict != expected) != (judge in erring)]
    return unexpected, count


def beside(number):
    return [number - 1, number, number + 1, number + 0.5]


def values_near(schema):
    """Returns values at and beyond the bounds that the schema states anywhere."""
    values = [schema["default"]] if "default" in schema else []
    values += schema.get("enum", []) + ([schema["const"]] if "const" in schema else [])
    for bound in ("minimum", "maximum"):
        values += beside(schema[bound]) if bound in schema else []
    for inner in schema.get("anyOf", []):
        values += values_near(inner)
    if "items" in schema:
        counts = {schema.get("minItems", 0), min(schema.get("maxItems", 3), 300)}
        for item in values_near(schema["items"])[:8] + ["a", 0]:
            values += [[item] * size for count in counts for size in (count, count + 1)]
    if "maxLength" in schema:
        values += ["x" * schema["maxLength"], "x" * (schema["maxLength"] + 1)]
    return values


def refused_by_check(tool, settings, file):
    lines = ",\n".join(f"{json.dumps(path)}: {json.dumps(value)}" for path, value in settings.items())
    file.write_text(f'{{"settings": {{\n{lines}\n}}}}', "utf-8")
    return {match[1] for match in map(re.compile(r".*?:\d+:\d+: ([\w.]+): ").match, check(tool, file)) if match}


def judge_tree(tool, schema, folder):
    """Returns the values on which the schema and the tool disagree, a line each, and the number of values tried."""
    settings = {path: schema["$defs"].get(stated.pop("$ref", "").removeprefix("#/$defs/"), {}) | stated
                for path, stated in schema["properties"]["settings"]["properties"].items()}
    probes = {path: ANYTHING + values_near(stated) for path, stated in settings.items()}
    nodes = json.loads(run(tool, "export", "--format", "json").stdout)["nodes"]
    checked_by_code = {node["path"] for node in nodes if (node["validator"] or {}).get("kind") == "callable"}
    disagreements = []
    for turn in range(max(map(len, probes.values()))):
        file = pathlib.Path(folder, f"{turn}.json")
        tried = {path: values[turn] for path, values in probes.items() if turn < len(values)}
        refused = refused_by_check(tool, tried, file)
        refused_by_schema = {path for path, value in tried.items() if not Validator(settings[path]).is_valid(value)}
        file.with_suffix(".refused").write_text(json.dumps(sorted(refused_by_schema)), "utf-8")
        disagreements += [f"{path}: {json.dumps(tried[path])[:80]}: the schema "
                          f"{'refuses' if path in refused_by_schema else 'accepts'} it"
                          for path in (refused ^ refused_by_schema) - (refused & checked_by_code)]
    return disagreements, sum(map(len, probes.values()))


def exported_schema(tool):
    schema = json.loads(run(tool, "export", "--format", "json-schema").stdout)
    Validator.check_schema(schema)
    return schema


def main(tool, sample_bundle, folder):
    sample = [tool, "--bundle", sample_bundle]
    unexpected, files = judge_corpus(sample, exported_schema(sample))
    disagreements, values = judge_tree([tool], exported_schema([tool]), folder)
    print(f"{files} files and {values} values of settings judged")
    if files < 220 or values < 60000:
        sys.exit("too few were found to judge")
    if wrong := unexpected + disagreements:
        sys.exit("\n".join(wrong[:40] + [f"{len(wrong)} disagreements"]))


with tempfile.TemporaryDirectory() as temporary:
    main(*(sys.argv[1:] + [temporary])[:3])
