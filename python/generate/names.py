# SPDX-License-Identifier: MIT
"""Names in Python, by rule: `user_port_link_status_get` is `port.link_status`."""
import keyword
import re

from headers import Refusal

PREFIXES = re.compile(r"^(?:[Uu]ser_|swctl_platform_|vchip_|swprobe_)")


def class_name(name):
    """`user_l2_addr_t` is L2Addr, `KernelMsgHeader` stays."""
    words = re.sub(r"_t$", "", re.sub(r"^([Uu]ser_|swctl_(?=platform))", "", name))
    if "_" not in words and words[:1].isupper():
        return words
    return "".join(word[:1].upper() + word[1:] for word in words.split("_"))


def short(family, name):
    """Without what every name of the family begins with."""
    words = PREFIXES.sub("", name)
    rest = words.removeprefix(f"{family}_")
    return words if rest[:1].isdigit() else rest


def function_names(family, names):
    """C name -> Python name. `_get` goes where nothing else has the shorter name. The
    SDK's calls keep their names.
    """
    if family == "sdk":
        return {name: name for name in names}
    found = {name: short(family, name) for name in names}
    taken = list(found.values())
    for name, words in found.items():
        bare = words.removesuffix("_get")
        if bare != words and taken.count(bare) == 0 and not bare.endswith("_set"):
            found[name] = bare
    if len(set(found.values())) != len(found):
        raise Refusal(f"two functions of {family} would have the same name")
    return {name: f"{words}_" if keyword.iskeyword(words) else words for name, words in found.items()}
