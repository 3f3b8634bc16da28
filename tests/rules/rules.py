#!/usr/bin/env python3
"""Refuses what the compiler lets through: an #include against the direction of the modules, a
co_await inside the parentheses of if, while or switch, which GCC 12 miscompiles, and a file that is
written elsewhere than in Base/WholeFile, where a full disk can't empty it.

usage: rules.py SOURCE_FOLDER      checks every file below it
       rules.py --prove FOLDER     checks samples, and that each breaks the rules that its lines name
"""
import pathlib
import re
import sys

MODULES = ["Base", "Models", "Rendering", "DeckLink", "Core", "Automation", "UI"]
SEES = {name: set(MODULES[: place + 1]) for place, name in enumerate(MODULES)}
SEES["DeckLink"] = {"Base", "DeckLink"}
SEES["Models"] = {"Base", "Models"}
SEES["Rendering"] = {"Base", "Models", "Rendering"}

INCLUDE = re.compile(r'^\s*#\s*include\s*[<"](?:\.\./)*([A-Za-z]+)/')
CONDITION = re.compile(r"\b(?:if\s*(?:constexpr)?|while|switch)\s*\(")
WRITER = "Base/WholeFile.cpp"
WRITES = re.compile(
    r"\bQ(?:SaveFile|TemporaryFile|Settings|ImageWriter)\b|\b[io]?fstream\b|\bfopen\b|\bcreat\s*\("
    r"|\b(?:QIODevice|QIODeviceBase|QFile|QFileDevice|QBuffer)::(?:WriteOnly|ReadWrite|Append)\b"
    r"|(?<!shm_)\bopen(?:at)?\s*\([^;{]*\bO_(?:WRONLY|RDWR|CREAT|TRUNC|APPEND)\b")
TEXTS_AND_COMMENTS = re.compile(
    r'//[^\n]*|/\*.*?\*/|R"([^(]*)\(.*?\)\1"|"(?:\\.|[^"\\\n])*"|\'(?:\\.|[^\'\\\n])+\'', re.DOTALL)


def without_texts_and_comments(code):
    return TEXTS_AND_COMMENTS.sub(lambda found: re.sub(r"[^\n]", " ", found.group()), code)


def parenthesis_after(code, start):
    """What stands between the opening parenthesis that ends at `start` and its partner."""
    depth = 1
    for end in range(start, len(code)):
        depth += {"(": 1, ")": -1}.get(code[end], 0)
        if depth == 0:
            return code[start:end]
    return code[start:]


def breaches(module, name, code):
    """Line number and reason of everything that the file `name` of `module` must not hold."""
    for number, line in enumerate(code.splitlines(), 1):
        found = INCLUDE.match(line)
        if found and found.group(1) in MODULES and found.group(1) not in SEES[module]:
            yield number, f"{module} must not include {found.group(1)}"
    bare = without_texts_and_comments(code)
    for condition in CONDITION.finditer(bare):
        if re.search(r"\bco_await\b", parenthesis_after(bare, condition.end())):
            yield bare.count("\n", 0, condition.start()) + 1, "co_await inside a condition"
    for write in WRITES.finditer(bare):
        if f"{module}/{name}" != WRITER:
            yield bare.count("\n", 0, write.start()) + 1, f"files are written in {WRITER} alone"


def code_files(folder):
    return sorted(file for file in folder.rglob("*") if file.suffix in (".h", ".cpp"))


def check(source):
    failures = 0
    files = 0
    for module in MODULES:
        for file in code_files(source / module):
            files += 1
            for line, reason in breaches(module, file.name, file.read_text()):
                print(f"{file}:{line}: {reason}")
                failures += 1
    if files == 0:
        sys.exit(f"{source} holds no module")
    return failures == 0


def prove(samples):
    """A line of a sample that breaks a rule ends in `// wrong`; all others are innocent."""
    files = code_files(samples)
    proven = bool(files)
    for file in files:
        code = file.read_text()
        wanted = {number for number, line in enumerate(code.splitlines(), 1)
                  if line.endswith("// wrong")}
        found = {number for number, _ in breaches(file.parent.name, file.name, code)}
        if not wanted or wanted != found:
            print(f"{file}: wanted {sorted(wanted)}, found {sorted(found)}")
            proven = False
    return proven


def main():
    if len(sys.argv) == 3 and sys.argv[1] == "--prove":
        sys.exit(0 if prove(pathlib.Path(sys.argv[2])) else 1)
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    sys.exit(0 if check(pathlib.Path(sys.argv[1])) else 1)


main()
