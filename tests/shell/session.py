# SPDX-License-Identifier: MIT
"""session.py libedit|plain

Drives swctl at a terminal of its own, as a person would.
"""
import codecs
import fcntl
import os
import pathlib
import pty
import re
import select
import signal
import struct
import subprocess
import sys
import tempfile
import termios
import time

EDITOR = sys.argv[1]
PATIENCE = 30.0
PROMPT = "swctl> "


def resize(terminal, columns):
    fcntl.ioctl(terminal, termios.TIOCSWINSZ, struct.pack("4H", 24, columns, 0, 0))


class Session:
    """One swctl at a pseudo-terminal, which is wide unless told otherwise."""

    def __init__(self, directory, *options, columns=1000, **variables):
        environment = dict(os.environ, TERM="vt100", XDG_STATE_HOME=str(directory),
                           VCHIP_IMAGE=str(directory / "chip.img"), SWCTL_PAGER="")
        environment.update(variables)
        environment = {name: value for name, value in environment.items()
                       if value is not None and name != "COLUMNS"}
        self.pid, self.terminal = pty.fork()
        if self.pid == 0:
            resize(0, columns)
            os.execvpe("swctl", ["swctl", *options], environment)
        self.decoder = codecs.getincrementaldecoder("utf-8")(errors="replace")
        self.seen = ""
        self.wait_for(PROMPT)

    def wait_for(self, text):
        """Reads until the text appears; answers all that came up to its end."""
        deadline = time.monotonic() + PATIENCE
        while text not in self.seen:
            ready = select.select([self.terminal], [], [], deadline - time.monotonic())[0]
            if not ready:
                raise AssertionError(f"{text!r} did not appear in {self.seen!r}")
            try:
                data = os.read(self.terminal, 4096)
            except OSError:
                data = b""
            if not data:
                raise AssertionError(f"the session ended before {text!r}: {self.seen!r}")
            self.seen += re.sub(r"\x1b\[[0-9;]*[A-Za-z]|\0", "", self.decoder.decode(data))
        before, _, self.seen = self.seen.partition(text)
        return before

    def type(self, keys):
        if EDITOR == "libedit":
            self.wait_for_editor()
        os.write(self.terminal, keys if isinstance(keys, bytes) else keys.encode())

    def run(self, line):
        """Types a line; answers what the command printed.

        The line itself comes back once or twice: keys that arrive before the
        editor has taken the terminal over are echoed by both.
        """
        self.type(line + "\n")
        shown = self.wait_for(PROMPT).replace("\r", "")
        return "".join(each for each in shown.splitlines(True) if each != line + "\n")

    def wait_for_editor(self):
        """Waits until keys reach the editor one by one.

        A control key that comes before, on the heels of the prompt, is taken by
        the terminal itself and loses its meaning.
        """
        deadline = time.monotonic() + PATIENCE
        while self.is_in_order():
            if time.monotonic() > deadline:
                raise AssertionError("the editor does not take the terminal")
            time.sleep(0.01)

    def is_in_order(self):
        """Whether the terminal is as a program without an editor wants it."""
        return bool(termios.tcgetattr(self.terminal)[3] & termios.ICANON)

    def interrupt(self):
        os.write(self.terminal, b"\x03")

    def end(self):
        """Waits for the end; answers the exit status."""
        status = self.wait_for_end()
        os.close(self.terminal)
        return status

    def wait_for_end(self):
        deadline = time.monotonic() + PATIENCE
        while time.monotonic() < deadline:
            if select.select([self.terminal], [], [], 0.05)[0]:
                try:
                    os.read(self.terminal, 4096)
                except OSError:
                    pass
            pid, status = os.waitpid(self.pid, os.WNOHANG)
            if pid:
                return os.waitstatus_to_exitcode(status)
        os.kill(self.pid, signal.SIGKILL)
        os.waitpid(self.pid, 0)
        raise AssertionError("the session does not end")


def check(name, condition, shown):
    if not condition:
        raise AssertionError(f"{name}: {shown!r}")
    print(f"session: {name}")


def check_commands(directory):
    session = Session(directory)
    shown = session.run("port set 3 loopback on")
    check("a change answers nothing", shown == "", shown)
    shown = session.run("port show 3 detail")
    check("a command shows its answer", re.search(r"^loopback +on$", shown, re.M), shown)
    shown = session.run("prot")
    check("a wrong word is named", 'swctl: unknown word "prot"' in shown, shown)
    shown = session.run("port show 99")
    check("a failure does not end the session", 'bad value "99"' in shown, shown)
    shown = session.run("port show '3")
    check("an open quote is named", "a quote ' is not closed" in shown, shown)
    shown = session.run("   ")
    check("an empty line answers nothing", shown == "", shown)
    session.type("exit\n")
    status = session.end()
    check("exit ends the session with 0", status == 0, status)


def check_json(directory):
    session = Session(directory, "-j")
    shown = session.run("port show 3")
    check("-j holds at a terminal", shown.startswith('[{"port":3,'), shown)
    session.type("quit\n")
    status = session.end()
    check("quit ends the session with 0", status == 0, status)


def longest_line(text):
    return max(len(line) for line in text.replace("\r", "").splitlines())


def check_width(directory):
    session = Session(directory, columns=60)
    shown = session.run("port set help")
    check("help is as wide as the terminal", 40 < longest_line(shown) <= 60, shown)
    shown = session.run("port show x")
    check("so is an error", longest_line(shown) <= 60, shown)
    check("whose lines go on indented", re.search(r"^  [^ ]", shown, re.M), shown)
    resize(session.terminal, 100)
    shown = session.run("port set help")
    check("a terminal of another size has wider help", 60 < longest_line(shown) <= 100, shown)
    session.type("exit\n")
    session.end()


MARK = "sed s/^/paged:/"


def check_pager(directory):
    """`port show` has more lines than the terminal, which has 24."""
    session = Session(directory, SWCTL_PAGER=MARK, PAGER="false")
    shown = session.run("port show")
    check("a long answer goes to the pager", re.search(r"^paged:26 ", shown, re.M), shown)
    shown = session.run("port show 1-22")
    check("one that fits does not", "paged" not in shown and "22" in shown, shown)
    shown = session.run("port show | count")
    check("nor one that a filter makes short", shown == "26\n", shown)
    session.type("exit\n")
    session.end()
    for variables, paged in (({"SWCTL_PAGER": None, "PAGER": MARK}, True),
                             ({"SWCTL_PAGER": "", "PAGER": MARK}, False),
                             ({"SWCTL_PAGER": "cat", "PAGER": MARK}, False),
                             ({"SWCTL_PAGER": MARK, "TERM": "dumb"}, False),
                             ({"SWCTL_PAGER": "no-such-pager"}, False)):
        session = Session(directory, **variables)
        shown = session.run("port show")
        check(f"{variables}", ("paged:" in shown) == paged and "26 " in shown, shown)
        session.type("exit\n")
        session.end()
    session = Session(directory, "-no-pager", SWCTL_PAGER=MARK)
    shown = session.run("port show")
    check("-no-pager", "paged" not in shown and "26 " in shown, shown)
    session.type("exit\n")
    session.end()


def check_usual_pager(directory):
    programs = directory / "programs"
    programs.mkdir()
    (programs / "less").write_text('#!/bin/sh\necho "less with $*"\ncat\n')
    (programs / "less").chmod(0o755)
    session = Session(directory, SWCTL_PAGER=None, PAGER=None,
                      PATH=f"{programs}:{os.environ['PATH']}")
    shown = session.run("port show")
    check("the usual pager is less", "less with -FRX" in shown and "26 " in shown, shown)
    session.type("exit\n")
    session.end()


def check_pager_ends(directory):
    session = Session(directory, SWCTL_PAGER="head -n 1")
    shown = session.run("acl add help")
    check("a pager may end early", len(shown.splitlines()) == 1, shown)
    session.type("exit\n")
    session.end()
    session = Session(directory, SWCTL_PAGER="echo 'wai''ting'; cat >/dev/null; sleep 600")
    session.type("port show\n")
    session.wait_for("waiting")
    time.sleep(0.5)
    session.interrupt()
    session.wait_for(PROMPT)
    shown = session.run("port show 3")
    check("Ctrl-C is the pager's", "3     down" in shown and "interrupted" not in shown, shown)
    session.type("exit\n")
    session.end()


def at_terminal(directory, *words):
    """What swctl prints at a terminal that is wide."""
    pid, terminal = pty.fork()
    if pid == 0:
        resize(0, 1000)
        os.execvpe("swctl", ["swctl", *words],
                   dict(os.environ, TERM="vt100", SWCTL_PAGER=MARK,
                        VCHIP_IMAGE=str(directory / "chip.img")))
    shown = b""
    try:
        while data := os.read(terminal, 4096):
            shown += data
    except OSError:
        pass
    os.waitpid(pid, 0)
    os.close(terminal)
    return shown.decode()


def check_pager_of_command(directory):
    shown = at_terminal(directory, "port", "show")
    check("a command on its own has a pager", "paged:26 " in shown, shown)
    shown = at_terminal(directory, "-p", "port", "show")
    check("at a terminal in JSON too", "paged:]" in shown, shown)
    (directory / "lines").write_text("port show\n")
    shown = at_terminal(directory, "-b", str(directory / "lines"))
    check("a batch has none", "paged" not in shown and "26 " in shown, shown)
    for words in (["port", "show"], ["-p", "port", "show"]):
        piped = subprocess.run(["swctl", *words], check=True, capture_output=True, text=True,
                               env=dict(os.environ, TERM="vt100", SWCTL_PAGER=MARK,
                                        VCHIP_IMAGE=str(directory / "chip.img"))).stdout
        check("nor has a pipe", "paged" not in piped and "26" in piped, piped)


def check_end_of_input(directory):
    session = Session(directory)
    session.run("port show 3")
    session.type("\x04")
    status = session.end()
    check("end of input ends the session with 0", status == 0, status)


# What looks like a dash or like nothing, what libedit might take for a key, and
# bytes that are no character.
STRANGE = ["\u2013", "\u00ad", "\u00a0", "\u200b", "\u0096", "\u00e9", b"\x96", b"\xe2\x80", b"\xff"]


def check_characters(directory, **variables):
    session = Session(directory, **variables)
    for each in STRANGE:
        character = each if isinstance(each, bytes) else each.encode()
        session.type(b"port set 1" + character + b"4 admin off\n")
        shown = session.wait_for("expected interface numbers")
        check(f"{each!r} is kept and refused {variables}", 'bad value "1' in shown, shown)
        session.wait_for(PROMPT)
    shown = session.run("port show 14 detail")
    check("and changes nothing", re.search(r"^admin +on", shown, re.M), shown)
    session.type("exit\n")
    session.end()


def check_interrupts(directory):
    session = Session(directory)
    session.type("port set 5 loopback on")
    session.wait_for("loopback on")
    session.interrupt()
    session.wait_for(PROMPT)
    shown = session.run("port show 5")
    check("Ctrl-C cancels the line", re.search(r"^5 .* off", shown, re.M), shown)
    session.type("port cable 3\n")
    session.wait_for("about three seconds")
    session.interrupt()
    shown = session.wait_for(PROMPT)
    check("Ctrl-C cancels a call that waits", "swctl: port cable 3: interrupted" in shown, shown)
    check("and shows no half of an answer", "open" not in shown, shown)
    session.type("port stats 3 period 600\n")
    time.sleep(0.5)
    session.interrupt()
    shown = session.wait_for(PROMPT)
    check("Ctrl-C cancels a command that waits", "period 600: interrupted" in shown, shown)
    session.type("mac monitor\n")
    time.sleep(0.5)
    session.interrupt()
    shown = session.wait_for(PROMPT)
    check("Ctrl-C ends what runs until then", "interrupted" not in shown, shown)
    shown = session.run("port show 3")
    check("and the session goes on", "3     down" in shown, shown)
    session.type("exit\n")
    check("to its end", session.end() == 0, "")


def check_signals(directory):
    session = Session(directory)
    session.wait_for_editor()
    # The group is orphaned: nothing stops it, but the way there and back is gone.
    os.kill(session.pid, signal.SIGTSTP)
    os.kill(session.pid, signal.SIGWINCH)
    time.sleep(0.2)
    session.type("port show 3\n")
    session.wait_for("3     down")
    session.wait_for(PROMPT)
    print("session: a signal to stop leaves the editor in order")
    session.wait_for_editor()
    os.kill(session.pid, signal.SIGTERM)
    status = session.wait_for_end()
    check("TERM ends the session", status == -signal.SIGTERM, status)
    check("with the terminal in order", session.is_in_order(), "raw")
    os.close(session.terminal)


def check_completion(directory):
    session = Session(directory)
    session.type("po\tset 3 sp\t100 du\tfull\n")
    session.wait_for("\n")
    shown = session.wait_for(PROMPT)
    check("TAB completes words", "swctl" not in shown, shown)
    shown = session.run("port show 3 detail")
    check("a completed line runs", re.search(r"^speed +100$", shown, re.M), shown)
    session.type("port s\t")
    shown = session.wait_for("\r\n  set\r\n")
    check("TAB lists several words", "\n  show" in shown, shown)
    session.wait_for(PROMPT + "port s")
    session.type("how 3 x\t\n")
    shown = session.wait_for("expected detail")
    check("TAB adds nothing where nothing fits", 'unknown word "x"' in shown, shown)
    session.wait_for(PROMPT)
    session.type("ex\t\n")
    status = session.end()
    check("TAB completes the words of the session", status == 0, status)


def check_help_key(directory):
    session = Session(directory)
    session.type("?")
    shown = session.wait_for(PROMPT)
    check("? lists the objects", "  version  Show the version" in shown, shown)
    session.type("port set ?")
    shown = session.wait_for(PROMPT + "port set ")
    check("? shows place holders", "PORTS  Ports to change" in shown, shown)
    session.type("3 d?")
    shown = session.wait_for(PROMPT + "port set 3 d")
    check("? keeps to what is typed", "duplex" in shown and "loopback" not in shown, shown)
    session.type("uplex half loopback on ?")
    shown = session.wait_for(PROMPT)
    check("? goes on after a value", re.search(r"^  speed +Forced speed", shown, re.M), shown)
    session.type("x y ?")
    shown = session.wait_for(PROMPT)
    check("? names a wrong word", 'unknown word "x"' in shown, shown)
    session.type("\x15port show 'what?'\n")
    shown = session.wait_for(PROMPT)
    check("? inside quotes is itself", 'bad value "what?"' in shown, shown)
    session.type("exit\n")
    session.end()


def check_history(directory):
    lines = (directory / "swctl" / "history").read_text().replace("\\040", " ")
    check("the history is kept", "\nport show 99\n" in lines, lines)
    session = Session(directory)
    session.run("port show 7 detail")
    session.type("exit\n")
    session.end()
    session = Session(directory)
    session.type("\x10\x10\n")
    shown = session.wait_for("chip_port")
    check("the history comes back in the next session", "port show 7 detail" in shown, shown)
    session.wait_for(PROMPT)
    session.type("exit\n")
    session.end()


def check_unwritable_history(directory):
    blocked = directory / "blocked"
    blocked.mkdir()
    (blocked / "swctl").write_text("a file, not a directory")
    subprocess.run(["vchipctl", "--image", blocked / "chip.img", "reset"], check=True)
    session = Session(blocked)
    shown = session.run("port show 3 detail")
    check("a history that cannot be kept is said",
          "history file" in shown and "chip_port" in shown, shown)
    shown = session.run("port show 3 detail")
    check("but only once", "history file" not in shown, shown)
    session.type("exit\n")
    session.end()


def main():
    with tempfile.TemporaryDirectory() as name:
        directory = pathlib.Path(name)
        subprocess.run(["vchipctl", "--image", directory / "chip.img", "reset"], check=True)
        check_commands(directory)
        check_json(directory)
        check_width(directory)
        check_pager(directory)
        check_usual_pager(directory)
        check_pager_ends(directory)
        check_pager_of_command(directory)
        check_end_of_input(directory)
        for locale in ("C", "C.UTF-8", "", "none"):
            check_characters(directory, LC_ALL=locale)
        check_interrupts(directory)
        if EDITOR == "libedit":
            check_signals(directory)
            check_completion(directory)
            check_help_key(directory)
            check_history(directory)
            check_unwritable_history(directory)


main()
