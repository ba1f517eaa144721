# SPDX-License-Identifier: MIT
"""The public C headers as a whole: constants, enumerations, records, functions,
variables. A header with anything else in it is refused.
"""
import ast
import pathlib
import re

ROOT = pathlib.Path(__file__).resolve().parents[2]
import declarations

# Not declarations, or with no address and no value.
LEFT_OUT = {
    "SWCTL_API": "an attribute", "SWCTL_BEGIN_DECLS": "linkage", "SWCTL_END_DECLS": "linkage",
    "CHIP_CONSTEXPR": "an attribute", "SWCTL_CALL": "the form of a list of calls",
    "STATIC_ENTRY_TEST": "a macro with an argument", "chip_acl_field_bytes": "an inline function",
}
WORDS = {"calls_begin.h", "calls_end.h"}
DOCUMENTED = rf"(?P<text>{declarations.COMMENT}\s*)?"
ENUM = re.compile(r"\benum (?P<name>\w+) \{(?P<body>[^{}]*)\};", re.DOTALL)
ALIAS = re.compile(r"\btypedef struct (\w+) \1;")
CALLBACK = re.compile(DOCUMENTED + r"\btypedef int32_t \(\*(?P<name>\w+)\)\((?P<parameters>[^()]*)\);", re.DOTALL)
VARIABLE = re.compile(r"\bSWCTL_API extern (?P<kind>\w+) (?P<name>\w+)(?P<size>\[\w+\])?;")
DEFINE = re.compile(r"^[ \t]*#[ \t]*define (?P<name>\w+)(?P<rest>(?:[^\n\\]|\\\n|\\)*)$", re.MULTILINE)
INLINE = re.compile(r"static inline \w+ uint32_t (\w+)\([^)]*\) \{.*?\n\}", re.DOTALL)
MEMBER = re.compile(r"(?P<kind>(?:const )?\w+(?: \*)?)\s*\b(?P<name>\w+)(?P<sizes>(?:\[\w+\])*)\s*;"
                    rf"[ \t]*(?P<after>/\*\*<(?:(?!\*/).)*\*/)?", re.DOTALL)
GROUP = re.compile(r"/\*\*(?P<head>(?:(?!\*/).)*@name (?P<title>[^\n]*)(?:(?!\*/).)*)@\{\s*\*/"
                   r"(?P<body>.*?)/\*\* @\} \*/", re.DOTALL)


class Refusal(Exception):
    """A header says something that the generator does not understand."""


def sentence(comment):
    """A comment without its marks, on one line."""
    text = re.sub(r"^\s*/\*\*?<?|\*/\s*$", "", comment or "")
    text = re.sub(r"^\s*\*(?: |$)", "", text, flags=re.MULTILINE)
    return " ".join(re.sub(r"@brief\s+", "", text).split())


class Member:
    def __init__(self, match, before, constants):
        self.name, self.kind = match["name"], " ".join(match["kind"].split())
        sizes = [int(size) if size.isdigit() else constants[size]
                 for size in re.findall(r"\w+", match["sizes"])]
        if len(sizes) > 2:
            raise Refusal(f"the array {self.name} has more than two dimensions")
        self.count, self.inner = (*sizes, None, None)[:2]
        self.text = sentence(match["after"] or before)


class Record:
    def __init__(self, name, body, comment, constants):
        self.name, self.text, self.members = name, sentence(comment), []
        position = 0
        for match in MEMBER.finditer(body):
            between = body[position:match.start()]
            self.expect_comment(between)
            self.members.append(Member(match, between, constants))
            position = match.end()
        self.expect_comment(body[position:])

    def expect_comment(self, between):
        rest = re.sub(declarations.COMMENT, "", between, flags=re.DOTALL).strip()
        if rest:
            raise Refusal(f"record {self.name}: {rest!r} is no member")

    @property
    def has_address(self):
        return any("*" in member.kind for member in self.members)


class Group:
    """Constants that belong together, which is what an enumeration is made of."""

    def __init__(self, title, head, names, of_library=False):
        self.of_library = of_library
        self.title, self.text, self.names = title, sentence(re.sub(r"@name [^\n]*", "", head)), names


class Header:
    def __init__(self, path, place):
        self.path, self.place, self.text = path, place, path.read_text()
        self.functions = declarations.functions_in(self.text)
        self.records, self.callbacks, self.variables = [], {}, []
        self.of_library = place == "library" and path.parent.name != "platform"
        self.said = sentence(re.search(r"@brief(.*?)\*/", self.text, re.DOTALL)[0])

    @property
    def includes(self):
        return re.findall(r"#\s*include <(swctl[^>]*\.h)>", self.text)


def number(text, known):
    """The value of a constant, from its text."""
    plain = re.sub(r"\b(0[xX][0-9a-fA-F]+|\d+)[uUlL]*\b", r"\1", text)
    plain = re.sub(r"\b[A-Z_][A-Z0-9_]*\b(?!\()", lambda word: str(known[word[0]]), plain)
    try:
        return int(eval(compile(ast.parse(plain, mode="eval"), "header", "eval"), {"__builtins__": {}}))
    except (SyntaxError, NameError, TypeError) as error:
        raise Refusal(f"{text!r} is no constant") from error


class Interface:
    """All headers, in an order in which each comes after those that it includes."""

    def __init__(self, root=ROOT):
        self.folders = {"library": root / "include", "vchip": root / "vchip/include",
                        "probe": root / "probe/include"}
        self.seen, self.headers, self.constants, self.texts, self.said = set(), {}, {}, {}, {}
        self.records, self.enums, self.groups, self.functions = {}, {}, [], {}
        for place, pattern in (("library", "swctl/**/*.h"), ("vchip", "swctl-vchip/*.h"),
                               ("probe", "swctl-probe/*.h")):
            for path in sorted(self.folders[place].glob(pattern)):
                if path.name not in WORDS and path.read_text().startswith("/*"):
                    self.add(str(path.relative_to(self.folders[place])), place)
        self.calls = self.read_lists(root / "include/swctl/platform")
        for header in self.headers.values():
            self.functions.update(header.functions)

    def add(self, name, place):
        """A header after those that it includes, as the preprocessor would have it."""
        if name in self.seen or pathlib.PurePath(name).name in WORDS:
            return
        self.seen.add(name)
        place = place if (self.folders[place] / name).exists() else "library"
        header = Header(self.folders[place] / name, place)
        for each in header.includes:
            self.add(each, place)
        self.headers[name] = header
        self.read(name, header)

    def read(self, name, header):
        try:
            self.read_constants(header)
            self.read_records(header)
            self.expect_nothing_else(header)
        except Refusal as refusal:
            raise Refusal(f"{name}: {refusal}") from refusal

    def read_constants(self, header):
        for match in DEFINE.finditer(header.text):
            name, rest = match["name"], match["rest"].replace("\\\n", " ")
            after = re.search(r"/\*\*<(.*?)\*/", header.text[match.start():match.end() + 400], re.DOTALL)
            value = re.sub(r"/\*.*", "", rest).strip()
            if not value or name in LEFT_OUT:
                continue
            if rest.startswith("("):
                raise Refusal(f"{name} is a macro with arguments")
            if value.startswith('"'):
                self.texts[name] = value.strip('"')
                continue
            self.constants[name] = number(value, self.constants)
            self.said[name] = sentence(after[0]) if "/**<" in rest and after else self.before(header, match)
        for match in ENUM.finditer(header.text):
            self.read_enum(header, match)
        for match in GROUP.finditer(header.text):
            names = [each["name"] for each in DEFINE.finditer(match["body"])]
            if names:
                self.groups.append(Group(match["title"], match["head"], names,
                                         header.of_library))

    @staticmethod
    def before(header, match):
        """The comment that is right above."""
        text = header.text[:match.start()].rstrip()
        found = re.search(rf"{declarations.COMMENT}$", text, re.DOTALL) if text.endswith("*/") else None
        return sentence(found[0]) if found and "@{" not in found[0] and "/**<" not in found[0] else ""

    def read_enum(self, header, match):
        names = []
        for line in re.sub(declarations.COMMENT, "", match["body"], flags=re.DOTALL).split(","):
            plain = line.strip()
            entry = re.fullmatch(r"(\w+) = (.*)", plain)
            if plain and not entry:
                raise Refusal(f"enum {match['name']}: {plain!r} has no value")
            if entry:
                self.constants[entry[1]] = number(entry[2], self.constants)
                names.append(entry[1])
        self.enums[match["name"]] = names
        self.groups.append(Group(match["name"], self.before(header, match), names))

    def read_records(self, header):
        for match in declarations.RECORD.finditer(header.text):
            record = Record(match["name"], match["body"], self.comment_of(header, match), self.constants)
            header.records.append(record)
            self.records[record.name] = record
        for match in CALLBACK.finditer(header.text):
            header.callbacks[match["name"]] = " ".join(match["parameters"].split())
        header.variables = [match.groupdict() for match in VARIABLE.finditer(header.text)]

    @staticmethod
    def comment_of(header, match):
        text = header.text[:match.start()].rstrip()
        start = text.rfind("/*")
        return text[start:] if text.endswith("*/") else ""

    @staticmethod
    def expect_nothing_else(header):
        rest = header.text
        for name in INLINE.findall(rest):
            if name not in LEFT_OUT:
                raise Refusal(f"{name} is an inline function")
        rest = INLINE.sub("", rest)
        rest = re.sub(declarations.COMMENT, " ", rest, flags=re.DOTALL)
        rest = DEFINE.sub("", rest)
        rest = re.sub(r"^[ \t]*#.*$", "", rest, flags=re.MULTILINE)
        for pattern in (ENUM, declarations.RECORD, ALIAS, CALLBACK, VARIABLE, declarations.FUNCTION):
            rest = pattern.sub("", rest)
        rest = re.sub(r"\bSWCTL_(BEGIN|END)_DECLS\b", "", rest).strip()
        if rest:
            raise Refusal(f"{rest.splitlines()[0]!r} is not understood")

    @staticmethod
    def read_lists(folder):
        """Every call of the platform: name -> (arguments, comment)."""
        known = declarations.list_words((folder / "calls_begin.h").read_text())
        calls, said = {}, ""
        for path in sorted((folder / "calls").glob("*.def")):
            for comment, call in declarations.LIST_PART.findall(path.read_text()):
                said = sentence(comment) or said
                if call:
                    name, *arguments = declarations.split(call)
                    calls[name] = ([declarations.list_argument(each, known) for each in arguments], said)
        return calls
