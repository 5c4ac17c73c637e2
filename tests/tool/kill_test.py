"""Kills commands that write files at random moments, and looks whether the files are whole.

    kill_test.py VXSETTINGS [--kills NUMBER] [--writers NUMBER]

After each kill, every file has to be as before the command or as after it, and the next command has to work. Then
the writers change different settings of one file at once, and no change may be lost.
"""

import argparse
import collections
import json
import os
import pathlib
import random
import shutil
import subprocess
import sys
import tempfile
import time

LIMIT = 60  # seconds for one command
# Command, the file that it writes, and what is run before; left out if the program does not know the command.
CASES = [
    (["set", "commandwindow.NumericFormat", "rational"], "settings.json", []),
    (["reset", "commandwindow"], "settings.json", []),
    (["migrate", "settings.json", "--write"], "settings.json", []),
    (["export", "--format", "json", "-o", "export.json"], "export.json", []),
    (["undo"], "settings.json", ["reset", "commandwindow"]),
    (["import", "other.json"], "settings.json", ["reset", "--all"]),
]
parser = argparse.ArgumentParser()
parser.add_argument("command", type=os.path.abspath)
parser.add_argument("--kills", type=int, default=30)
parser.add_argument("--writers", type=int, default=8)
options = parser.parse_args()
temporary = tempfile.TemporaryDirectory()
folder = pathlib.Path(temporary.name) / "run"
environment = {**os.environ, "XDG_STATE_HOME": f"{folder}/state", "XDG_CONFIG_DIRS": f"{folder}/none"}


def start(*arguments):
    return subprocess.Popen([options.command, "--personal", "settings.json", *arguments], cwd=folder, env=environment,
                            stdout=subprocess.PIPE, stderr=subprocess.STDOUT)


def require(process):
    output = process.communicate(timeout=LIMIT)[0]
    if process.returncode != 0:
        sys.exit(f"{process.args} fails: {output.decode()}")


def contents():
    files = {file.name: file.read_bytes() for file in folder.glob("[!.]*") if file.is_file()}
    return collections.defaultdict(lambda: None, files)


def restore(original):
    shutil.rmtree(folder, ignore_errors=True)
    shutil.copytree(original, folder)


def kill(arguments, watched, delay):
    """Kills the command some time after it changed the watched file or folder; returns whether it still ran."""
    before = watched and os.stat(watched).st_mtime_ns
    process = start(*arguments)
    while watched and os.stat(watched).st_mtime_ns == before and process.poll() is None:
        pass
    time.sleep(random.random() * delay)
    process.kill()
    process.communicate(timeout=LIMIT)
    return process.returncode < 0


def check_kills(original, arguments, name, kills):
    """Kills a command at any moment, soon after it created a file, and as soon as the file changes."""
    before, began = contents(), time.monotonic()
    require(start(*arguments))
    duration, after, counts = time.monotonic() - began, contents(), collections.Counter()
    if after[name] == before[name]:
        sys.exit(f"{arguments[0]} does not change {name}")
    for number in range(kills):
        restore(original)
        moment = [(None, 1.1 * duration), (folder, duration / 10), (folder / name, 0)][number % 3]
        counts["alive"] += kill(arguments, *moment)
        left = contents()
        if wrong := [file for file in before | after | left if left[file] not in (before[file], after[file])]:
            sys.exit(f"a killed {arguments[0]} leaves {wrong} as neither the old nor the new file")
        is_old = left[name] == before[name]
        counts["old" if is_old else "new"] += 1
        require(start(*(arguments if is_old else ["reset", "general"])))
        if is_old and contents()[name] != after[name]:
            sys.exit(f"{arguments[0]} does not write the new {name} after one that was killed")
    print(f"{arguments[0]}: {kills} kills, {dict(counts)}")


schema = json.loads(subprocess.check_output([options.command, "export", "--format", "json-schema"]))
values = {path: setting["default"] for path, setting in schema["properties"]["settings"]["properties"].items()
          if setting.get("default") and not setting.get("readOnly")}  # an empty default may be invalid
originals = pathlib.Path(temporary.name) / "originals"
originals.mkdir()
for file, number in {"settings.json": None, "other.json": 2, "export.json": 0}.items():
    # The note, which the program keeps, makes the file take long to write.
    document = {"release": "R2020a", "settings": dict([*values.items()][:number]), "note": 2**21 * "x"}
    (originals / file).write_text(json.dumps(document))
text = subprocess.check_output([options.command, "--help"], text=True)
known = [case for case in CASES if f"\n  {case[0][0]} " in text]
print("not in this program:", [case[0][0] for case in CASES if case not in known])
for index, (arguments, name, preparation) in enumerate(known):
    restore(originals)
    if preparation:
        require(start(*preparation))
    original = shutil.copytree(folder, pathlib.Path(temporary.name) / arguments[0])
    check_kills(original, arguments, name, (options.kills + index) // len(known))
restore(originals)
paths = [*values][:options.writers]
for writer in [start("reset", path) for path in paths]:
    require(writer)
if lost := set(paths) & json.loads(contents()["settings.json"])["settings"].keys():
    sys.exit(f"{len(lost)} of {len(paths)} changes are lost: {lost}")
print(f"{options.writers} writers at once: no change lost")
