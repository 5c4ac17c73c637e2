"""Types unfinished commands into a shell on a terminal, and looks at what they do.

    completion_test.py VXSETTINGS SAMPLE_BUNDLE SHELL [COMMAND that makes the shell complete, if not the usual one]
"""

import os
import pty
import select
import shutil
import sys
import tempfile
import time

TIMEOUT = 60  # seconds, for a shell on a busy machine

SHELLS = {
    "bash": (["bash", "--norc", "--noprofile", "-i"], "source <(vxsettings completion bash)"),
    "zsh": (["zsh", "-f", "-i"], "autoload -U compinit && compinit -u && source <(vxsettings completion zsh)"),
    "fish": (["fish", "--no-config", "-i"], "vxsettings completion fish | source"),
}

# What is typed, where \t asks for completion, and what the command then has to print.
CASES = [
    ("vxsettings ge\tnumericF\t", "short"),
    ("vxsettings get verdix.commandw\tNumericF\tcommandwindow.WindowSi\t", "[180 45]"),
    ("vxsettings set commandw\tNumericF\tban\t", "(personal), in"),
    ("vxsettings set commandw\tWrapL\tf\t", "(personal), in"),
    ("vxsettings list --kind al\t", "verdix.commandwindow.alias"),
    ("vxsettings --js\tget commandwindow.NumericF\t", '"origin": "personal"'),
    ("vxsettings --color=ne\tmigrate --to R2020\told_s\t", "from before all releases to R2020b"),
    ("vxsettings doctor --feature webui=of\t", "feature webui                      off"),
    # Where several candidates only contain what is typed, it stays, but zsh replaces it by one after the other.
    ("vxsettings describe St\tyl\t", "a cell of strings"),
]


class Terminal:
    def __init__(self, command, environment):
        self.process, self.descriptor = pty.fork()
        if self.process == 0:
            os.execvpe(command[0], command, environment)

    def type(self, text):
        os.write(self.descriptor, text.encode())

    def read_until(self, mark):
        """What the terminal shows up to the mark, which has to come."""
        seen = ""
        end = time.monotonic() + TIMEOUT
        while mark not in seen:
            ready, _, _ = select.select([self.descriptor], [], [], max(0, end - time.monotonic()))
            if not ready:
                sys.exit(f"no {mark!r} within {TIMEOUT} s, only: {seen}")
            seen += os.read(self.descriptor, 65536).decode(errors="replace")
        return seen

    def run(self, text):
        """Types a line piece by piece, as a person does who waits for each completion; returns what it printed."""
        pieces = text.split("\t")
        for piece in pieces[:-1]:
            self.type(piece + "\t")
            time.sleep(0.7)
        self.type(pieces[-1] + '; echo en""d\n')
        return self.read_until("end\r\n")


def main(vxsettings, sample_bundle, shell, *set_up):
    command, usual_set_up = SHELLS[shell]
    if not shutil.which(shell):
        print(f"skipped: {shell} is not installed")
        return 77
    with tempfile.TemporaryDirectory() as folder:
        with open(os.path.join(folder, "old_settings.json"), "w", encoding="utf-8") as file:
            file.write('{ "settings": {} }')
        with open(os.path.join(folder, "vxsettings"), "w", encoding="utf-8") as script:
            script.write(f'#!/bin/sh\nexec "{vxsettings}" --bundle "{sample_bundle}" "$@"\n')
        os.chmod(script.name, 0o700)
        environment = {
            "PATH": folder + ":" + os.environ["PATH"],
            "PAGER": "cat",
            "HOME": folder, "XDG_CONFIG_HOME": folder, "XDG_CONFIG_DIRS": folder, "XDG_DATA_HOME": folder,
            "TERM": "dumb" if shell == "bash" else "xterm", "PS1": "$ ", "LC_ALL": "C.UTF-8", "COLUMNS": "200",
        }
        os.chdir(folder)
        terminal = Terminal([shutil.which(shell)] + command[1:], environment)
        terminal.run(*set_up or [usual_set_up])
        failures = 0
        for typed, printed in CASES:
            shown = terminal.run(typed.replace("St\tyl\t", "St\t\t") if shell == "zsh" else typed)
            if printed not in shown:
                failures += 1
                print(f"{shell}: {typed!r} does not print {printed!r} but: {shown!r}")
        print(f"{shell}: {len(CASES)} commands, {failures} failed")
        return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main(os.path.realpath(sys.argv[1]), *sys.argv[2:]))
