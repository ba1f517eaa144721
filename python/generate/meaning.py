# SPDX-License-Identifier: MIT
"""What each argument of a function means, from its type and from what its text
says: what is passed, what comes back, and as what in Python. An address about
which the text says too little is refused.
"""
import keyword
import re

import declarations
from headers import Refusal

SCALARS = {f"{sign}int{bits}_t": (sign, bits) for sign in ("", "u") for bits in (8, 16, 32, 64)}
# Records that are plain values in Python.
VALUES = {"user_counter_t"}
BITMAP = "user_pbmp_t"
MASKED_NAMES = {"bytes", "int", "bool", "str", "list", "type", "max", "min", "from", "open", "tuple"}
# Memory whose form only the caller knows: it is passed as an address of cffi.
ADDRESSES = {
    ("user_i2c_ioctl", "destination"), ("MSG_UserSendAndRecvMessage", "message"),
    ("MSG_UserSendAndRecvMessage", "reply"), ("user_send_data_to_kernel", "data"),
    ("user_l2_mactable_fread", "out"), ("user_l2_mactable_fread", "file"),
    ("user_is_mcast_addr_exist_vlan_is", "present"), ("test_fun3_callback", "data"),
    ("test_fun4_callback", "data"), ("adp_fp_add_entity_action", "second"),
}
# A result that is a number rather than a success or a failure.
WAYS = {"val": "in", "ref": "in", "out": "out", "upd": "both"}
PLAIN_RESULTS = re.compile(r"-1, always|non-zero if|the sum\b|as for user_vlan_port_add\(\)")


class Argument:
    """One argument. `way` is in, out, both, fixed (what is passed is always the
    same), size (the length of another one) or data (of a callback).
    """

    def __init__(self, name, declared, way, kind, text, **more):
        self.c_name, self.declared, self.way, self.kind, self.text = name, declared, way, kind, text
        self.name = f"{name}_" if keyword.iskeyword(name) or name in MASKED_NAMES else name
        self.count = more.get("count")
        self.element = more.get("element")
        self.by_address = more.get("by_address", False)
        self.code = self.entry = None
        self.size_of = None


class Call:
    """A function with its arguments."""

    def __init__(self, name, result, comment, arguments, is_open=False):
        self.name, self.result, self.comment, self.open = name, result, comment, is_open
        self.arguments = arguments

    def of_way(self, *ways):
        return [each for each in self.arguments if each.way in ways]


class Reader:
    def __init__(self, interface):
        self.interface = interface
        self.callbacks = {name: parameters for header in interface.headers.values()
                          for name, parameters in header.callbacks.items()}

    def function(self, function):
        arguments = [self.argument(function, each) for each in function.parameters]
        self.find_sizes(arguments)
        return Call(function.name, function.result, function.text, arguments, function.open)

    def argument(self, function, parameter):
        text = declarations.told(self.interface.functions, function, parameter.name)
        if parameter.name == "lead":
            return Argument("lead", parameter.declared, "fixed", "int", text)
        if parameter.pointee is None:
            return self.value(parameter, text)
        if text.startswith("ignored"):
            return Argument(parameter.name, parameter.declared, "fixed", "address", text)
        if text == "passed to the callback":
            return Argument(parameter.name, parameter.declared, "data", "address", text)
        return self.there(function, parameter, text)

    def value(self, parameter, text):
        name, declared = parameter.name, parameter.declared
        if declared in self.callbacks:
            return Argument(name, declared, "in", "callback", text)
        if declared == BITMAP:
            return Argument(name, declared, "in", self.bitmap(name, text), text)
        if declared in self.interface.records:
            return Argument(name, declared, "in", "record", text, element=declared)
        if declared not in SCALARS:
            raise Refusal(f"{name}: the type {declared} is not known")
        if name in ("unused", "ignored"):
            return Argument(name, declared, "fixed", "int", text)
        kind = "port" if name == "port" else self.scalar(text)
        return Argument(name, declared, "in", kind, text, element=declared)

    @staticmethod
    def scalar(text):
        if re.search(r"\bchip port\b", text):
            return "port"
        if re.search(r"(?:^|[ :;])(?:1|non-zero) (?:for )?on[,;]", text):
            return "switch"
        return "int"

    @staticmethod
    def bitmap(name, text):
        if "chip port" in text:
            return "chip_ports"
        if "interface" in text:
            return "interfaces"
        raise Refusal(f"{name}: {text!r} does not say whether these are chip ports or interfaces")

    def there(self, function, parameter, text):
        """The argument of an address."""
        key, way = (function.name, parameter.name), self.way(parameter, text)
        if key in ADDRESSES:
            return Argument(parameter.name, parameter.declared, "in", "address", text)
        if parameter.declared == "const char *":
            return Argument(parameter.name, parameter.declared, "in", "text", text)
        if parameter.declared in ("char *", "char **"):
            return Argument(parameter.name, parameter.declared, "in", "address", text)
        element, count = parameter.element.removeprefix("struct "), declarations.count_of(function, text)
        if element == "void":
            element = self.named(key, text)
        if element in self.interface.records and self.interface.records[element].has_address:
            return Argument(parameter.name, parameter.declared, "in", "address", text)
        if way is None:
            raise Refusal(f"{key[0]}(): {text!r} does not say whether {key[1]} is read or written")
        return self.pointed(parameter, way, element, count, text)

    @staticmethod
    def way(parameter, text):
        if parameter.pointee.startswith("const ") or text.startswith("the entry"):
            return "in"
        if re.search(r"\bnames the\b|\bthe position of\b", text):
            return "both"
        if declarations.is_written(text) or text.startswith("where to put"):
            return "out"
        return "in" if parameter.element == "void" and re.match(r"(the|an?) ", text) else None

    def named(self, key, text):
        """The type that the text of a `void *` names."""
        for name in re.findall(r"::(\w+)|\b(\w+_t)\b", text):
            found = next(filter(None, name))
            if found in SCALARS or found in self.interface.records:
                return found
        raise Refusal(f"{key[0]}(): {text!r} does not say what is at {key[1]}")

    def pointed(self, parameter, way, element, count, text):
        make = lambda kind, **more: Argument(parameter.name, parameter.declared, way, kind, text,
                                             by_address=True, element=element, **more)
        if element == BITMAP:
            return make(self.bitmap(parameter.name, text))
        if element in VALUES:
            return make("counter")
        if element in self.interface.records:
            return make("record")
        if element not in SCALARS:
            raise Refusal(f"{parameter.name}: what {element} is, is not known")
        if count in (None, 1):
            if element == "uint8_t" and count is None:
                raise Refusal(f"{parameter.name}: {text!r} does not say how many bytes")
            return make(self.scalar(text))
        return make("bytes" if element == "uint8_t" and parameter.name != "queues" else "array",
                    count=self.interface.constants.get(count, count))

    @staticmethod
    def find_sizes(arguments):
        names = {each.c_name: each for each in arguments}
        for each in arguments:
            if each.count in names:
                names[each.count].way = "size"
                names[each.count].size_of = each
                each.count = None

    def listed(self, name, arguments, comment):
        """A call of the lists, which say the direction of each argument."""
        read = [self.list_argument(name, *each) for each in arguments]
        self.find_sizes(read)
        return Call(name, "int32_t", declarations.Text(comment), read)

    def list_argument(self, name, direction, kind, argument, count, _):
        by_address = direction != "val"
        make = lambda found, **more: Argument(argument, f"{kind} *" if by_address else kind,
                                              WAYS[direction], found, "", element=kind,
                                              by_address=by_address, **more)
        if (name, argument) in ADDRESSES or "(" in count:
            return Argument(argument, f"const {kind} *", "in", "address", "")
        if kind in VALUES:
            return make("counter")
        if kind in self.interface.records:
            return make("record")
        if kind not in SCALARS:
            raise Refusal(f"{name}(): the type {kind} of {argument} is not known")
        if count == "1":
            return make("int")
        size = int(count) if count.isdigit() else self.interface.constants.get(count, count)
        return make("bytes" if kind == "uint8_t" else "array", count=size)
