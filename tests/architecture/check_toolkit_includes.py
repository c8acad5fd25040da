"""Fails when a file of the window names a class of the toolkit whose header it does not include: the build hides that by a
precompiled header with all of them, and a build without one would not come to its end.

usage: check_toolkit_includes.py SOURCE_FOLDER COMPILE_COMMANDS

COMPILE_COMMANDS is the build's compile_commands.json, which says where the toolkit's headers are.
"""

import functools
import pathlib
import re
import sys

INCLUDE = re.compile(r'^[ \t]*#[ \t]*include[ \t]*[<"]([^>"]+)[>"]', re.MULTILINE)
NOT_CODE = re.compile(r'//[^\n]*|/\*.*?\*/|"(?:\\.|[^"\\\n])*"', re.DOTALL)
NAME = re.compile(r"\bQ[A-Z]\w+\b")


def toolkit_folders(commands):
    """The folder of each module ("…/qt6/QtGui"), and the one that holds them all."""
    found = dict.fromkeys(re.findall(r"-isystem (\S+)", commands.read_text(encoding="utf-8")))
    folders = [pathlib.Path(name) for name in found]
    return [folder for folder in folders if folder.is_dir() and (folder.name.startswith("Qt") or (folder / "QtCore").is_dir())]


class Headers:
    def __init__(self, source, toolkit):
        self.source, self.toolkit = source, toolkit

    def find(self, name, includer):
        for folder in (includer.parent, self.source, *self.toolkit):
            if (folder / name).is_file():
                return folder / name
        return None

    @functools.cache
    def below(self, path):
        """The files that one includes itself."""
        names = INCLUDE.findall(path.read_text(encoding="utf-8", errors="replace"))
        return frozenset(filter(None, (self.find(name, path) for name in names)))

    def closure(self, path):
        seen, waiting = {path}, [path]
        while waiting:
            new = self.below(waiting.pop()) - seen
            seen |= new
            waiting += new
        return seen

    @functools.cache
    def of_class(self, name):
        """The header that defines a class: what the one of the class's own name leads to."""
        path = next((folder / name for folder in self.toolkit if (folder / name).is_file()), None)
        return self.below(path) if path else frozenset()


def code_of(path):
    return NOT_CODE.sub(" ", path.read_text(encoding="utf-8")) if path.is_file() else ""


def declared_names(code):
    return set(re.findall(r"\bclass (Q[A-Z]\w+);", code))


def needed_names(path):
    """The classes that are more than declared, or pointed and referred to; what a header declares, its source file needs."""
    code = code_of(path)
    if path.suffix == ".cpp":
        yield from declared_names(code_of(path.with_suffix(".h")))
    declared = declared_names(code)
    for match in NAME.finditer(code):
        before, behind = code[:match.start()].rstrip(), code[match.end():match.end() + 2].lstrip()
        if match[0] in declared or before.endswith("class") or behind.startswith(("*", "&")):
            continue
        yield match[0]


def missing_includes(source, toolkit):
    headers = Headers(source, toolkit)
    for path in sorted((source / "window").rglob("*")):
        if path.suffix not in (".h", ".cpp"):
            continue
        reached = headers.closure(path)
        for name in sorted(set(needed_names(path))):
            if headers.of_class(name) and not headers.of_class(name) & reached:
                yield f"{path.relative_to(source)} names {name} and does not include <{name}>"


def main():
    toolkit = toolkit_folders(pathlib.Path(sys.argv[2]))
    if not toolkit:
        print("the compile commands name no folder of the toolkit")
        return 1
    faults = list(missing_includes(pathlib.Path(sys.argv[1]), toolkit))
    print("\n".join(faults) or "every class of the toolkit is included where it is named")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
