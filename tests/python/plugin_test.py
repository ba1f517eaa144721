# SPDX-License-Identifier: MIT
"""The fixtures, in runs of pytest of their own."""
import textwrap

HEAD = "import swctl, time, sys, signal\nimport pytest\nfrom swctl import codes\n\n"
# A program that configures a chip and stays: what it says and where it fails.
PROGRAM = """
    import signal, sys, swctl
    signal.pthread_sigmask(signal.SIG_BLOCK, [signal.SIGHUP])
    try:
        swctl.vlan.create(10)
        swctl.port.loopback_set(1, True)
    except swctl.Refused as error:
        print("gave up:", error, flush=True)
        sys.exit(3)
    print("ready", flush=True)
    signal.sigwait([signal.SIGHUP])
    print("changed", flush=True)
    signal.pause()
"""


def run(pytester, text, *words, program=PROGRAM):
    (pytester.path / "program.py").write_text(textwrap.dedent(program))
    pytester.makepyfile(HEAD + textwrap.dedent(text))
    return pytester.runpytest("-p", "swctl.pytest_plugin", "-p", "no:cacheprovider", "-q", *words)


def test_every_test_has_a_fresh_board_in_parallel_too(pytester):
    text = """
    @pytest.mark.parametrize("number", range(12))
    def test_fresh(board, number):
        assert len(board.dump("vlan")["vlans"]) == 1
        swctl.vlan.create(number + 10)
    """
    run(pytester, text).assert_outcomes(passed=12)
    run(pytester, text, "-p", "xdist", "-n", "2").assert_outcomes(passed=12)


def test_a_daemon_is_on_the_image_and_is_ended(pytester):
    run(pytester, """
    import re
    def test_it(board_image, daemon):
        one = daemon(sys.executable, "program.py", wait_for="ready")
        assert swctl.vlan.port(10)
        one.signal(signal.SIGHUP)
        one.wait_for(re.compile("chang.d"))
        one.wait_for(lambda: swctl.port.loopback(1))
        test_it.one = one
    def test_ended():
        assert test_it.one.process.returncode == -signal.SIGTERM
    """).assert_outcomes(passed=2)


def test_the_log_of_a_daemon_is_shown_when_the_test_fails(pytester):
    done = run(pytester, """
    def test_fails(board_image, daemon):
        daemon(sys.executable, "program.py", wait_for="ready")
        assert False
    def test_late(board_image, daemon):
        daemon(sys.executable, "program.py", wait_for="ready").wait_for("never", deadline=0.2)
    def test_ends(board_image, daemon):
        swctl.vlan.create(10)
        daemon(sys.executable, "-c", "print('bad'); raise SystemExit(4)", wait_for="ready")
    def test_absent(daemon):
        daemon("./no-such-program")
    """)
    done.assert_outcomes(failed=4)
    done.stdout.fnmatch_lines(["*- log of python3* -*", "ready"])
    done.stdout.fnmatch_lines(["E*python3* has not come to 'never' in 0.2 seconds; it printed:", "E*ready"])
    done.stdout.fnmatch_lines(["E*python3* ended with status 4 before 'ready'; it printed:", "E*bad"])
    done.stdout.fnmatch_lines(["E*./no-such-program: No such file or directory; name the program with its path*"])


def test_a_daemon_that_crashes_is_an_error(pytester):
    done = run(pytester, """
    def test_crash(daemon):
        one = daemon(sys.executable, "-c", "import os; print('now', flush=True); os.abort()", wait_for="now")
        one.process.wait()
    def test_killed(daemon):
        daemon("sleep", "60").signal(signal.SIGKILL)
    """)
    done.assert_outcomes(passed=2, errors=1)
    done.stdout.fnmatch_lines(["python3* was ended by SIGABRT", "*- log of python3* -*", "now"])


def test_each_call_of_a_test_fails_once(pytester):
    done = run(pytester, """
    seen = []
    def test_refusals_come_out(board, fail_each):
        seen.append(fail_each.call and fail_each.call.split("(")[0])
        swctl.vlan.create(10)
        swctl.port.loopback_set(1, True)
    def test_runs():
        assert seen == [None, "rtk_vlan_create", "rtk_diag_portMacLocalLoopbackEnable_set"]
    def test_a_fault(board, fail_each):
        swctl.port.loopback_set(1, True)
        try:
            up = swctl.port.loopback(1)
        except swctl.Refused:
            up = False
        assert up
    @pytest.mark.fail_each(only="rtk_vlan_*", result=-9, most=1)
    def test_some(board, fail_each):
        seen.append(fail_each.nth)
        try:
            swctl.port.loopback_set(1, True)
            swctl.vlan.create(10)
        except swctl.Refused as error:
            assert error.code == -9
        swctl.vlan.create(11)
    def test_some_runs():
        assert seen[3:] == [0, 1]
    """)
    # Three runs, one, two of three and the one that fails, two, one; none is hidden.
    done.assert_outcomes(passed=3 + 1 + 2 + 2 + 1, failed=1)
    done.stdout.fnmatch_lines(["*test_a_fault?call 2 fails: rtk_diag_portMacLocalLoopbackEnable_get(*"])
    done.stdout.fnmatch_lines(["*- the call that failed -*", "call 2: rtk_diag_portMacLocalLoopbackEnable_get(*"])


def test_each_call_of_a_daemon_fails_once(pytester):
    text = """
    def test_it(board_image, daemon, fail_each):
        swctl.vlan.default()
        one = daemon(sys.executable, "program.py")
        if fail_each.call is None:
            one.wait_for("ready")
        else:
            one.wait_for("gave up")
            assert one.wait() == 3
            assert "gave up" in one.log
    """
    run(pytester, text).assert_outcomes(passed=3)
    run(pytester, text, "-p", "xdist", "-n", "1").assert_outcomes(passed=3)
    careless = PROGRAM.replace("sys.exit(3)", "pass")
    done = run(pytester, text.replace("one.wait() == 3", "one.wait(deadline=0.2) == 3"), program=careless)
    done.assert_outcomes(passed=1, failed=2)
    done.stdout.fnmatch_lines(["E*has not ended in 0.2 seconds; it printed:", "E*gave up: user_vlan_create(*"])


def test_a_test_without_a_board_cannot_have_failures(pytester):
    done = run(pytester, "def test_it(fail_each): pass")
    done.assert_outcomes(failed=1)
    done.stdout.fnmatch_lines(["*fail_each needs board or board_image in the test*"])


def test_failures_that_are_none_or_too_many_are_said(pytester):
    done = run(pytester, """
    def test_none(board, fail_each):
        board.link_up(1)
    def test_many(board, fail_each):
        for _ in range(501):
            swctl.vlan.default()
    """)
    done.assert_outcomes(passed=2, failed=2)
    done.stdout.fnmatch_lines(["fail_each: the test has made no call that fits*nothing to fail"])
    done.stdout.fnmatch_lines(["fail_each: the test has made 501 calls*or say most="])


SSH = """#!/bin/sh
# Plays ssh to a board: the options, the host, then the command.
while [ "$1" != -- ]; do shift; done
shift
VCHIP_IMAGE=$PWD/board.img exec sh -c "$*"
"""


def test_the_same_test_on_a_board_over_ssh(pytester):
    text = """
    def test_it(switch, daemon):
        switch.write("plan", "the plan")
        daemon("sh", "-c", "cat plan; swctl vlan add 10 && echo done; exec sleep 60", wait_for="done")
        assert switch("vlan", "show", 10) == [{"vlan": 10, "tagged": [], "untagged": []}]
        assert switch("vlan", "add", 11) == []
        with pytest.raises(swctl.RemoteError, match="swctl -j vlan show 4095 .*ended with status"):
            switch("vlan", "show", 4095)
    """
    ssh = pytester.path / "ssh"
    ssh.write_text(SSH)
    ssh.chmod(0o755)
    run(pytester, text).assert_outcomes(passed=1)
    assert not (pytester.path / "board.img").exists()
    run(pytester, text, "--swctl-board=root@board", f"--swctl-ssh={ssh} -q").assert_outcomes(passed=1)
    assert (pytester.path / "board.img").exists()
    done = run(pytester, "def test_it(switch): switch('version')", "--swctl-board=board", "--swctl-ssh=no-ssh")
    done.stdout.fnmatch_lines(["E*no-ssh is not there: install it, or name it with its path"])
