#!/usr/bin/env python3
"""Compares the comments of the interface headers with the interface itself.

usage: check_manual.py XML-FOLDER LIBRARY

XML-FOLDER is what Doxygen made of include/ and platform/, LIBRARY the built libpm.so. Complains one
line a finding; the last line sums up.
"""
import glob
import os
import re
import subprocess
import sys
import xml.etree.ElementTree as ElementTree

PREFIXES = ("PM_", "Pm_")  # a product exports the other functions of include/
PLAIN_RESULTS = {"0", "1", "22"}  # what the framework-facing functions answer besides the codes
CODE_WORD = re.compile(r"\bPM_(?:ERR|RET)_[A-Z_]*[A-Z]\b(?!\.\.\.)")
findings = []


def complain(place, text):
    findings.append(f"{place}: {text}")


def words_of(element):
    return " ".join("".join(element.itertext()).split()) if element is not None else ""


class Function:
    """A function as its prototype and its comment describe it."""

    def __init__(self, member):
        self.name = member.findtext("name")
        location = member.find("location")
        self.file = location.get("declfile") or location.get("file")
        self.place = f"{self.file}:{location.get('line')}: {self.name}"
        self.result = words_of(member.find("type"))
        self.parameters = []
        for parameter in member.findall("param"):
            name = parameter.findtext("declname")
            if name:
                self.parameters.append((name, words_of(parameter.find("type"))))
        self.brief = words_of(member.find("briefdescription"))
        self.documented = []
        self.results = []
        detail = member.find("detaileddescription")
        for group in detail.iter("parameterlist"):
            for item in group.findall("parameteritem"):
                for name in item.iter("parametername"):
                    entry = (words_of(name), name.get("direction"))
                    text = words_of(item.find("parameterdescription"))
                    if not text:
                        complain(self.place, f"says nothing about {entry[0]}")
                    if group.get("kind") == "param":
                        self.documented.append(entry)
                    elif group.get("kind") == "retval":
                        self.results.append(entry[0])
        self.has_return = any(part.get("kind") == "return" for part in detail.iter("simplesect"))

    def check(self, codes):
        if not self.brief:
            complain(self.place, "has no description")
        names = [name for name, _ in self.parameters if name != "..."]
        documented = [name for name, _ in self.documented]
        if names != documented:
            complain(self.place, f"takes ({', '.join(names)}), documents ({', '.join(documented)})")
        self.check_directions()
        for code in self.results:
            if code not in codes and code not in PLAIN_RESULTS:
                complain(self.place, f"@retval {code} is no result code")
        for code in {code for code in self.results if self.results.count(code) > 1}:
            complain(self.place, f"@retval {code} stands twice")
        answers = bool(self.results) or self.has_return
        if answers == (self.result.split()[-1] == "void"):
            complain(self.place, "documents a result but has none" if answers
                     else "says nothing about its result")

    def check_directions(self):
        if not any(direction for _, direction in self.documented):
            return
        types = dict(self.parameters)
        for name, direction in self.documented:
            if direction is None:
                complain(self.place, f"gives {name} no direction, others have one")
            writable = "*" in types.get(name, "") and "const" not in types.get(name, "")
            if direction and "out" in direction and not writable:
                complain(self.place, f"cannot write through {name}, documented as [out]")


def functions_in(folder):
    found = {}
    for file in glob.glob(folder + "/*_8h.xml"):
        for member in ElementTree.parse(file).iter("memberdef"):
            if member.get("kind") == "function":
                function = Function(member)
                found[function.name] = function
    return found


def symbols_of(library, kind):
    listing = subprocess.run(["nm", "-D", kind, library], check=True, capture_output=True,
                             text=True)
    names = [line.split()[-1] for line in listing.stdout.splitlines() if line.strip()]
    return {name for name in names if re.match(r"[A-Za-z]\w*$", name)}


def check_codes_page(codes):
    page = open("docs/result_codes.md", encoding="utf-8").read()
    rows = re.findall(r"^\| `(PM_\w+)` \| (0x[0-9A-F]+) \| ([^|]+\S) \| ([^|]+\S) \|$", page, re.M)
    told = {name: value for name, value, _, _ in rows}
    if len(told) != len(rows):
        complain("docs/result_codes.md", "has a code twice")
    for name in sorted(codes.keys() | told.keys()):
        if codes.get(name) != told.get(name):
            complain("docs/result_codes.md",
                     f"{name} is {codes.get(name)}, the page has {told.get(name)}")


def check_links():
    """Every relative link of a page leads to a file, and its anchor to a title."""
    pages = subprocess.run(["git", "ls-files", "*.md"], check=True, capture_output=True, text=True)
    for page in pages.stdout.split():
        text = open(page, encoding="utf-8").read()
        for target in re.findall(r"\]\(([^)\s]+)\)", text):
            if re.match(r"[a-z]+:", target):
                continue
            path, _, anchor = target.partition("#")
            file = os.path.normpath(os.path.join(os.path.dirname(page), path)) if path else page
            if not os.path.exists(file):
                complain(page, f"links to {target}, which is not there")
            elif anchor:
                titles = re.findall(r"^#+ (.*)$", open(file, encoding="utf-8").read(), re.M)
                anchors = {re.sub(r"[^\w\- ]", "", title.lower()).replace(" ", "-")
                           for title in titles}
                if anchor not in anchors:
                    complain(page, f"links to {target}, which has no such title")


def main():
    folder, library = sys.argv[1:]
    head = open("include/pm_result.h", encoding="utf-8").read()
    codes = dict(re.findall(r"X\((PM_\w+), (0x[0-9A-F]+),", head))
    functions = functions_in(folder)
    ours = {name for name, function in functions.items()
            if function.file.startswith("include/") and name.startswith(PREFIXES)}
    exported = {name for name in symbols_of(library, "--defined-only") if name.startswith(PREFIXES)}
    for name in sorted(exported - ours):
        complain(library, f"exports {name}, which no header of include/ documents")
    for name in sorted(ours - exported):
        complain(functions[name].place, f"is not exported by {library}")
    needed = {name for name in symbols_of(library, "--undefined-only")
              if name.startswith(("ROOT_", "DDM_", "SYN_", "RPC_", "PUB_", "DEV_", "PTOPO_", "CAP_",
                                  "ATTR_", "DBG_", "ERR_", "ZEL_", "KVT_", "DMS_"))}
    for name in sorted(needed - functions.keys()):
        complain(library, f"needs {name}, which no header of platform/ documents")
    for name in sorted(functions):
        functions[name].check(set(codes))
    texts = glob.glob("include/*.h") + glob.glob("docs/*.md") + ["README.md"]
    for file in texts:
        text = open(file, encoding="utf-8").read()
        for word in sorted(set(CODE_WORD.findall(text)) - set(codes)):
            complain(file, f"{word} is no result code")
        if file.endswith(".md"):
            for word in sorted(set(re.findall(r"\bPM_Lib\w+", text)) - ours):
                complain(file, f"there is no function {word}")
    check_codes_page(codes)
    check_links()
    for finding in findings:
        print(finding)
    if findings:
        print(f"{len(findings)} findings")
        return 1
    print(f"{len(ours)} exported and {len(functions) - len(ours)} other functions are documented as"
          f" they are, {len(codes)} result codes")
    return 0


if __name__ == "__main__":
    sys.exit(main())
