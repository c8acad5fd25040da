"""Fails when the sources name a text that the string table lacks.

usage: check_texts.py SOURCE_FOLDER

Every literal in capitals is taken for a key unless it is one of the words below; where rules are shown as trees, every literal is
one. That the languages have the same keys is the affair of another test.
"""

import pathlib
import re
import sys

CAPITALS = re.compile(r'"([A-Z][A-Z0-9]{2,})"')
LABEL = re.compile(r'(?<![\w"])"([A-Z][^"\n]+)"')
KEY = re.compile(r'^    \{"((?:[^"\\]|\\.)*)"', re.MULTILINE)
# Where texts are asked for. Elsewhere capitals are tags of files, names of variables, kinds of fields.
PLACES = ("app/**/*", "cli/*", "settings/validation.*", "settings/settings_record.*")
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
    tables = source.glob("texts/strings_english*.cpp")
    texts = {key for path in tables for key in KEY.findall(path.read_text(encoding="utf-8"))}
    missing = []
    for place in PLACES:
        for path in sorted(source.glob(place)):
            if path.suffix not in (".h", ".cpp") or path.name.startswith("strings_"):
                continue
            pattern = LABEL if path.name == "rule_tree.cpp" else CAPITALS
            names = pattern.findall(path.read_text(encoding="utf-8"))
            missing += [f"{path}: there is no text {name}" for name in names if name not in texts | NOT_TEXTS]
    print("\n".join(missing))
    return 1 if missing or not texts else 0


sys.exit(main())
