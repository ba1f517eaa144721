# SPDX-License-Identifier: MIT
"""Values in and out: what the SDK was asked, and what came back as what."""
import pytest
import swctl
from swctl import c, codes, records
from swctl.vchip import controls


def lines(board, pattern="*"):
    return [call.line for call in board.calls(pattern)]


def test_an_output_comes_back_as_its_code(board):
    board.link_up(3)
    assert swctl.port.link_status(3) is codes.Link.UP
    assert swctl.port.link_status(4) is codes.Link.DOWN
    assert lines(board, "rtk_port_link_get") == ["rtk_port_link_get(unit=0, port=2, link=>1) = 0",
                                                 "rtk_port_link_get(unit=0, port=3, link=>0) = 0"]


def test_ports_are_the_numbers_on_the_box_or_the_chip_s(board):
    board.link_up(3)
    assert swctl.port.link_status(swctl.ChipPort(2)) is codes.Link.UP
    swctl.vlan.create(10)
    swctl.vlan.port_addEx(10, 10, tagged=[26], untagged=[1, swctl.ChipPort(1)])
    assert swctl.vlan.port(10) == ({1, 2, 26}, {1, 2})
    swctl.vlan.port_set(10, [1, 2], [])
    assert board.dump("vlan")["vlans"][1]["member"] == [0, 1]


def test_a_code_without_a_name_is_a_number_with_a_name_of_its_own(board):
    assert swctl.port.speed(3) is codes.Speed.UNKNOWN
    odd = codes.Speed(77)
    assert (odd, odd.name, type(odd)) == (77, "VALUE_77", codes.Speed)


def test_several_outputs_come_back_by_name(board):
    schedule = swctl.qos.schedule()
    assert len(schedule.weights) == 8
    mode, weights = schedule
    assert isinstance(mode, codes.QosSchedule) and weights == schedule.weights
    swctl.qos.schedule_set(codes.QosSchedule.WEIGHTED, [1, 2, 3, 4, 5, 6, 7, 8])
    assert swctl.qos.schedule() == (codes.QosSchedule.WEIGHTED, (1, 2, 3, 4, 5, 6, 7, 8))


def test_switches_flags_and_counters(board):
    assert swctl.port.loopback(3) is False
    swctl.port.loopback_set(3, True)
    assert swctl.port.loopback(3) is True
    assert swctl.port.ability_advert(3) & codes.Ability.ABILITY_1000_FULL
    controls.counter_set(3, c.CHIP_COUNTER_RX_UNICAST, 2**40 + 5)
    assert swctl.port.packetstat(3, c.CHIP_COUNTER_RX_UNICAST) == 2**40 + 5
    controls.acl_count(1, packets=5, bytes_=2**33)
    assert swctl.field.get_statistics(1, c.USER_FIELD_COUNT_PACKETS) == 5
    assert swctl.field.get_statistics(1, c.USER_FIELD_COUNT_PACKETS + 1) == 2**33
    everything = swctl.port.stat_port_getAll(3)
    assert everything.value[c.CHIP_COUNTER_RX_UNICAST] == 2**40 + 5


def test_records_go_in_and_come_back(board):
    swctl.vlan.create(10)
    entry = records.L2Addr(mac="02:00:00:00:00:07", vid=10, port=5, flags=c.USER_L2_FLAG_STATIC)
    swctl.l2.mac_addr_add(entry)
    found = swctl.l2.mac_addr("02:00:00:00:00:07", 10)
    assert (found.port, found.flags & c.USER_L2_FLAG_STATIC) == (5, c.USER_L2_FLAG_STATIC)
    again = records.L2Addr(mac=bytes.fromhex("020000000007"), vid=10)
    assert again != entry and "vid=10" in repr(again)


def test_ports_in_records_are_those_on_the_box(board):
    ports = [2, swctl.ChipPort(2), *[swctl.ChipPort(0)] * 33]
    swctl.mirror_trunk.trunk_set(1, records.TrunkDesc(count=2, ports=ports))
    assert swctl.platform.trunk_next(1).members == 0b110
    with pytest.raises(ValueError, match="ports: there is no port 40"):
        swctl.mirror_trunk.trunk_set(1, records.TrunkDesc(count=1, ports=[40] * 35))


def test_a_walk_calls_a_function_for_each_entry(board):
    swctl.vlan.create(10)
    for last in (1, 2, 3):
        swctl.l2.mac_addr_add(records.L2Addr(mac=f"02:00:00:00:00:0{last}", vid=10, port=last,
                                         flags=c.USER_L2_FLAG_STATIC))
    seen = []
    swctl.l2.rtk_l2_traverse(lambda unit, entry: seen.append((entry.mac[-1], entry.port)))
    assert sorted(seen) == [(1, 1), (2, 2), (3, 3)]

    def stop(unit, entry):
        seen.append("again")
        raise KeyError("stop")

    with pytest.raises(KeyError, match="stop"):
        swctl.l2.rtk_l2_traverse(stop)
    assert seen[3:] == ["again"]


def test_a_result_that_is_no_success_or_failure_is_given(board):
    swctl.vlan.create(10)
    assert swctl.vlan.port_add(10, [1, 2], 1) == -1
    assert swctl.vlan.port_remove(10, [1]) == -1
    assert swctl.kmsg.SetFreeSockData(4711) == -1
    assert swctl.kmsg.GetFreeSockData() == 0


def test_what_the_sdk_only_writes_can_be_read_back(board):
    swctl.vlan.create(10)
    vlan = swctl.platform.vlan_next(2)
    assert isinstance(vlan, records.PlatformVlan) and vlan.index == 10
    swctl.field.qualify_SrcMac(6, "02:00:00:00:00:01", "ff:ff:ff:ff:ff:00")
    rule = swctl.platform.acl_rule_next(0)
    assert (rule.index, rule.written[c.CHIP_ACL_FIELD_SRC_MAC], rule.written[c.CHIP_ACL_FIELD_DST_MAC]) == (6, 1, 0)
    assert rule.data[c.CHIP_ACL_FIELD_SRC_MAC] == bytes.fromhex("020000000001") + bytes(10)
    assert rule.mask[c.CHIP_ACL_FIELD_SRC_MAC] == b"\xff" * 5 + bytes(11)


def test_the_sdk_itself(board):
    board.link_up(1)
    assert swctl.sdk.rtk_port_link_get(0) == 1
    assert swctl.sdk.adp_intf_2_phy_id(1) == 0


def test_a_refusal_has_code_sentence_and_call(board):
    with pytest.raises(swctl.Refused) as caught:
        swctl.vlan.create(5000)
    error = caught.value
    assert (error.code, error.sentence) == (c.VCHIP_E_VALUE, "a value is outside its range")
    assert error.call == "user_vlan_create(unit=0, vid=5000)"
    assert str(error) == f"{error.call}: {error.sentence} (result {c.VCHIP_E_VALUE})"
    with pytest.raises(swctl.Refused, match=r"user_system_init\(\): the library does not offer"):
        swctl.frame.system_init()


BAD = [
    (lambda: swctl.port.link_status(99), ValueError, "port: there is no port 99: ports are 1 to 26"),
    (lambda: swctl.port.link_status("3"), TypeError, "port: expected the number of a port, not '3'"),
    (lambda: swctl.port.link_status(True), TypeError, "port: expected the number of a port"),
    (lambda: swctl.port.link_status(3, unit=-1), OverflowError, "unit: -1 is outside 0 to 4294967295"),
    (lambda: swctl.port.link_status(), TypeError, "missing 1 required positional argument: 'port'"),
    (lambda: swctl.vlan.create(1 << 32), OverflowError, "vid: 4294967296 is outside"),
    (lambda: swctl.vlan.create(10.0), TypeError, "vid: expected an int, not 10.0"),
    (lambda: swctl.port.loopback_set(3, 2), TypeError, "enable: expected True or False, not 2"),
    (lambda: swctl.vlan.port_add(10, [1, 300], 0), ValueError, "ports: 300 is in no bitmap"),
    (lambda: swctl.vlan.port_add(10, 3, 0), TypeError, r"ports: expected a collection of ports"),
    (lambda: swctl.vlan.port_add(10, [swctl.ChipPort(27)], 0), ValueError, "has no number on the box"),
    (lambda: swctl.vlan.port_set(10, [27], []), ValueError, "member: there is no port 27"),
    (lambda: swctl.l2.mac_addr(b"12345", 10), ValueError, "mac: expected 6 bytes, not 5"),
    (lambda: swctl.l2.mac_addr("zz", 10), ValueError, "mac: 'zz' is no address such as"),
    (lambda: swctl.l2.mac_addr(6, 10), TypeError, "mac: expected 6 bytes or an address as text"),
    (lambda: swctl.qos.schedule_set(1, [1, 2]), ValueError, "weights: expected 8 numbers, not 2"),
    (lambda: swctl.qos.schedule_set(1, [1] * 7 + [-1]), OverflowError, r"weights\[7\]: -1 is outside"),
    (lambda: swctl.l2.mac_addr_add("entry"), TypeError, "addr: expected a L2Addr, not 'entry'"),
    (lambda: swctl.l2.mac_addr_add(records.L2Addr(vid="x")), TypeError, "vid: expected an int"),
    (lambda: swctl.l2.mac_addr_add(records.L2Addr(vid=1 << 40)), OverflowError, "vid: 1099511627776"),
    (lambda: swctl.l2.rtk_l2_traverse(3), TypeError, "callback: expected a function, not 3"),
    (lambda: swctl.l2.mac_table_show("a\0b"), ValueError, "path: a text for C has no null character"),
]


@pytest.mark.parametrize("call,kind,why", BAD, ids=[str(number) for number in range(len(BAD))])
def test_a_wrong_argument_raises_before_anything_is_called(board, call, kind, why):
    with pytest.raises(kind, match=why):
        call()
    assert board.calls() == []


def test_the_c_names_are_there(board):
    status = c.ffi.new("uint32_t *", 9)
    assert c.user_port_link_status_get(0, 0, 3, status) == 0
    assert (status[0], c.USER_SPEED_1000, c.USER_FIELD_NO_BURST_SLOT) == (0, 1000, -1)
    with pytest.raises(AttributeError, match="no header declares user_nothing"):
        c.user_nothing
    with pytest.raises(AttributeError, match="stateflag is a variable"):
        c.stateflag
    with pytest.raises(AttributeError, match="swctl has no 'nothing'; its modules are"):
        swctl.nothing
