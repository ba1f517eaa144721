# SPDX-License-Identifier: MIT
"""answers.py SCHEMA COMMAND...

Runs a command, a test of swctl, and checks every answer in JSON that swctl
gave meanwhile against the schema. The swctl that is found first keeps them,
with keep_answer.sh.
"""
import json
import os
import pathlib
import re
import subprocess
import sys
import tempfile
import urllib.parse

import jsonschema

LONGEST = 200
BATCH = {"-b", "-batch", "--batch"}
VALUED = BATCH | {"-u", "-unit", "--unit"}
HELP = {"-h", "-help", "--help"}
VERSION = {"-V", "-Version", "--Version"}
JSON = {"-j", "-json", "--json", "-p", "-pretty", "--pretty"}
OPTIONS = VALUED | HELP | VERSION | JSON


def commands_of(program):
    """The words of every command, from the manual that the program writes."""
    manual = subprocess.run([program, "-manual"], check=True, capture_output=True, text=True)
    return [tuple(each.split()) for each in re.findall(r"^\.Ic (.*)$", manual.stdout, re.MULTILINE)]


def documents_in(text):
    """The texts of JSON that follow each other."""
    decoder = json.JSONDecoder()
    place = 0
    while text[place:].strip():
        place += len(text[place:]) - len(text[place:].lstrip())
        document, place = decoder.raw_decode(text, place)
        yield document


class Line:
    """What a command line of swctl asks for."""

    def __init__(self, arguments):
        self.options = set()
        self.words = []
        rest = list(arguments)
        while rest:
            word = rest.pop(0)
            if word == "--":
                self.words += rest
                break
            if word not in OPTIONS and (self.words or not word.startswith("-")):
                self.words.append(word)
                continue
            self.options.add(word)
            if word in VALUED and rest:
                rest.pop(0)


class Checker:
    """The definitions of the schema, by the words of the command that answers so."""

    def __init__(self, schema, commands):
        self.schema = schema
        self.commands = commands
        self.validators = {}

    def validator(self, name):
        if name not in self.validators:
            reference = "#/$defs/" + urllib.parse.quote(name)
            self.validators[name] = jsonschema.Draft202012Validator(
                {"$ref": reference, "$defs": self.schema["$defs"]})
        return self.validators[name]

    def faults(self, name, document):
        if name not in self.schema["$defs"]:
            return [f"the schema does not define {name!r}"]
        fault = jsonschema.exceptions.best_match(self.validator(name).iter_errors(document))
        return [f"{name}: {fault.json_path}: {fault.message[:LONGEST]}"] if fault else []

    def command(self, words):
        """The command that the words begin with, abbreviated or not."""
        candidates = self.commands
        for place in range(max(map(len, candidates))):
            if all(len(each) == place for each in candidates):
                break
            word = words[place] if place < len(words) else ""
            names = {each[place] for each in candidates if len(each) > place}
            fitting = {word} & names or {each for each in names if each.startswith(word)}
            candidates = [each for each in candidates if len(each) > place and each[place] in fitting]
        return " ".join(candidates[0]) if len(candidates) == 1 else None

    def name(self, line):
        """The definition of what a line is answered by."""
        if line.options & VERSION:
            return "programVersion"
        if line.options & HELP or "help" in line.words or "h" in line.words[:1]:
            return "help"
        return self.command(line.words)

    def check_answer(self, line, document):
        if isinstance(document, dict):
            return self.faults("error", document)
        name = self.name(line)
        return self.faults(name, document) if name else [f"an answer to {line.words}: {document}"]

    def check_batch(self, document):
        faults = self.faults("batch", document)
        for element in [] if faults else document:
            faults += self.check_answer(Line(element["command"].split()), element["output"])
        return faults

    def check_document(self, line, document):
        if isinstance(document, dict) and "error" in document:
            return self.faults("error", document)
        if self.name(line) in ("mac monitor", "monitor"):
            return self.faults(self.name(line), document)
        if line.words or line.options & (HELP | VERSION):
            return self.check_answer(line, document)
        return self.check_batch(document if line.options & BATCH else [document])

    def check(self, line, text):
        return [fault for document in documents_in(text)
                for fault in self.check_document(line, document)]


def complaints(checker, directory):
    for kept in sorted(directory.glob("*.arguments")):
        arguments = kept.read_bytes().decode(errors="replace").split("\0")[:-1]
        text = kept.with_suffix(".json").read_text()
        if not Line(arguments).options & JSON:
            continue
        try:
            faults = checker.check(Line(arguments), text)
        except json.JSONDecodeError as error:
            faults = [str(error)]
        for fault in faults:
            yield f"swctl {' '.join(arguments)}: {fault}"


def main():
    schema = json.loads(pathlib.Path(sys.argv[1]).read_text())
    jsonschema.Draft202012Validator.check_schema(schema)
    checker = Checker(schema, commands_of("swctl"))
    with tempfile.TemporaryDirectory() as name:
        environment = dict(os.environ, SWCTL_ANSWERS=name)
        status = subprocess.run(sys.argv[2:], env=environment, check=False).returncode
        wrong = list(complaints(checker, pathlib.Path(name)))
    for each in wrong:
        print(f"answers: {each}", file=sys.stderr)
    sys.exit(status or bool(wrong))


if __name__ == "__main__":
    main()
