# SPDX-License-Identifier: MIT
"""run.py SOURCE_DIR PACKAGES_DIR GUIDE...

Does what a guide says, in a directory of its own, and compares what comes out
with what the guide shows. The reader's home holds the clone, libswctl, with
the packages in build/packages; the commands are typed in another directory.

    ```console            commands after "$ ", continued after "> ", and what
                          they print; a line "..." stands for any lines
    ```c NAME             a file that the reader writes
    ```console (not run: WHY)
                          commands that cannot be typed here, and why

No other block may be there. "unshare -Urn" starts a shell, as at a terminal: what
follows is typed there. A guide that does so is read by an ordinary user; where
that user may not do so it is not followed, with status 77.

A guide that says "Install: first-hour.md" begins where that section of the
first hour ends.
"""
import os
import pathlib
import re
import signal
import subprocess
import sys
import tempfile

BLOCK = re.compile(r"^```(\w*)(?: +(\S+|\(not run: [^\n]+\)))?\n(.*?)^```$", re.DOTALL | re.MULTILINE)
INDENTED = re.compile(r"\n\n    [^\n]*")
END = "--- end of command, status "
SPACE = "unshare -Urn"
USER = 65534
NOT_RUN = 77


def as_user(user):
    """Words for subprocess."""
    return {} if user is None else {"user": user, "group": user, "extra_groups": []}


class Shell:
    """One bash for a whole guide, so that variables and directories last."""

    def __init__(self, home, user=None):
        work = home / "work"
        work.mkdir()
        environment = {"HOME": str(home), "PATH": "/usr/sbin:/usr/bin:/sbin:/bin", "LANG": "C.UTF-8",
                       "TERM": "dumb"}
        # Not by its standard input, which commands may read.
        script, commands = os.pipe()
        self.script = f"/dev/fd/{script}"
        if user is not None:
            home.chmod(0o755)
            for place in (home, work, script):
                os.chown(place, user, user)
        self.commands = os.fdopen(commands, "w")
        self.process = subprocess.Popen(["bash", "--norc", self.script], cwd=work,
                                        env=environment, text=True, pass_fds=[script],
                                        stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                                        stderr=subprocess.STDOUT, start_new_session=True,
                                        **as_user(user))
        os.close(script)

    def run(self, command):
        """What the command prints, and its status, which $? still holds."""
        if command == SPACE:
            command = f"exec {SPACE} bash --norc {self.script}"
        self.commands.write(f"{command}\n{{ (s=$?; printf '\\n{END}%s\\n' $s; exit $s); }}\n")
        self.commands.flush()
        lines = []
        for line in self.process.stdout:
            if line.startswith(END):
                # The line end in front of the mark belongs to the mark.
                return "".join(lines)[:-1], int(line[len(END):])
            lines.append(line)
        raise SystemExit(f"the shell ended at: {command}")

    def end(self):
        """With what it has left in the background."""
        self.commands.close()
        os.killpg(self.process.pid, signal.SIGKILL)
        self.process.stdout.close()
        self.process.wait()


def steps(text):
    """("file", name, content) and ("command", command, output), in order."""
    indented = INDENTED.search(BLOCK.sub("", text))
    if indented:
        raise SystemExit(f"a block that nobody runs: {indented[0].strip()!r}")
    for language, name, body in BLOCK.findall(text):
        if name.startswith("("):
            yield "nothing", name, body
        elif name:
            yield "file", name, body
        elif language == "console":
            for part in re.split(r"^\$ ", body, flags=re.MULTILINE)[1:]:
                lines = part.splitlines(keepends=True)
                more = 1
                while more < len(lines) and lines[more].startswith("> "):
                    more += 1
                command = lines[0] + "".join(line[2:] for line in lines[1:more])
                yield "command", command.rstrip("\n"), "".join(lines[more:])
        else:
            raise SystemExit(f"a block that is neither console nor a file: {body[:60]!r}")


def fits(shown, printed):
    pattern = "".join("(?:.*\n)*?" if line == "...\n" else re.escape(line)
                      for line in shown.splitlines(keepends=True))
    return re.fullmatch(pattern, printed) is not None


def follow(shell, home, text):
    """Yields what is not as the guide says."""
    todo = list(steps(text))
    todo = [step for step in todo if step[0] != "nothing"]
    for (kind, what, shown), after in zip(todo, [*todo[1:], ("", "", "")]):
        if kind == "file":
            (home / "work" / what).write_text(shown)
            continue
        printed, status = shell.run(what)
        if printed and not printed.endswith("\n"):
            printed += "\n"
        if not fits(shown, printed):
            yield f"$ {what}\nprints\n{printed}and is shown with\n{shown}"
        if status != 0 and after[1] != "echo $?":
            yield f"$ {what}\nended with status {status}; it printed\n{printed}"


def make_home(home, source, packages):
    clone = home / "libswctl"
    (clone / "build").mkdir(parents=True)
    for entry in source.iterdir():
        if entry.name not in ("build", ".git"):
            (clone / entry.name).symlink_to(entry)
    (clone / "build/packages").symlink_to(packages)


def section(text, title):
    return re.search(rf"^## {title}\n(.*?)(?=^## |\Z)", text, re.DOTALL | re.MULTILINE)[1]


def reason_against(user, packages):
    """Why an ordinary user cannot follow a guide with a network of its own; None if one can."""
    for words, reason in ((SPACE.split() + ["true"], "an ordinary user may make no namespaces"),
                          (["ls", str(packages)], f"an ordinary user may not read {packages}")):
        if subprocess.run(words, capture_output=True, check=False, **as_user(user)).returncode:
            return reason
    return None


def check(guide, source, packages):
    text = guide.read_text()
    if "(first-hour.md#install)" in text and guide.name != "first-hour.md":
        text = section((guide.parent / "first-hour.md").read_text(), "Install") + text
    kinds = [step[0] for step in steps(text)]
    count = kinds.count("command")
    has_space = f"$ {SPACE}\n" in text
    user = USER if has_space and os.getuid() == 0 else None
    reason = reason_against(user, packages) if has_space else None
    if reason:
        print(f"{guide.name}: not run: {reason}")
        sys.exit(NOT_RUN)
    with tempfile.TemporaryDirectory() as directory:
        home = pathlib.Path(directory)
        make_home(home, source, packages)
        shell = Shell(home, user)
        problems = list(follow(shell, home, text))
        shell.end()
    for problem in problems:
        print(f"{guide.name}: {problem}", file=sys.stderr)
    print(f"{guide.name}: {count} commands, {len(problems)} not as shown, "
          f"{kinds.count('nothing')} blocks not run")
    return bool(problems) or count == 0


def main():
    source, packages = (pathlib.Path(word).resolve() for word in sys.argv[1:3])
    failed = [check(pathlib.Path(guide), source, packages) for guide in sys.argv[3:]]
    return 1 if any(failed) else 0


sys.exit(main())
