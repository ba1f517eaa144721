# SPDX-License-Identifier: MIT
"""errors_test.py PROGRAMS: what vchipd refuses, with what words."""
import os
import pathlib
import socket
import subprocess

import wires
from wires import write_capture, frame, mac, BROADCAST


class Errors(wires.Case):
    def refused(self, status, complaint, *words):
        """The whole complaint; nothing is left."""
        process = self.launch(*words)
        _, errors = process.communicate(timeout=wires.PATIENCE)
        self.assertEqual((errors, process.returncode), (f"vchipd: {complaint}\n", status))
        left = [name for name in os.listdir(self.directory) if ".wires" in name]
        self.assertEqual(left, [])

    def port_refused(self, status, port, complaint):
        self.refused(status, complaint, "--port", port)

    def test_words(self):
        kinds = ("veth:NAME[:PEER], netdev:NAME, tap:NAME, unix:PATH, tcp:ADDR:PORT, "
                 "pcap:[IN][,OUT], cpu:[PREFIX]")
        self.port_refused(1, "1=modem:x", f"no wire 'modem:x': expected {kinds}")
        self.port_refused(1, "1=veth", f"no wire 'veth': expected {kinds}")
        self.port_refused(1, "veth:sw1", "--port veth:sw1: expected PORT=WIRE, such as 1=veth:sw1")
        self.port_refused(1, "1=cpu:", "cpu:: the processor's side is at port 0 alone")
        self.port_refused(1, "0=cpu:abcdefghijklm", "cpu:abcdefghijklm: the name "
                          "'abcdefghijklmp27' is too long for an interface: 16 characters, at most "
                          "15")
        for port in ("27", "p29", "x", "", "01", "-1"):
            self.port_refused(1, f"{port}=unix:/tmp/x",
                              f"no port '{port}': expected 1 to 26, 0 the CPU, or p0 to p28")

    def test_no_image(self):
        del self.environment["VCHIP_IMAGE"]
        self.refused(1, "no image: give --image FILE or set VCHIP_IMAGE")

    def test_names_of_interfaces(self):
        self.port_refused(1, "1=veth:abcdefghijklmnop",
                          "veth:abcdefghijklmnop: the name 'abcdefghijklmnop' is too long for an "
                          "interface: 16 characters, at most 15")
        # The peer's name is one longer.
        self.port_refused(1, "1=veth:abcdefghijklmno",
                          "veth:abcdefghijklmno: the name 'abcdefghijklmnoh' is too long for an "
                          "interface: 16 characters, at most 15")
        self.port_refused(1, "1=tap:a b", "tap:a b: 'a b' can be no name of an interface")
        self.port_refused(1, "1=netdev:", "netdev:: '' can be no name of an interface")

    def test_names_of_sockets(self):
        name = "/tmp/" + "x" * 110
        self.port_refused(1, f"1=unix:{name}",
                          f"unix:{name}: the name is too long: 115 characters, at most 107")
        self.port_refused(1, "1=unix:", "unix: needs the path of a socket")
        self.port_refused(2, "1=unix:/nowhere/s", "unix:/nowhere/s: No such file or directory")
        pathlib.Path(self.path("file")).write_text("mine")
        self.port_refused(2, f"1=unix:{self.path('file')}",
                          f"unix:{self.path('file')}: there is a file of that name, and it is no "
                          "socket")
        self.assertEqual(pathlib.Path(self.path("file")).read_text(), "mine")
        for rest in ("1234", ":1", "127.0.0.1:"):
            self.port_refused(1, f"1=tcp:{rest}", f"tcp:{rest}: expected tcp:ADDR:PORT")

    def test_no_such_interface(self):
        self.port_refused(2, "1=netdev:nowhere", "netdev:nowhere: there is no interface nowhere")

    def test_captures(self):
        self.port_refused(1, "1=pcap:", "pcap: needs a capture to read, or after a comma one to "
                          "write")
        self.port_refused(2, f"1=pcap:{self.path('none')}",
                          f"{self.path('none')}: No such file or directory")
        self.port_refused(2, "1=pcap:,/nowhere/out", "/nowhere/out: No such file or directory")
        write_capture(self.path("wifi"), [], link_type=105)
        self.port_refused(2, f"1=pcap:{self.path('wifi')}",
                          f"{self.path('wifi')}: frames of link type IEEE802_11, not of Ethernet")
        pathlib.Path(self.path("text")).write_text("x" * 100)
        self.port_refused(2, f"1=pcap:{self.path('text')}",
                          f"{self.path('text')}: unknown file format")

    def test_a_cut_capture_plays_to_the_cut(self):
        write_capture(self.path("whole"), [(0, frame(BROADCAST, mac(1)))] * 2)
        data = pathlib.Path(self.path("whole")).read_bytes()
        pathlib.Path(self.path("cut")).write_bytes(data[:-1])
        process = self.launch("--virtual-time", "--port", f"1=pcap:{self.path('cut')}")
        _, errors = process.communicate(timeout=wires.PATIENCE)
        self.assertEqual(process.returncode, 0)
        self.assertRegex(errors, "^vchipd: .*/cut: .*truncated")
        self.assertEqual(self.drops(1)["received"], 1)

    def test_a_port_twice(self):
        self.refused(2, f"port 1 has a wire already: unix:{self.path('a')}",
                     "--port", f"1=unix:{self.path('a')}", "--port", f"1=unix:{self.path('b')}")
        self.assertFalse(os.path.exists(self.path("a")))

    def test_a_port_of_tcp_in_use(self):
        """Somebody has it and does not listen: the wire waits until one of both changes."""
        holder = socket.socket()
        holder.bind(("127.0.0.1", 0))
        self.start(f"1=tcp:127.0.0.1:{holder.getsockname()[1]}")
        wires.wait_until(lambda: self.wires()[1]["note"] == "connecting", "it does not listen")
        holder.close()
        wires.wait_until(lambda: self.wires()[1]["note"] == "listening", "it listens")

    def test_an_image_has_one_vchipd_a_unit(self):
        first = self.start(f"1=unix:{self.path('s1')}")
        second = self.launch("--port", f"2=unix:{self.path('s2')}")
        _, errors = second.communicate(timeout=wires.PATIENCE)
        self.assertEqual((errors, second.returncode),
                         (f"vchipd: image {self.image}: unit 0 is served by process {first.pid} "
                          "already\n", 2))
        self.assertEqual(list(self.wires()), [1])
        other = self.launch("--unit", "1", "--port", f"2=unix:{self.path('s2')}")
        wires.wait_until(lambda: self.run_program("vchipctl", "wires", "--unit", "1").returncode
                         == 0, "the other unit is served")
        self.end(other)

    def test_a_bad_image(self):
        pathlib.Path(self.image).write_text("no image\n" * 1000)
        process = self.launch()
        _, errors = process.communicate(timeout=wires.PATIENCE)
        self.assertEqual(process.returncode, 2)
        self.assertIn(self.image, errors)

    def write_config(self, *lines):
        path = pathlib.Path(self.path("config"))
        path.write_text("".join(f"{line}\n" for line in lines))
        return str(path)

    def config_refused(self, config, *complaints):
        """With these lines in front of vchipd's own; no setting is changed."""
        before = self.swctl("config show")
        process = self.launch("--config", config, "--port", f"1=unix:{self.path('s1')}")
        _, errors = process.communicate(timeout=wires.PATIENCE)
        self.assertEqual(process.returncode, 2)
        lines = errors.splitlines()
        self.assertEqual(lines[-1], f"vchipd: --config {config}: swctl has refused it")
        for line, complaint in zip(lines, complaints):
            self.assertTrue(line.startswith(complaint), (line, complaint))
        self.assertEqual(len(lines), len(complaints) + 2, errors)
        self.assertEqual([name for name in os.listdir(self.directory)
                          if ".wires" in name or name == "s1"], [])
        self.assertEqual(self.swctl("config show"), before)

    def test_config(self):
        """The chip becomes as the file says: what it does not mention goes."""
        self.swctl("vlan add 99")
        config = self.write_config("port set 2 vlan 20", "# a comment", "vlan add 20 untagged 2")
        process = self.start(options=["--config", config])
        self.assertEqual(self.swctl("config show"),
                         "vlan add 20 untagged 2\nport set 2 vlan 20\n")
        self.end(process)

    def test_a_saved_config(self):
        for line in ("vlan add 30 tagged 1-4", "port set 3 ingress 100mbit",
                     "acl add 300 src-ip 10.0.0.0/8 action drop enable"):
            self.swctl(line)
        saved = self.swctl("config show")
        self.swctl(f"config save {self.path('saved')}")
        self.vchipctl("reset")
        self.start(options=["--config", self.path("saved")])
        self.assertEqual(self.swctl("config show"), saved)

    def test_config_of_the_other_unit(self):
        self.launch("--unit", "1", "--config", self.write_config("vlan add 20"))
        wires.wait_until(lambda: self.run_program("vchipctl", "wires", "--unit", "1").returncode
                         == 0, "the other unit is served")
        self.assertIn("vlan add 20", self.swctl("-u 1 config show"))
        self.assertEqual(self.swctl("config show"), "")

    def test_a_wrong_config(self):
        self.swctl("vlan add 99")
        config = self.write_config("vlan add 30", "vlan subtract 30", "port set 5 vlna 30")
        self.config_refused(config, f'{config}:2: vlan: unknown word "subtract"',
                            f'{config}:3: port set 5: unknown word "vlna" (did you mean "vlan"?)')
        config = self.write_config("vlan add 30", "port show 3")
        self.config_refused(config, f'{config}:2: port show 3: "port show" makes no setting')
        config = self.write_config("trunk set 1 25-26", "trunk set 2 26")
        self.config_refused(config, f"{config}:2: port 26 is in another trunk too")

    def test_a_config_that_is_not_there(self):
        missing = self.path("missing")
        process = self.launch("--config", missing)
        _, errors = process.communicate(timeout=wires.PATIENCE)
        self.assertEqual((errors, process.returncode),
                         (f'swctl: config load {missing}: "{missing}": No such file or directory\n'
                          f"vchipd: --config {missing}: swctl has refused it\n", 2))

    def test_a_config_that_the_chip_refuses(self):
        """Half-way: what was changed is put back."""
        self.environment["SWPROBE_FAIL"] = "rtk_vlan_create nth 2 result -5"
        config = self.write_config("vlan add 30", "vlan add 31")
        process = self.launch("--config", config)
        _, errors = process.communicate(timeout=wires.PATIENCE)
        del self.environment["SWPROBE_FAIL"]
        self.assertEqual(process.returncode, 2)
        self.assertIn("vlan add 30,31", errors.replace("30-31", "30,31"))
        self.assertIn("all is as it was", errors)
        self.assertEqual(self.swctl("config show"), "")

    def test_vchipctl(self):
        no_one = f"vchipctl: image {self.image}: no vchipd serves unit 0\n"
        for words in (["wires"], ["wire", "1", "tap:x"]):
            result = self.run_program("vchipctl", *words)
            self.assertEqual((result.returncode, result.stderr), (2, no_one))
        self.start()
        result = self.run_program("vchipctl", "wire", "1", "radio:x")
        self.assertEqual(result.returncode, 2)
        self.assertTrue(result.stderr.startswith("vchipctl: no wire 'radio:x': expected veth:"))
        self.assertEqual(self.vchipctl("wires", "-j"), "[]\n")

    def test_requests_of_any_bytes(self):
        """They are refused or the connection is closed; vchipd goes on."""
        self.start()
        for request in (b"", b"\n", b"{}\n", b"[1]\n", b'{"do":1}\n', b'{"do":"wire"}\n',
                        b'{"do":"wire","port":29,"wire":"none"}\n', b'{"do":"wire","port":-1,'
                        b'"wire":"none"}\n', b'{"do":"wire","port":"1","wire":"none"}\n',
                        b'{"do":"\xff"}\n', b"x" * 20000 + b"\n", b"[" * 5000 + b"\n"):
            with socket.socket(socket.AF_UNIX) as caller:
                caller.settimeout(wires.PATIENCE)
                caller.connect(self.image + ".wires0")
                try:
                    caller.sendall(request)
                    caller.shutdown(socket.SHUT_WR)
                    answer = caller.recv(65536)
                except OSError:
                    continue
                self.assertTrue(answer == b"" or b'"error"' in answer, (request, answer))
        self.assertEqual(self.wires(), {})


class NoRight(wires.Case):
    """As an ordinary user, who may make no interface."""

    def test_interfaces(self):
        if os.getuid() == 0:
            os.chmod(self.directory, 0o777)
        for wire in ("veth:sw1", "netdev:lo", "tap:t1"):
            words = [wires.PROGRAMS / "vchipd", "--port", f"1={wire}"]
            if os.getuid() == 0:
                words = ["setpriv", "--reuid=65534", "--regid=65534", "--clear-groups", *words]
            result = subprocess.run(words, env=self.environment, capture_output=True, text=True,
                                    timeout=wires.PATIENCE, check=False)
            self.assertEqual(result.returncode, 2)
            self.assertIn(wire, result.stderr)
            self.assertIn("no right", result.stderr)
            self.assertIn("unshare -Urn", result.stderr)


if __name__ == "__main__":
    wires.main()
