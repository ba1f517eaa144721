# SPDX-License-Identifier: MIT
"""Every typed function is called, and every record goes into C and back."""
import importlib
import inspect
import random

import pytest
import swctl
from swctl import c, records

MODULES = ["field", "frame", "l2", "mcast", "mirror_trunk", "platform", "port", "qos", "sdk", "stp", "vlan",
           "vchip.controls"]
# They would end the board, or need memory that only the caller knows.
LEFT_OUT = {"open", "close", "text_free"}
CHOICES = {
    "int": lambda path: [1], "bool": lambda path: [True], "Port": lambda path: [2],
    "Ports": lambda path: [[1, 2]], "Address": lambda path: [bytes(6), bytes(16)],
    "Frame": lambda path: [bytes(60)], "Sequence[int]": lambda path: [[1] * count for count in (8, 5, 2, 12)],
    "str": lambda path: [str(path)], "Optional[str]": lambda path: [None],
}


def choices(annotation, path):
    """Values for an argument: one of them has the right length."""
    if annotation in CHOICES:
        return CHOICES[annotation](path)
    if annotation.startswith("Callable"):
        return [lambda unit, entry: None]
    return [getattr(records, annotation)()] if annotation in records.__all__ else None


def functions():
    for name in MODULES:
        module = importlib.import_module(f"swctl.{name}")
        for each in module.__all__:
            function = getattr(module, each)
            if inspect.isfunction(function) and each not in LEFT_OUT:
                yield f"{name}.{each}", function


def call(function, path):
    """Calls a function with the first values whose lengths it takes."""
    given = {name: choices(each.annotation, path)
             for name, each in inspect.signature(function).parameters.items()}
    if None in given.values():
        return None
    for turn in range(max(map(len, given.values()), default=1)):
        try:
            return function(**{name: values[min(turn, len(values) - 1)] for name, values in given.items()}), turn
        except swctl.Refused as refused:
            return refused, turn
        except ValueError as error:
            assert "expected" in str(error)
    raise AssertionError(f"no length fits {function.__qualname__}")


def test_every_function_can_be_called(board, tmp_path, capfd):
    # It would wait for the cable test of a chip.
    board.fail("rtk_diag_rtctEnable_set")
    called, addresses = 0, []
    for name, function in functions():
        answer = call(function, tmp_path / "file")
        if answer is None:
            addresses.append(name)
            continue
        called += 1
        declared = inspect.signature(function).return_annotation
        if not isinstance(answer[0], swctl.Refused) and declared in ("int", "bool", "bytes", "None"):
            assert type(answer[0]).__name__ in (declared, "NoneType"), name
    capfd.readouterr()
    assert called > 600
    assert len(addresses) < 20, addresses


@pytest.mark.parametrize("name", records.__all__)
def test_every_record_goes_into_c_and_back(board, name):
    kind = getattr(records, name)
    chance = random.Random(name)
    for _ in range(5):
        given, again = c.ffi.new(f"{kind.C_NAME} *"), c.ffi.new(f"{kind.C_NAME} *")
        c.ffi.buffer(given)[:] = chance.randbytes(c.ffi.sizeof(given[0]))
        record = kind._get(given)
        record._put(again)
        assert kind._get(again) == record
        for field, found in c.ffi.typeof(given[0]).fields:
            place = slice(found.offset, found.offset + c.ffi.sizeof(found.type))
            if found.type.kind != "struct" and "struct" not in str(found.type):
                assert c.ffi.buffer(given)[place] == c.ffi.buffer(again)[place], field
    assert kind() == kind()
    assert eval(repr(kind()), {name: kind, **vars(records), "ChipPort": swctl.ChipPort}) == kind()
