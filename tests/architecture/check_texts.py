"""Fails when the sources name a text that the string table lacks, or the table holds a text that no source names.

usage: check_texts.py SOURCE_FOLDER

Every literal in capitals is taken for a key unless it is one of the words below; in the methods, every literal that begins with a
capital letter is one, but for sentences (to_translate). That the other languages have the texts of English is the affair of tools/translate.
"""

import pathlib
import re
import sys

LITERAL = re.compile(r'"((?:[^"\\\n]|\\.)*)"')
CAPITALS = re.compile(r'"([A-Z][A-Z0-9]{2,})"')
LABEL = re.compile(r'(?<![\w"])(?<!to_translate\()"([A-Z][^"\n]+)"')
ROW = re.compile(r'^    (keyed|counted|unkeyed)\(\s*"((?:[^"\\]|\\.)*)"', re.MULTILINE)
# Where texts are asked for. Elsewhere capitals are tags of files, names of variables, kinds of fields.
PLACES = ("app/**/*", "cli/*", "methods/*.cpp", "settings/settings_record.*")
NOT_TEXTS = {
    # keys of the user defaults
    "DEFAULTS", "HUBPOSITION", "INCLUDEHIDDEN", "LASTPROFILE", "LASTRULE", "LIVEPREVIEW", "LIVEPREVIEWALLFILES",
    "LIVEPREVIEWFILESLIMIT", "OPENPANELFOLDER", "RECENTITEMS", "SHEETSIZE", "WINDOWSTATE",
    # what the command line calls values, and the manual page its sections
    "COUNT", "DATE", "EXT", "FILE", "LETTERS", "LIST", "MASK", "PATTERN", "TEXT", "COMMANDS", "DESCRIPTION", "METHODS",
    "NAME", "OPTIONS", "SYNOPSIS",
    # patterns of dates
    "DDD", "EEE", "EEEE", "MMM", "MMMM", "SSS",
    # groups of metadata fields, variables of the environment
    "AUDIO", "CUSTOM", "EXIF", "FILEINFO", "ID3", "IPTC", "SEQUENCES", "XMP", "LANG", "LANGUAGE", "POSIX", "TERM",
}


def main():
    source = pathlib.Path(sys.argv[1])
    rows = ROW.findall((source / "texts/strings_english.cpp").read_text(encoding="utf-8"))
    texts = {key for kind, key in rows}
    missing = []
    named = set()
    for path in sorted(source.rglob("*.cpp")) + sorted(source.rglob("*.h")):
        if not path.name.startswith("strings_"):
            named |= {literal.strip("<>") for literal in LITERAL.findall(path.read_text(encoding="utf-8"))}
    # What is no key is said by others as well: the system, the tables of metadata.
    missing += [f"no source names the text {key}" for kind, key in rows if kind != "unkeyed" and key not in named]
    for place in PLACES:
        for path in sorted(source.glob(place)):
            if path.suffix not in (".h", ".cpp") or path.name.startswith("strings_"):
                continue
            pattern = LABEL if path.parent.name == "methods" else CAPITALS
            names = pattern.findall(path.read_text(encoding="utf-8"))
            missing += [f"{path}: there is no text {name}" for name in names if name not in texts | NOT_TEXTS]
    print("\n".join(missing))
    return 1 if missing or not texts else 0


sys.exit(main())
