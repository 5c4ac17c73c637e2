#!/usr/bin/env python3
"""Runs the commands in the documentation and compares their output with what is shown.

    docs_commands.py BIN FILE...     BIN: the folder with the built vxsettings

The info string of a fenced block gives its kind:

    sh, zsh, fish           one command per line, run in that shell; each must succeed
    console                 commands after "$ ", each followed by its expected output; "..." matches
                            anything, but may not be all of it
    console fails           the same, but the last command must fail
    cpp, cmake, json, text  no commands; if a file name follows, the block is written to that file

Other kinds are errors, so that no command is missed. The blocks of a page share a home folder, in which they run in
order; blocks that call scripts or build run in the project. Commands that cannot be run here are listed below, with the
reason. In inline code, the names of commands, options and scripts are verified.
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

# Commands that take long or change the machine; other steps of .ci/run cover most of them.
NOT_RUN = [
    (r"\.ci/run\b", "runs this test"),
    (r"(sudo )?apt(-get)? ", "installs packages as root"),
    (r"git clone ", "needs the network"),
    (r"scripts/setup\.sh", "installs packages as root; the first step of .ci/run"),
    (r"scripts/(bench|coverage)\.sh", "takes minutes on an idle machine"),
    (r"scripts/conformance\.sh", "needs an installed CppMicroServices"),
    (r"scripts/(fuzz|lint|instructions|page_test|schema_test|package_test|portability|reproducible|format)\.sh", "is a step of .ci/run itself"),
    (r"scripts/test\.sh --preset (asan|tsan)", "is a step of .ci/run itself"),
    (r"VX_SOAK=full ", "takes minutes"),
    (r"scripts/docs_test\.sh", "runs this test"),
    (r"doxygen\b", "is run by scripts/docs_test.sh"),
    (r"build/fuzz/", "needs an input that crashes a target"),
]
# Commands that are replaced by cheaper ones.
CHEAPER = [
    (r"scripts/test\.sh$", "scripts/test.sh -N", "lists the tests; .ci/run runs them"),
    (r"ctest --preset dev$", "ctest --preset dev -N", "lists the tests; .ci/run runs them"),
]
IN_PROJECT = re.compile(r"(scripts/|cmake |ctest |cpack |dpkg|build/|man build/)")


@dataclasses.dataclass
class Command:
    location: str
    text: str
    shell: str
    has_output: bool
    may_fail: bool = False
    expected: list = dataclasses.field(default_factory=list)


@dataclasses.dataclass
class InputFile:
    """A file that is assumed to exist."""

    name: str
    content: str


class Diagnostics(list):
    def add(self, location, message):
        self.append(f"{location}: {message}")


def blocks_of(file):
    """Returns the fenced blocks as (line, info string, lines), and the other lines with their numbers."""
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


def commands_of(file, name, diagnostics):
    commands = []
    for number, info, lines in blocks_of(file)[0]:
        kind, *rest = info.split() or [""]
        if kind in NO_COMMANDS and len(rest) < 2:
            if rest:
                commands.append([InputFile(rest[0], "\n".join(lines) + "\n")])
            continue
        if kind not in SHELLS or rest not in ([], ["fails"]):
            diagnostics.add(f"{name}:{number}", f"unknown kind of block: '{info}'; see the head of docs_commands.py")
            continue
        found = []
        for offset, line in enumerate(lines, 1):
            location = f"{name}:{number + offset}"
            if kind != "console" and line.strip() and not line.startswith("#"):
                found.append(Command(location, re.sub(r"\s+# .*", "", line), kind, False))
            elif line.startswith("$ "):
                found.append(Command(location, line[2:], kind, True))
            elif kind == "console" and found:
                found[-1].expected.append(line)
            elif line.strip() and not line.startswith("#"):
                diagnostics.add(location, "output without a preceding command")
        for command in found:
            if command.expected and not "".join(command.expected).replace("...", "").strip():
                diagnostics.add(command.location, "the expected output is only '...', which matches any output: show a "
                                                  "line of it, or use sh")
        if rest and found:
            found[-1].may_fail = True
        if found:
            commands.append(found)
    return commands


def first_match(table, text):
    return next((row for row in table if re.match(row[0], text)), None)


def matches(expected, printed):
    """Returns whether the output matches; "..." in expected matches anything, including line breaks."""
    pattern = re.escape("\n".join(expected).strip()).replace(re.escape("..."), "(?s:.*)")
    return re.fullmatch(pattern, printed.strip()) is not None


class Runner:
    def __init__(self, tool_folder, diagnostics):
        self.tool_folder, self.diagnostics = tool_folder, diagnostics
        self.ran, self.compared, self.skipped = 0, 0, {}

    def environment(self, home):
        kept = {name: value for name, value in os.environ.items() if not name.startswith(("XDG_", "VX_"))}
        path = f"{self.tool_folder}:{home}/verdix/bin:{kept['PATH']}"
        cache = {"CCACHE_DIR": kept.get("CCACHE_DIR", os.path.expanduser("~/.cache/ccache"))}
        return {**kept, **cache, "HOME": str(home), "PATH": path, "LC_ALL": "C.UTF-8", "COLUMNS": "200"}

    def run_file(self, blocks):
        with tempfile.TemporaryDirectory() as home:
            for block in blocks:
                if isinstance(block[0], InputFile):
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
            self.diagnostics.add(command.location, f"'{text}' exited with {result.returncode}:\n{result.stdout}")
        elif command.has_output:
            self.compared += 1
            if not matches(command.expected, result.stdout):
                shown = "\n".join(command.expected)
                self.diagnostics.add(command.location, f"'{text}' prints\n{result.stdout}but the page shows\n{shown}")


class Mentions:
    """Verifies that commands, options and scripts in inline code exist."""

    def __init__(self, tool, diagnostics):
        self.tool, self.diagnostics, self.count = tool, diagnostics, 0
        self.help = self.ask("--help")
        self.commands = set(re.findall(r"^  ([a-z]+)  ", self.help, re.MULTILINE))

    def ask(self, *arguments):
        return subprocess.run([self.tool, *arguments], capture_output=True, text=True, check=True).stdout

    def look_up(self, file, name):
        for number, line in blocks_of(file)[1]:
            for span in re.findall(r"`([^`]+)`", line):
                words = span.replace("\\|", " ").split()
                if words[0] == "vxsettings" and len(words) > 1:
                    self.check_command(f"{name}:{number}", words[1:])
                elif words[0] in self.commands and len(words) > 1:
                    self.check_command(f"{name}:{number}", words)
                elif words[0].startswith("scripts/"):
                    self.check_script(f"{name}:{number}", words)

    def check_options(self, location, words, known, owner):
        self.count += 1
        for option in re.findall(r"--[a-z][a-z-]*", " ".join(words)):
            if not re.search(re.escape(option) + r"\b(?!-)", known):
                self.diagnostics.add(location, f"{owner} has no option {option}")

    def check_command(self, location, words):
        command = words[0]
        if command in self.commands:
            self.check_options(location, words, self.ask(command, "--help") + self.help, f"vxsettings {command}")
        elif not command.startswith("-") and command != "COMMAND":
            self.diagnostics.add(location, f"vxsettings has no command {command}")
        else:
            self.check_options(location, words, self.help + "--help", "vxsettings")

    def check_script(self, location, words):
        script = PROJECT / words[0]
        if not script.is_file() and not script.is_dir():
            self.diagnostics.add(location, f"{words[0]} does not exist")
        elif script.is_file():
            known = script.read_text("utf-8") + (subprocess.run(["ctest", "--help"], capture_output=True, text=True,
                                                                check=True).stdout if script.stem == "test" else "")
            self.check_options(location, words, known, words[0])


def main(tool_folder, *names):
    diagnostics = Diagnostics()
    tool_folder = pathlib.Path(tool_folder).resolve()
    runner, mentions = Runner(tool_folder, diagnostics), Mentions(tool_folder / "vxsettings", diagnostics)
    for name in names:
        file = PROJECT / name
        runner.run_file(commands_of(file, name, diagnostics))
        mentions.look_up(file, name)
    skipped = sum(map(len, runner.skipped.values()))
    print(f"{len(names)} pages: {runner.ran} commands run, {runner.compared} of them with their output compared, "
          f"{mentions.count} mentions verified; {skipped} not run as shown:")
    for reason, commands in sorted(runner.skipped.items()):
        print(f"  {reason}:")
        for command in commands:
            print(f"    {command.location}: {command.text}")
    if diagnostics:
        sys.exit("\n".join(["", *diagnostics, f"{len(diagnostics)} problems"]))


main(*sys.argv[1:])
