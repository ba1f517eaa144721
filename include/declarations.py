# SPDX-License-Identifier: MIT
"""How the public headers read: functions with the texts of their parameters,
records, and the lists of the platform's calls. For everything that is made from
the headers.
"""
import re

NUMBERS = {"one": 1, "two": 2, "six": 6, "eight": 8, "sixteen": 16}

COMMENT = r"/\*(?:(?!\*/).)*\*/"
FUNCTION = re.compile(rf"(?P<text>{COMMENT})?\s*\bSWCTL_API\s+(?P<head>[\w\s*]+?)\((?P<parameters>[^()]*)\)"
                      r"\s*(?:__attribute__\s*\(\(.*?\)\))?\s*;", re.DOTALL)
RECORD = re.compile(r"\bstruct (?P<name>\w+) \{(?P<body>[^{}]*)\};", re.DOTALL)
POINTER_TYPE = re.compile(r"\btypedef\s[^;(]*\(\*(\w+)\)\s*\(", re.DOTALL)
# A comment, or a call up to the parenthesis that ends it at the end of a line.
LIST_PART = re.compile(r"/\*(.*?)\*/|SWCTL_CALL\((.*?)\)$", re.DOTALL | re.MULTILINE)


class Text:
    """What the comment of a function says, about each of its parameters too."""

    def __init__(self, comment):
        self.plain = re.sub(r"^\s*\*(?: |$)", "", comment or "", flags=re.MULTILINE)
        found = re.findall(r"@param\s+(\w+)\s+(.*?)(?=@\w+|\n\s*\n|\*/|\Z)", self.plain, re.DOTALL)
        self.parameters = {name: " ".join(words.split()) for name, words in found}


class Parameter:
    def __init__(self, declaration):
        self.name = re.search(r"(\w+)$", declaration)[1]
        self.declared = declaration[:-len(self.name)].strip()
        self.pointee = self.declared[:-1].strip() if self.declared.endswith("*") else None

    @property
    def element(self):
        return re.sub(r"^const\s+", "", self.pointee)

    @property
    def constant(self):
        return self.pointee.startswith("const ")


class Function:
    def __init__(self, match):
        head = " ".join(match["head"].split())
        self.name = re.search(r"(\w+)$", head)[1]
        self.result = head[:-len(self.name)].strip()
        words = [" ".join(word.split()) for word in match["parameters"].split(",")]
        self.open = words[-1] == "..."
        self.parameters = [Parameter(word) for word in words if word not in ("...", "void")]
        self.text = Text(match["text"])


def functions_in(text):
    return {each.name: each for each in (Function(match) for match in FUNCTION.finditer(text))}


def told(functions, function, name, seen=()):
    """The text about a parameter, also where it refers to another function's."""
    text = function.text.parameters.get(name, "")
    other = re.match(r"as in (\w+)\(\)", text)
    if not other or other[1] in seen or other[1] not in functions:
        return text
    return told(functions, functions[other[1]], name, (*seen, function.name))


def count_of(function, text):
    """Elements at an address, as an expression; None if nobody says."""
    match = re.search(r"(?:`(\w+)`|::(\w+)|\b(\w+)) (?:bytes?|words?)\b", text)
    if not match:
        return None
    names = {parameter.name for parameter in function.parameters}
    if match[1]:
        return match[1] if match[1] in names else None
    return match[2] or NUMBERS.get(match[3]) or (match[3] if match[3].isdigit() else None)


def is_written(text):
    """Whether a call writes what is at an address and does not read it."""
    return re.search(r"\b(receives|written whole)\b", text) is not None


def split(text):
    """The parts between the commas outside parentheses."""
    parts, depth = [""], 0
    for character in text:
        depth += (character == "(") - (character == ")")
        if character == "," and depth == 0:
            parts.append("")
        else:
            parts[-1] += character
    return [part.strip() for part in parts if part.strip()]


def list_words(header):
    """Each word of the lists of calls, from calls_begin.h: its parameters, and the
    tuple it stands for.
    """
    found = re.findall(r"^#define ([A-Z0-9_]+)(?:\((.*?)\))? (\(.*\)|[A-Z0-9]+\(\w+\))$", header,
                       flags=re.MULTILINE)
    return {name: (split(parameters), text) for name, parameters, text in found}


def list_argument(argument, known):
    """`OUT(link)` as [direction, type, name, count, form]."""
    name, given = re.fullmatch(r"(\w+)(?:\((.*)\))?", argument, flags=re.DOTALL).groups()
    formals, text = known[name]
    actual = dict(zip(formals, split(given or "")))
    text = re.sub(r"\w+", lambda word: actual.get(word[0], word[0]), text)
    return split(text[1:-1]) if text.startswith("(") else list_argument(text, known)
