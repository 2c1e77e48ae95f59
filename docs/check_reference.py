#!/usr/bin/env python3
"""check_reference.py XML_DIRECTORY

Checks the reference that Doxygen made of the public headers, in XML, run in the project directory:

- the C headers document what src/mmslib.map exports, and export what they document;
- every function, table, record, field, enumerator and macro has a text, as has what the C++ layer
  has, its namespaces among them;
- every parameter in the C headers is named in the text of its function or of a group that the
  function is in;
- every name in backquotes, in the headers and in the documents, is one that there is.
"""

import re
import sys
import xml.etree.ElementTree as ElementTree
from pathlib import Path

VERSION_SCRIPT = Path("src/mmslib.map")
HEADERS = [
    *sorted(Path("src").glob("*/*.h")),
    Path("src/api/mmslib.hpp"),
    Path("src/api/cxx/values.hpp"),
]
DOCUMENTS = [*sorted(Path(".").glob("*.md")), *sorted(Path("docs").glob("*.md"))]
# What the documents say of names is checked in this one, which leads through the sources.
GUIDE = Path("docs/architecture.md")

# Names in backquotes that belong to the C language or its library.
C_NAMES = {"free", "malloc", "mktime", "rand", "strtol", "uint8_t", "uint16_t", "uint32_t"}

KINDS = {
    "define": "macro",
    "enum": "enumeration",
    "function": "function",
    "typedef": "type",
    "variable": "table or field",
}

problems = []


def problem(text):
    problems.append(text)


def exported_names():
    block = VERSION_SCRIPT.read_text().split("global:")[1].split("local:")[0]
    return set(re.findall(r"\w+", block))


def text_of(element):
    """The documentation of a compound, member or enumerator."""
    parts = (element.find("briefdescription"), element.find("detaileddescription"))
    return " ".join("".join(part.itertext()) for part in parts if part is not None).strip()


def names(text, word):
    return re.search(rf"\b{re.escape(word)}\b", text) is not None


class Reference:
    """The public members and compounds of the headers."""

    def __init__(self, directory):
        self.members = {}  # of the C headers, by id
        self.cxx_members = {}  # of the C++ headers, by id
        self.types = {}  # records, classes and namespaces, by name
        self.group_text = {}  # by id of the group
        self.group_of_member = {}
        self.parent_group = {}
        for path in sorted(Path(directory).glob("*.xml")):
            for compound in ElementTree.parse(path).getroot().findall("compounddef"):
                self.add(compound)

    def add(self, compound):
        kind = compound.get("kind")
        if kind == "group":
            self.group_text[compound.get("id")] = text_of(compound)
            for inner in compound.findall("innergroup"):
                self.parent_group[inner.get("refid")] = compound.get("id")
        name = compound.findtext("compoundname")
        if kind in ("struct", "union", "class", "namespace") and not name.startswith("std"):
            self.types[name] = text_of(compound)
        for member in compound.iter("memberdef"):
            if member.get("prot") == "private":
                continue
            if not member.find("location").get("file").endswith(".h"):
                self.cxx_members[member.get("id")] = member
            else:
                self.members[member.get("id")] = (member, kind == "struct")
                if kind == "group":
                    self.group_of_member[member.get("id")] = compound.get("id")

    def shared_text(self, identifier):
        """The texts of the groups around a member."""
        texts = []
        group = self.group_of_member.get(identifier)
        while group is not None:
            texts.append(self.group_text[group])
            group = self.parent_group.get(group)
        return " ".join(texts)

    def exported(self):
        """Functions and tables: members that no record has."""
        return {
            member.findtext("name")
            for member, of_record in self.members.values()
            if member.get("kind") in ("function", "variable") and not of_record
        }

    def every_member(self):
        return [member for member, _ in self.members.values()] + list(self.cxx_members.values())

    def known_names(self):
        known = {name.rpartition("::")[2] for name in self.types}
        for member in self.every_member():
            known.add(member.findtext("name"))
            for tag in ("param/declname", "enumvalue/name"):
                known.update(found.text for found in member.findall(tag))
        return known


def check_exports(reference):
    exported = exported_names()
    documented = reference.exported()
    for name in sorted(exported - documented):
        problem(f"{name} is in {VERSION_SCRIPT} and not in the reference")
    for name in sorted(documented - exported):
        problem(f"{name} is in the reference and not in {VERSION_SCRIPT}")


def check_texts(reference):
    for name, text in reference.types.items():
        if not text:
            problem(f"{name} has no text")
    for member in reference.every_member():
        kind, name = member.get("kind"), member.findtext("name")
        # A typedef of C may give a record its name, and the record has the text.
        if not text_of(member) and kind != "typedef":
            problem(f"{KINDS.get(kind, kind)} {name} has no text")
        for value in member.findall("enumvalue"):
            if not text_of(value):
                problem(f"enumerator {value.findtext('name')} has no text")


def check_parameters(reference):
    for identifier, (member, _) in reference.members.items():
        if member.get("kind") == "function":
            text = text_of(member) + " " + reference.shared_text(identifier)
            for parameter in member.findall("param/declname"):
                if not names(text, parameter.text):
                    problem(f"{member.findtext('name')}: no text names {parameter.text}")


def check_names_in_headers(reference):
    known = reference.known_names() | C_NAMES
    for path in HEADERS:
        for name in sorted(set(re.findall(r"`(\w+)`", path.read_text()))):
            if name not in known:
                problem(f"{path}: there is no {name}")


def check_documents():
    """Paths and links lead somewhere; the guide's names are in the sources."""
    sources = "\n".join(
        path.read_text()
        for directory in ("src", "tools")
        for path in sorted(Path(directory).rglob("*"))
        if path.is_file()
    )
    for path in DOCUMENTS:
        # Examples, which stand apart from the text, may name what is yet to be made.
        text = re.sub(r"^( {4}|\t).*$", "", path.read_text(), flags=re.MULTILINE)
        for target in re.findall(r"\]\(([^)#:]+)(?:#[^)]*)?\)", text):
            if not (path.parent / target).exists():
                problem(f"{path}: there is no {target}")
        for target in re.findall(r"`\.?/?((?:src|docs|tests|fuzz|bench|samples|scripts|tools|"
                                 r"examples|cmake)/[\w./-]*)`", text):
            if not Path(target).exists():
                problem(f"{path}: there is no {target}")
        if path == GUIDE:
            for name in sorted(set(re.findall(r"`([A-Za-z_]\w*)`", text))):
                if not names(sources, name):
                    problem(f"{path}: no source names {name}")


def main():
    if len(sys.argv) != 2:
        sys.exit(f"usage: {sys.argv[0]} XML_DIRECTORY")
    reference = Reference(sys.argv[1])
    check_exports(reference)
    check_texts(reference)
    check_parameters(reference)
    check_names_in_headers(reference)
    check_documents()
    for text in problems:
        print(text, file=sys.stderr)
    if problems:
        sys.exit(f"error: {len(problems)} problems in the documentation")
    print(f"{len(reference.exported())} exported names are documented, and no others.")


main()
