#!/usr/bin/env python3
"""Runs what the documentation tells people to run, and compares what it shows with what is printed.

    docs_commands.py BIN FILE...     BIN: the folder with the built vxsettings

What a fenced block holds is said by its first word:

    sh, zsh, fish   a command a line, each of which has to succeed, in that shell
    console         commands behind "$ ", each with the output that it has to print; "..." stands for anything
    console fails   the same, where the last command has to fail
    cpp, cmake, json, text         no commands; with a file's name behind it, the block is put into that file

Any other block is an error, so that no command escapes. Blocks of one file share a home and a folder, in their order;
blocks that call scripts or build run in the project. What cannot be run here is listed below, with the reason. Of
commands inside sentences and tables, verbs, options and names of scripts are looked up.
"""

import dataclasses
import os
import pathlib
import re
import subprocess
import sys
import tempfile

PROJECT = pathlib.Path(__file__).resolve().parent.parent
NO_COMMANDS = {"cpp", "cmake", "json", "text"}
SHELLS = {
    "sh": ["bash", "-euo", "pipefail", "-c"],
    "console": ["bash", "-c"],
    "zsh": ["zsh", "-f", "-c"],
    "fish": ["fish", "--no-config", "-c"],
}
SET_UP = {"zsh": "autoload -U compinit && compinit -u; "}

# Commands that take long or change the machine; most are run for real by other steps of .ci/run.
NOT_RUN = [
    (r"\.ci/run\b", "is what runs this test"),
    (r"(sudo )?apt(-get)? ", "installs packages as root"),
    (r"git clone ", "needs the network"),
    (r"scripts/setup\.sh", "installs packages as root; the first step of .ci/run"),
    (r"scripts/(bench|coverage)\.sh", "takes minutes of a quiet machine"),
    (r"scripts/conformance\.sh", "needs an installed CppMicroServices"),
    (r"scripts/(fuzz|lint|instructions|page_test|package_test|portability|reproducible|format)\.sh", "is a step of .ci/run itself"),
    (r"scripts/test\.sh --preset (asan|tsan)", "is a step of .ci/run itself"),
    (r"VX_SOAK=full ", "takes minutes"),
    (r"scripts/docs_test\.sh", "is what runs this test"),
    (r"doxygen\b", "was run by scripts/docs_test.sh before"),
    (r"build/fuzz/", "needs an input that ends a target"),
]
# Commands that are run in a cheaper form.
CHEAPER = [
    (r"scripts/test\.sh$", "scripts/test.sh -N", "lists the tests; .ci/run runs them"),
    (r"ctest --preset dev$", "ctest --preset dev -N", "lists the tests; .ci/run runs them"),
]
IN_PROJECT = re.compile(r"(scripts/|cmake |ctest |cpack |dpkg|build/|man build/)")


@dataclasses.dataclass
class Command:
    place: str
    text: str
    shell: str
    has_output: bool
    may_fail: bool = False
    expected: list = dataclasses.field(default_factory=list)


@dataclasses.dataclass
class Given:
    """A file that the reader is taken to have."""

    name: str
    content: str


class Faults(list):
    def add(self, place, message):
        self.append(f"{place}: {message}")


def blocks_of(file):
    """(line, info string, lines) of each fenced block, and the text around them."""
    blocks, prose, block = [], [], None
    for number, line in enumerate(file.read_text("utf-8").splitlines(), 1):
        fence = re.match(r"\s*```+(.*)$", line)
        if fence and block is None:
            block = (number, fence[1].strip(), [])
        elif fence:
            blocks.append(block)
            block = None
        elif block is not None:
            block[2].append(line)
        else:
            prose.append((number, line))
    return blocks, prose


def commands_of(file, name, faults):
    commands = []
    for number, info, lines in blocks_of(file)[0]:
        kind, *rest = info.split() or [""]
        if kind in NO_COMMANDS and len(rest) < 2:
            if rest:
                commands.append([Given(rest[0], "\n".join(lines) + "\n")])
            continue
        if kind not in SHELLS or rest not in ([], ["fails"]):
            faults.add(f"{name}:{number}", f"a block of the unknown kind '{info}'; see the head of docs_commands.py")
            continue
        found = []
        for offset, line in enumerate(lines, 1):
            place = f"{name}:{number + offset}"
            if kind != "console" and line.strip() and not line.startswith("#"):
                found.append(Command(place, re.sub(r"\s+# .*", "", line), kind, False))
            elif line.startswith("$ "):
                found.append(Command(place, line[2:], kind, True))
            elif kind == "console" and found:
                found[-1].expected.append(line)
            elif line.strip() and not line.startswith("#"):
                faults.add(place, "output without a command in front of it")
        if rest and found:
            found[-1].may_fail = True
        if found:
            commands.append(found)
    return commands


def first_match(table, text):
    return next((row for row in table if re.match(row[0], text)), None)


def matches(expected, printed):
    """Whether the output is what is shown, in which "..." stands for anything, also for whole lines."""
    pattern = re.escape("\n".join(expected).strip()).replace(re.escape("..."), "(?s:.*)")
    return re.fullmatch(pattern, printed.strip()) is not None


class Runner:
    def __init__(self, tool_folder, faults):
        self.tool_folder, self.faults = tool_folder, faults
        self.ran, self.compared, self.skipped = 0, 0, {}

    def environment(self, home):
        kept = {name: value for name, value in os.environ.items() if not name.startswith(("XDG_", "VX_"))}
        path = f"{self.tool_folder}:{home}/verdix/bin:{kept['PATH']}"
        cache = {"CCACHE_DIR": kept.get("CCACHE_DIR", os.path.expanduser("~/.cache/ccache"))}
        return {**kept, **cache, "HOME": str(home), "PATH": path, "LC_ALL": "C.UTF-8", "COLUMNS": "200"}

    def run_file(self, blocks):
        with tempfile.TemporaryDirectory() as home:
            for block in blocks:
                if isinstance(block[0], Given):
                    pathlib.Path(home, block[0].name).write_text(block[0].content, "utf-8")
                    continue
                inside = any(IN_PROJECT.match(command.text) for command in block)
                for command in block:
                    self.run(command, home, PROJECT if inside else home)

    def run(self, command, home, folder):
        text = command.text
        if reason := first_match(NOT_RUN, text):
            self.skipped.setdefault(reason[1], []).append(command)
            return
        if cheaper := first_match(CHEAPER, text):
            self.skipped.setdefault(f"run as {cheaper[1]}: {cheaper[2]}", []).append(command)
            text = cheaper[1]
        result = subprocess.run([*SHELLS[command.shell], SET_UP.get(command.shell, "") + text], cwd=folder,
                                env=self.environment(home), stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                                stderr=subprocess.STDOUT, text=True, check=False)
        self.ran += 1
        if (result.returncode != 0) != command.may_fail:
            self.faults.add(command.place, f"'{text}' ended with {result.returncode}:\n{result.stdout}")
        elif command.has_output:
            self.compared += 1
            if not matches(command.expected, result.stdout):
                shown = "\n".join(command.expected)
                self.faults.add(command.place, f"'{text}' prints\n{result.stdout}but is shown to print\n{shown}")


class Mentions:
    """Commands in sentences and tables: what is named has to exist."""

    def __init__(self, tool, faults):
        self.tool, self.faults, self.count = tool, faults, 0
        self.help = self.ask("--help")
        self.verbs = set(re.findall(r"^  ([a-z]+)  ", self.help.split("Commands:")[1], re.MULTILINE))

    def ask(self, *arguments):
        return subprocess.run([self.tool, *arguments], capture_output=True, text=True, check=True).stdout

    def look_up(self, file, name):
        for number, line in blocks_of(file)[1]:
            for span in re.findall(r"`([^`]+)`", line):
                words = span.replace("\\|", " ").split()
                if words[0] == "vxsettings" and len(words) > 1:
                    self.check_verb(f"{name}:{number}", words[1:])
                elif words[0] in self.verbs and len(words) > 1:
                    self.check_verb(f"{name}:{number}", words)
                elif words[0].startswith("scripts/"):
                    self.check_script(f"{name}:{number}", words)

    def check_options(self, place, words, known, owner):
        self.count += 1
        for option in re.findall(r"--[a-z][a-z-]*", " ".join(words)):
            if not re.search(re.escape(option) + r"\b(?!-)", known):
                self.faults.add(place, f"{owner} has no option {option}")

    def check_verb(self, place, words):
        verb = words[0]
        if verb in self.verbs:
            self.check_options(place, words, self.ask(verb, "--help") + self.help, f"vxsettings {verb}")
        elif not verb.startswith("-") and verb != "COMMAND":
            self.faults.add(place, f"vxsettings has no command {verb}")
        else:
            self.check_options(place, words, self.help + "--help", "vxsettings")

    def check_script(self, place, words):
        script = PROJECT / words[0]
        if not script.is_file() and not script.is_dir():
            self.faults.add(place, f"there is no {words[0]}")
        elif script.is_file():
            known = script.read_text("utf-8") + (subprocess.run(["ctest", "--help"], capture_output=True, text=True,
                                                                check=True).stdout if script.stem == "test" else "")
            self.check_options(place, words, known, words[0])


def main(tool_folder, *names):
    faults = Faults()
    tool_folder = pathlib.Path(tool_folder).resolve()
    runner, mentions = Runner(tool_folder, faults), Mentions(tool_folder / "vxsettings", faults)
    for name in names:
        file = PROJECT / name
        runner.run_file(commands_of(file, name, faults))
        mentions.look_up(file, name)
    skipped = sum(map(len, runner.skipped.values()))
    print(f"{len(names)} pages: {runner.ran} commands run, {runner.compared} of them with their output compared, "
          f"{mentions.count} mentions looked up; {skipped} not run as they stand:")
    for reason, commands in sorted(runner.skipped.items()):
        print(f"  {reason}:")
        for command in commands:
            print(f"    {command.place}: {command.text}")
    if faults:
        sys.exit("\n".join(["", *faults, f"{len(faults)} faults"]))


main(*sys.argv[1:])
