# SPDX-License-Identifier: MIT
"""service_test.py PROGRAMS: the unit for systemd, read by systemd; its command is run by hand."""
import pathlib
import re
import shlex
import shutil
import subprocess
import sys

import wires

UNIT = pathlib.Path(__file__).resolve().parents[2] / "packaging/vchipd@.service"


class Service(wires.Case):
    def unit(self):
        """With the programs of the build, and the state of the test."""
        return UNIT.read_text(encoding="ascii").replace("/usr/bin", str(wires.PROGRAMS)).replace(
            "/var/lib/swctl", self.directory)

    def verify(self, text):
        pathlib.Path(self.path("vchipd@.service")).write_text(text, encoding="ascii")
        pathlib.Path(self.path("vchipd@one.service")).symlink_to("vchipd@.service")
        result = subprocess.run(
            ["systemd-analyze", "verify", "--man=no", self.path("vchipd@one.service")],
            capture_output=True, text=True, timeout=60, check=False)
        pathlib.Path(self.path("vchipd@one.service")).unlink()
        return [line for line in result.stderr.splitlines() if "vchipd@" in line]

    def test_systemd_reads_it(self):
        self.assertEqual(self.verify(self.unit()), [])
        self.assertNotEqual(self.verify(self.unit().replace("NoNewPrivileges", "NewPrivileges")), [])

    def test_its_command(self):
        """With the options of a file as the unit's own words show it."""
        config = pathlib.Path(self.path("config"))
        config.write_text("vlan add 20\n", encoding="ascii")
        options = f"--port 2=unix:{self.path('sw2')} --config {config}"
        line = re.search(r"^ExecStart=(.*)$", self.unit(), re.MULTILINE)[1]
        words = shlex.split(line.replace("%i", "chip").replace("$OPTIONS", options))
        del self.environment["VCHIP_IMAGE"]
        process = subprocess.Popen(words, env=self.environment, text=True, stdout=subprocess.PIPE,
                                   stderr=subprocess.PIPE)
        self.processes.append(process)
        self.environment["VCHIP_IMAGE"] = self.image
        wires.wait_until(lambda: self.run_program("vchipctl", "wires").returncode == 0,
                         "vchipd answers")
        self.assertEqual(list(self.wires()), [2])
        self.assertEqual(self.swctl("config show"), "vlan add 20\n")
        self.assertEqual(self.end(process), "")


if __name__ == "__main__":
    if not shutil.which("systemd-analyze"):
        print("service_test: not run: there is no systemd-analyze")
        sys.exit(77)
    wires.main()
