# SPDX-License-Identifier: MIT
"""A board in this process: what is outside of it, frames, failures."""
import os
import pathlib
import signal
import struct
import subprocess
import sys

import dpkt
import pytest
import swctl
from swctl import c
from swctl.vchip import Board

BROADCAST = bytes.fromhex("ffffffffffff020000000001") + b"\x08\x00" + bytes(46)


def run(code, **environment):
    """Python in another process."""
    return subprocess.run([sys.executable, "-c", code], capture_output=True, text=True, check=False,
                          env={**os.environ, **environment})


def test_each_private_board_is_fresh():
    for _ in range(3):
        with Board() as board:
            assert [vlan["vid"] for vlan in board.dump("vlan")["vlans"]] == [1]
            assert board.calls() == []
            swctl.vlan.create(10)
            board.link_up(1)
            board.advance(1)
            board.fail("rtk_*")


def test_a_board_on_an_image_keeps_it_and_shares_it(tmp_path):
    image = tmp_path / "chip.img"
    with Board(image) as board:
        swctl.vlan.create(10)
        assert os.environ["VCHIP_IMAGE"] == str(image) == board.environment["VCHIP_IMAGE"]
        done = run("import swctl; print(swctl.vlan.port(10)); swctl.vlan.create(11)")
        assert done.stdout.startswith("PortResult("), done.stderr
        assert swctl.vlan.port(11)
    assert "VCHIP_IMAGE" not in os.environ
    with Board() as board, pytest.raises(swctl.Refused):
        swctl.vlan.port(10)
    with Board(str(image)):
        assert swctl.vlan.port(10)


def test_the_image_of_the_environment_comes_back(monkeypatch, tmp_path):
    monkeypatch.setenv("VCHIP_IMAGE", str(tmp_path / "own.img"))
    with Board():
        assert "VCHIP_IMAGE" not in os.environ
    assert os.environ["VCHIP_IMAGE"] == str(tmp_path / "own.img")


def test_cables(board):
    board.link_up(1, 2)
    assert [swctl.port.link_status(port) for port in (1, 2, 3)] == [1, 1, 0]
    board.link_down(1)
    assert swctl.port.link_status(1) == 0
    board.link_up(4, ability=c.VCHIP_ABILITY_100_FULL, autonegotiation=False)
    assert swctl.port.speed(4) == 100
    board.reset()
    assert swctl.port.link_status(2) == 0
    with pytest.raises(swctl.Refused, match="vchip_cable_plug.*a value is outside"):
        board.link_up(5, ability=1)


def test_frames_go_through(board):
    board.link_up(1, 2, 3)
    left = board.send(BROADCAST, port=3)
    assert set(left) == {0, 1, 2} and left[1] == [BROADCAST]
    assert board.expect(BROADCAST, on=[1, 2], port=3)[2] == [BROADCAST]
    assert board.expect(BROADCAST, on=[0, 1, 2], port=3)
    assert board.transmit(BROADCAST, 2) == [BROADCAST]
    assert board.transmit(BROADCAST, 5) == []


def test_anything_with_bytes_is_a_frame(board):
    board.link_up(1, 2)
    packet = dpkt.ethernet.Ethernet(dst=b"\xff" * 6, src=b"\x02\0\0\0\0\x01", type=0x0800, data=bytes(46))
    for frame in (packet, bytearray(BROADCAST), memoryview(BROADCAST)):
        assert board.send(frame, 1)[2] == [BROADCAST]
    for wrong in ("ff", 60, None, [1, 2]):
        with pytest.raises(TypeError, match="frame: expected bytes or something with bytes"):
            board.send(wrong, 1)
    with pytest.raises(swctl.Refused, match="a value is outside its range"):
        board.send(b"short", 1)


def test_expect_explains_what_became_of_the_frame(board):
    board.link_up(1, 2)
    with pytest.raises(AssertionError) as caught:
        board.expect(BROADCAST, on=[2, 3])
    said = str(caught.value)
    assert said.startswith("the frame that came in at port 1 left by ports 0 and 2, not ports 2 and 3:\n")
    assert "disabled or without a link  [rtk_port_adminEnable_set]" in said
    assert str(board.explain(BROADCAST)).endswith("leaves ports 0 and 2")
    with pytest.raises(AssertionError, match="port 4 has no link"):
        board.expect(BROADCAST, on=[1], port=4)
    assert board.explain(BROADCAST, 4).dropped == "port: port 4 has no link"


def test_expect_wants_ports_that_there_are(board):
    with pytest.raises(TypeError, match=r"on: expected a collection of ports such as \[2, 3\], not 2"):
        board.expect(BROADCAST, on=2)
    with pytest.raises(ValueError, match="on: there is no port 40"):
        board.expect(BROADCAST, on=[40])


def test_explain_changes_nothing(board):
    board.link_up(1, 2)
    before = board.dump()
    assert board.explain(BROADCAST).ports == {0, 2}
    assert board.dump() == before


def test_a_capture_keeps_what_leaves(board, tmp_path):
    board.link_up(1, 2, 3)
    with board.capture() as seen, board.capture(port=2) as second:
        board.send(BROADCAST, 1)
        board.advance(0.5)
        board.send(BROADCAST, 3)
    board.send(BROADCAST, 3)
    assert seen.ports == {0, 1, 2, 3} and len(second) == 2 and second[2] == [BROADCAST] * 2
    assert [(each.came_by, each.time) for each in second] == [(1, second.departures[0].time),
                                                              (3, second.departures[0].time + 500_000_000)]
    second.save(tmp_path / "seen.pcap")
    frames = [frame for _, frame in dpkt.pcap.Reader(open(tmp_path / "seen.pcap", "rb"))]
    assert frames == [BROADCAST] * 2


def test_the_clock_ages_addresses(board):
    board.link_up(1, 2)
    board.send(BROADCAST, 1)
    entries = board.dump("l2")["addresses"]
    assert [entry["mac"] for entry in entries] == ["02:00:00:00:00:01"]
    board.advance(100_000)
    assert board.dump("l2")["addresses"] == []
    for wrong in (-1, "1", None, True):
        with pytest.raises(ValueError, match="seconds: expected 0 or more"):
            board.advance(wrong)


def test_a_call_fails_when_it_is_told_to(board):
    board.fail("rtk_vlan_create", nth=2, result=-7)
    swctl.vlan.create(10)
    with pytest.raises(swctl.Refused) as caught:
        swctl.vlan.create(11)
    assert caught.value.code == -7
    swctl.vlan.create(12)
    assert [(call.arguments["vid"], call.result, call.made_up) for call in board.calls("rtk_vlan_create")] == [
        (10, 0, False), (11, -7, True), (12, 0, False)]
    board.fail("rtk_vlan_*", vid=13)
    with pytest.raises(swctl.Refused):
        swctl.vlan.create(13)
    board.mend()
    board.fail("rtk_port_link_get", nth=2, port=4)
    for port in (4, 5, 4):
        swctl.port.link_status(port)
    with pytest.raises(swctl.Refused):
        swctl.port.link_status(5)
    swctl.vlan.create(13)
    board.forget_calls()
    assert board.calls() == []


@pytest.mark.parametrize("arguments,why", [
    ({"name": "rtk_nothing"}, "rtk_nothing"),
    ({"name": "rtk_vlan_create", "nth": 0}, "nth: expected 1 for the next call"),
    ({"name": "rtk_vlan_create", "result": 0}, "result: a failure is a negative number"),
    ({"name": "rtk_vlan_create", "colour": 3}, "colour"),
])
def test_a_failure_that_cannot_be_is_refused(board, arguments, why):
    with pytest.raises(ValueError, match=why):
        board.fail(**arguments)
    swctl.vlan.create(10)


def test_a_closed_board_says_so():
    board = Board()
    for use in (board.dump, board.calls, board.reset, board.mend, board.capture, board.forget_calls,
                lambda: board.send(BROADCAST), lambda: board.explain(BROADCAST), lambda: board.fail("rtk_*"),
                lambda: board.link_up(1), lambda: board.link_down(1), lambda: board.advance(1),
                lambda: board.transmit(BROADCAST, 1)):
        with pytest.raises(swctl.BoardError, match="this board is closed: use it inside `with"):
            use()
    with board:
        with pytest.raises(swctl.BoardError, match="this board is open already"):
            board.open()
        with pytest.raises(swctl.BoardError, match="is open in this process, and a process has one chip"):
            Board().open()
        with pytest.raises(swctl.BoardError, match=r"open it on an image, Board\(image=...\)"):
            board.environment
    board.close()
    with pytest.raises(ValueError, match="unit: a board has units 0 to 1, not 2"):
        Board(unit=2)


def test_a_block_that_is_not_there_is_named(board):
    assert board.dump("rules") == board.dump()["rules"]
    with pytest.raises(ValueError, match="block: the chip has no 'vlam', only .*vlan"):
        board.dump("vlam")


@pytest.mark.parametrize("make", [lambda path: path.write_text("no image"), lambda path: path.mkdir()])
def test_a_file_that_is_no_image_is_named(tmp_path, make):
    make(tmp_path / "chip.img")
    with pytest.raises(swctl.BoardError, match=r"chip\.img.*name another file"):
        Board(tmp_path / "chip.img").open()
    with Board():
        pass


# Has the lock of an image nearly all the time: each call is many frames.
HOLDER = """
import swctl
from swctl import c
with swctl.vchip.Board({!r}):
    frame, frames = c.ffi.new("uint8_t[]", 60), c.ffi.new("struct vchip_arrival_t[]", 20000)
    for each in frames:
        each.bytes, each.length, each.port = frame, 60, 1
    print("open", flush=True)
    while True:
        c.vchip_frames_arrive(0, frames, 20000)
"""


def test_an_image_in_another_s_hands_is_not_waited_for(tmp_path, monkeypatch):
    monkeypatch.setenv("VCHIP_WAIT", "0.2")
    image = str(tmp_path / "chip.img")
    with subprocess.Popen([sys.executable, "-c", HOLDER.format(image)], stdout=subprocess.PIPE) as other:
        other.stdout.readline()
        try:
            while not stopped_with_the_lock(other.pid, image):
                pass
            done = run(f"import swctl; swctl.vchip.Board({image!r}).open()")
            assert done.returncode != 0
            assert "gave up waiting: name another file, or `vchipctl status` says who uses it" in done.stderr
        finally:
            other.kill()


def stopped_with_the_lock(process, image):
    os.kill(process, signal.SIGSTOP)
    said = subprocess.run(["vchipctl", "status"], capture_output=True, text=True, check=True,
                          env={**os.environ, "VCHIP_IMAGE": image}).stdout
    if "by nobody" not in said.split("held", 1)[1].splitlines()[0]:
        return True
    os.kill(process, signal.SIGCONT)
    return False


@pytest.mark.parametrize("environment,why", [
    ({"SWCTL_LIBRARY_PATH": "/nowhere"}, "libswctl-vchip.so.1 cannot be loaded: install the package "
                                         "libswctl-vchip1, or name the directory that holds it in SWCTL_LIBRARY_PATH"),
    ({"SWCTL_PLATFORM": "libnothing.so"}, "libnothing.so cannot be loaded: name the directory"),
])
def test_a_library_that_is_not_found_is_named(environment, why):
    done = run("import swctl; swctl.vlan.create(1)", **environment)
    assert done.returncode != 0 and why in done.stderr.replace("\n", " ")


def test_with_the_libraries_of_a_platform_there_is_no_virtual_board():
    done = run("import swctl\nprint(swctl.vlan.create(1) > 0)\nswctl.vchip.Board().open()",
               SWCTL_PLATFORM="libswctl-vchip.so.1")
    assert done.stdout == "True\n"
    assert "a Board is a virtual chip, and SWCTL_PLATFORM names other libraries; unset it" in done.stderr


def test_without_the_probe_all_but_calls_works(tmp_path):
    libraries = pathlib.Path(os.environ["SWCTL_LIBRARY_PATH"])
    for name in ("libswctl.so.1", "libswctl-vchip.so.1"):
        (tmp_path / name).symlink_to(libraries / name)
    done = run("import swctl\nwith swctl.vchip.Board() as b:\n    swctl.vlan.create(10)\n    print(swctl.vlan.port(10))\n"
               "    b.fail('rtk_*')", SWCTL_LIBRARY_PATH=str(tmp_path))
    assert done.stdout.startswith("PortResult") and "libswctl-probe.so.1 is not there" in done.stderr
