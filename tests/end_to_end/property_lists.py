"""Other programs' view of the same property lists, in both directions.

usage: property_lists.py FOLDER

FOLDER holds sample.xml, sample.binary (the value of tests/settings/sample_list.h), texts.archive and fields.archive.
They are read by Python's plistlib and by plistutil, and must mean what they should. Then other-*.plist (the sample, to be
read back) and other-texts.archive are written beside them.
"""

import datetime
import pathlib
import plistlib
import shutil
import subprocess
import sys

UID = plistlib.UID

SAMPLE = {
    "text": "é <&>\"' \U0001F600 ]]>",
    "white": "  two\n\tlines\r\n ",
    "ключ & <key>": [[], {}, {"zero": 0, "": ""}, True, False],
    "numbers": [0, -1, 255, 256, 65536, 1 << 32, (1 << 63) - 1, -(1 << 63)],
    "reals": [0.5, -1.25, 0.1, 1e300, 5e-324],
    "date": datetime.datetime(2026, 11, 21, 10, 0, 5),
    "old": datetime.datetime(1904, 1, 1),
    "data": bytes(i % 256 for i in range(300)),
    "nothing": b"",
    "long": "x" * 300,
}
# plistlib drops carriage returns when it writes XML.
SAMPLE_XML = plistlib.dumps(SAMPLE, sort_keys=False).replace(b"lines\n ", b"lines&#13;\n ")
TEXTS = [".A", "é", "", "$null"]
FIELD = {"prefix": "EXIF", "label": "Date", "tagCode": "<EXIF_Date>", "metadataCode": "Date"}


def same(found, expected, what):
    if repr(found) != repr(expected):
        sys.exit(f"{what}:\n  found    {found!r}\n  expected {expected!r}")


def opened(archive):
    """The graph of a keyed archive, by the book."""
    same((archive["$version"], archive["$archiver"], archive["$objects"][0]), (100000, "NSKeyedArchiver", "$null"), "archive")
    objects = archive["$objects"]

    def value(uid):
        stored = objects[uid.data]
        if not isinstance(stored, dict):
            return stored
        kind = objects[stored["$class"].data]
        same(kind["$classname"], kind["$classes"][0], "class")
        if "NSArray" in kind["$classes"]:
            return [value(member) for member in stored["NS.objects"]]
        return {key: value(member) for key, member in stored.items() if key != "$class"}

    return value(archive["$top"]["root"])


def check(folder):
    xml = (folder / "sample.xml").read_bytes()
    same(plistlib.loads(xml), SAMPLE, "sample.xml")
    same(plistlib.loads((folder / "sample.binary").read_bytes()), SAMPLE, "sample.binary")
    same(xml, SAMPLE_XML, "the bytes of the XML")
    same(opened(plistlib.loads((folder / "texts.archive").read_bytes())), TEXTS, "texts.archive")
    same(opened(plistlib.loads((folder / "fields.archive").read_bytes())), [FIELD], "fields.archive")


def write(folder):
    (folder / "other-xml.plist").write_bytes(SAMPLE_XML)
    (folder / "other-binary.plist").write_bytes(plistlib.dumps(SAMPLE, fmt=plistlib.FMT_BINARY, sort_keys=False))
    text = SAMPLE_XML.decode().replace("UTF-8", "UTF-16")
    (folder / "other-utf16.plist").write_bytes(text.encode("utf-16"))
    objects = ["$null", {"NS.objects": [UID(i) for i in range(2, 6)], "$class": UID(6)}, *TEXTS,
               {"$classname": "NSArray", "$classes": ["NSArray", "NSObject"]}]
    archive = {"$version": 100000, "$archiver": "NSKeyedArchiver", "$top": {"root": UID(1)}, "$objects": objects}
    (folder / "other-texts.archive").write_bytes(plistlib.dumps(archive, fmt=plistlib.FMT_BINARY))


def convert(folder):
    """plistutil turns either form into the other."""
    for source, target, form in (("sample.xml", "other-converted-binary.plist", "bin"),
                                 ("sample.binary", "other-converted-xml.plist", "xml")):
        subprocess.run(["plistutil", "-i", folder / source, "-o", folder / target, "-f", form], check=True)


def main():
    folder = pathlib.Path(sys.argv[1])
    check(folder)
    write(folder)
    if shutil.which("plistutil"):
        convert(folder)


main()
