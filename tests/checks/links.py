# SPDX-License-Identifier: MIT
"""links.py DIRECTORY...

Whether each relative link of each Markdown file below the directories leads to a
file, and where it names a section, to one that the file has.
"""
import pathlib
import re
import sys

LINK = re.compile(r"\]\(([^)\s]+)\)|src=\"([^\"]+)\"")
CODE = re.compile(r"^```.*?^```$|`[^`\n]*`", re.DOTALL | re.MULTILINE)
HEADING = re.compile(r"^#+ +(.*)$", re.MULTILINE)
ABROAD = re.compile(r"[a-z]+:")
LEFT_OUT = {"build", ".git"}


def sections(text):
    """The names that links give the headings of a text."""
    headings = HEADING.findall(re.sub(r"^```.*?^```$", "", text, flags=re.DOTALL | re.MULTILINE))
    return {re.sub(r"[^\w\- ]", "", each.lower()).replace(" ", "-") for each in headings}


def problems(page):
    for match in LINK.finditer(CODE.sub("", page.read_text())):
        link = match[1] or match[2]
        if ABROAD.match(link):
            continue
        path, _, section = link.partition("#")
        target = page.parent / path if path else page
        if not target.exists():
            yield f"{page}: {link} leads nowhere"
        elif section and section not in sections(target.read_text()):
            yield f"{page}: {link}: there is no such section"


def pages(directory):
    for page in sorted(directory.rglob("*.md")):
        if not LEFT_OUT & set(page.relative_to(directory).parts):
            yield page


def main():
    all_pages = [page for name in sys.argv[1:] for page in pages(pathlib.Path(name))]
    found = [problem for page in all_pages for problem in problems(page)]
    print(*found, sep="\n", end="\n" if found else "")
    print(f"links: {len(all_pages)} pages, {len(found)} links that lead nowhere")
    return 1 if found or not all_pages else 0


sys.exit(main())
