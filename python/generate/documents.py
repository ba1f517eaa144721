# SPDX-License-Identifier: MIT
"""Docstrings from the comments of the headers."""
import re
import textwrap

WIDTH = 92


def plain(text):
    """The text without Doxygen's marks."""
    text = re.sub(r"::(\w+)", r"\1", text).replace("\\", "\\\\").replace('"""', "'''")
    return re.sub(r"@(name|brief|file)\s+", "", text)


def of_ports(text):
    """Ports have the numbers on the box here."""
    text = re.sub(r"\bchip ports\b", "ports", re.sub(r"\bchip port\b", "port", text))
    return re.sub(r"\blogical interfaces?\b", "ports", text)


def fill(text, indent):
    """Lines of an entry of a list go on further to the right."""
    further = f"{indent}    " if len(indent) > 4 else indent
    return textwrap.fill(" ".join(text.split()), WIDTH, initial_indent=indent, subsequent_indent=further)


def body(comment):
    """The text of a comment before its first parameter: paragraphs."""
    text = re.split(r"@(?:param|return)\b", comment.plain)[0]
    text = re.sub(r"^\s*/\*\*?|\*/\s*$", "", text.strip())
    return [part for part in re.split(r"\n\s*\n", plain(text)) if part.strip()]


def result_text(comment):
    found = re.search(r"@return\s+(.*?)(?=\n\s*\n|\*/|\Z)", comment.plain, re.DOTALL)
    return " ".join(found[1].split()) if found else ""


def paragraph(text, indent="    "):
    """Filled, but that a list keeps its lines."""
    lines = text.strip().splitlines()
    if any(re.match(r"\s*(-|\d+\.) ", line) for line in lines):
        return "\n".join(f"{indent}{line.rstrip()}" for line in lines)
    return fill(text, indent)


def arguments(takes):
    for each in takes:
        text = plain(each.text)
        if each.kind in ("port", "chip_ports", "interfaces"):
            text = of_ports(text)
        if text:
            yield fill(f"{each.name}: {text}", "        ")


def docstring(call, takes, gives):
    paragraphs = body(call.comment) or [call.name]
    lines = ["\n\n".join(paragraph(each) for each in paragraphs).lstrip()]
    words = list(arguments(takes))
    if words:
        lines += ["", "    Args:", *words]
    texts = [fill(f"{each.name}: {of_ports(plain(each.text)) if 'port' in each.kind else plain(each.text)}",
                  "        ") for each in gives if each.text]
    if not gives and result_text(call.comment):
        texts = [fill(plain(result_text(call.comment)), "        ")]
    if texts:
        lines += ["", "    Returns:", *texts]
    signature = ", ".join(each.c_name for each in call.arguments)
    lines += ["", fill(f"C: `{call.name}({signature})`", "    ")]
    return "\n".join(["    \"\"\"" + lines[0], *lines[1:], "    \"\"\""])
