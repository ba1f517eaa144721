# SPDX-License-Identifier: MIT
"""build.py SOURCE_DIR OUTPUT_DIR

Writes the reference of the public headers into OUTPUT_DIR/html. A warning of
Doxygen is an error, and so is a function of the interface without its text:
what it does, every parameter, the result.
"""
import os
import pathlib
import re
import subprocess
import sys
import xml.etree.ElementTree as ElementTree


def run_doxygen(source, output):
    version = re.search(r'SWCTL_VERSION "(.*)"', (source / "include/swctl/swctl.h").read_text())[1]
    environment = {**os.environ, "SWCTL_SOURCE": str(source), "SWCTL_REFERENCE": str(output),
                   "SWCTL_VERSION": version}
    output.mkdir(parents=True, exist_ok=True)
    done = subprocess.run(["doxygen", str(source / "docs/reference/Doxyfile")], env=environment,
                          capture_output=True, text=True, check=False)
    problems = list(dict.fromkeys(done.stderr.replace(f"{source}/", "").splitlines()))
    if done.returncode != 0 and not problems:
        problems = [f"doxygen ended with status {done.returncode}"]
    return problems


def text_of(element):
    return "".join(element.itertext()).strip() if element is not None else ""


def functions(output):
    """Every function in the reference, with the file that declares it."""
    for path in sorted((output / "xml").glob("*_8h.xml")):
        compound = ElementTree.parse(path).getroot().find("compounddef")
        for member in compound.iterfind(".//memberdef[@kind='function']"):
            yield compound.findtext("compoundname"), member


def missing(member):
    """What the text of a function lacks."""
    details = member.find("detaileddescription")
    if not text_of(member.find("briefdescription")):
        yield "what it does"
    # A fixed answer reads no argument, and the head of its group says the rest.
    if "..." in member.findtext("argsstring") and member.findtext("type") == "int32_t":
        return
    documented = {text_of(name) for name in details.iterfind(".//parametername")}
    parameters = [param.findtext("declname") or "" for param in member.iterfind("param")]
    yield from (f"what {name} is" for name in parameters if name and name not in documented)
    if member.findtext("type") != "void" and details.find(".//simplesect[@kind='return']") is None:
        yield "what it returns"


def exported(source):
    for path in sorted(source.glob("src/*/exports.txt")):
        for line in path.read_text().splitlines():
            words = line.split("#")[0].split()
            if words and words[0] != "object":
                yield words[0]


def main():
    source, output = (pathlib.Path(word).resolve() for word in sys.argv[1:3])
    problems = run_doxygen(source, output)
    known = {}
    for header, member in functions(output):
        name = member.findtext("name")
        known[name] = header
        problems += [f"{header}: {name} does not say {part}" for part in missing(member)]
    names = list(exported(source))
    problems += [f"{name} is not in the reference" for name in names if name not in known]
    for problem in problems:
        print(f"reference: {problem}", file=sys.stderr)
    print(f"reference: {len(names)} functions of the interface, {len(known)} in all, "
          f"{len(problems)} problems; {output}/html/index.html")
    return 1 if problems else 0


sys.exit(main())
