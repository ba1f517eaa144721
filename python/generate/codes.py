# SPDX-License-Identifier: MIT
"""Enumerations: groups of constants that the text of some argument refers to."""
import os.path
import re

from headers import Refusal

# "below ::X" and the like name a limit, not a code.
LIMIT = re.compile(r"\b(below|to|at most|for|up to|beyond|as) ::\w+")
FAMILY = re.compile(r"^(USER|SWCTL)_")


def camel(words):
    return "".join(word[:1].upper() + word[1:].lower() for word in words.split("_"))


class Code:
    """One enumeration."""

    def __init__(self, group, constants):
        self.group, self.title = group, group.title
        prefix = os.path.commonprefix(group.names)
        self.prefix = prefix[:prefix.rfind("_") + 1]
        self.name = camel(FAMILY.sub("", self.prefix.strip("_")) or re.sub(r"\W+", "_", group.title))
        self.members = {self.member(name): (name, constants[name]) for name in group.names}
        values = [value for _, value in self.members.values()]
        single = sum(value & (value - 1) == 0 for value in values if value > 0)
        self.flags = len(values) > 2 and single >= 3 and single * 2 > len(values) and max(values) > 0xff

    def member(self, name):
        short = name.removeprefix(self.prefix)
        return short if not short[0].isdigit() else f"{self.prefix.strip('_').rpartition('_')[2]}_{short}"

    def is_named(self, text):
        """Whether a text names one of the constants, or all of them as PREFIX_*."""
        plain = LIMIT.sub("", text)
        return (any(name in self.group.names for name in re.findall(r"::(\w+)", plain))
                or any(name == self.prefix for name in re.findall(r"\b(\w+_)\*", plain)))

    def is_described(self, text):
        """Whether a text has the title of the group of the library's constants."""
        title = self.title.lower().rstrip("s")
        return self.group.of_library and re.search(rf"\b{re.escape(title)}\b", text.lower()) is not None


class Codes:
    def __init__(self, interface):
        self.all = [Code(group, interface.constants) for group in interface.groups
                    if len(group.names) > 1]
        self.used = {}

    def of(self, text):
        """The enumeration that a text means, or None."""
        found = next((code for code in self.all if code.is_named(text)), None)
        found = found or next((code for code in self.all if code.is_described(text)), None)
        if found is not None and self.used.setdefault(found.name, found) is not found:
            raise Refusal(f"two enumerations are named {found.name}: {found.title}")
        if found is not None and " OR of " in text:
            found.flags = True
        return found
