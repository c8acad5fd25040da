"""Compares every field of photographs, tagged by exiftool and exiv2, with what exiftool reads; see metadata_comparison.sh.

What exiftool says is turned into what a name shall hold by rules of this file's own.
"""
import datetime
import json
import os
import pathlib
import plistlib
import struct
import subprocess
import sys
import tempfile
from concurrent.futures import ThreadPoolExecutor

from song_comparison import compare_songs

BRINDLE = os.environ["BRINDLE"]
TOP = pathlib.Path(__file__).resolve().parents[2]
ZONE, ZONE_NAME = datetime.timezone(datetime.timedelta(hours=5, minutes=30)), "Asia/Kolkata"
URGENCIES = ["None", "High", "Normal + 3", "Normal + 2", "Normal + 1", "Normal", "Normal - 1", "Normal - 2", "Low"]
CODES = {name: plistlib.loads((TOP / f"resources/{name}.plist").read_bytes()) for name in ("scene", "subjectcode")}

# By token, without its brackets: the IPTC data set and the property of XMP, as exiftool names them.
FIELDS = {
    "IPTC_Description_Document_Title": ("ObjectName", "XMP-dc:Title"),
    "IPTC_Description_Author": ("By-line", "XMP-dc:Creator"),
    "IPTC_Description_Author_Title": ("By-lineTitle", "XMP-photoshop:AuthorsPosition"),
    "IPTC_Description_Description": ("Caption-Abstract", "XMP-dc:Description"),
    "IPTC_Description_Description_Writer": ("Writer-Editor", "XMP-photoshop:CaptionWriter"),
    "IPTC_Description_Copyright_Notice": ("CopyrightNotice", "XMP-dc:Rights"),
    "IPTC_Description_Urgency": ("Urgency", "XMP-photoshop:Urgency"),
    "IPTC_Keywords": ("Keywords", "XMP-dc:Subject"),
    "IPTC_Categories": ("SupplementalCategories", "XMP-photoshop:SupplementalCategories"),
    "IPTC_Origin_City": ("City", "XMP-photoshop:City"),
    "IPTC_Origin_Location": ("Sub-location", "XMP-iptcCore:Location"),
    "IPTC_Origin_State": ("Province-State", "XMP-photoshop:State"),
    "IPTC_Origin_Country": ("Country-PrimaryLocationName", "XMP-photoshop:Country"),
    "IPTC_Origin_Country_Code": ("Country-PrimaryLocationCode", "XMP-iptcCore:CountryCode"),
    "IPTC_Origin_Credit": ("Credit", "XMP-photoshop:Credit"),
    "IPTC_Origin_Source": ("Source", "XMP-photoshop:Source"),
    "IPTC_Origin_Headline": ("Headline", "XMP-photoshop:Headline"),
    "IPTC_Origin_Instructions": ("SpecialInstructions", "XMP-photoshop:Instructions"),
    "IPTC_Origin_Transmission_Ref": ("OriginalTransmissionReference", "XMP-photoshop:TransmissionReference"),
    "IPTC_Image_Rights_Usage_Terms": (None, "XMP-xmpRights:UsageTerms"),
    "IPTC_Image_Intellectual_Genre": ("ObjectAttributeReference", "XMP-iptcCore:IntellectualGenre"),
    "IPTC_Image_Scene": (None, "XMP-iptcCore:Scene"),
    "IPTC_Image_Subject_Code": ("SubjectReference", "XMP-iptcCore:SubjectCode"),
}
CONTACT = {"Address": "CiAdrExtadr", "City": "CiAdrCity", "State": "CiAdrRegion", "Postal_Code": "CiAdrPcode",
           "Country": "CiAdrCtry", "Phone": "CiTelWork", "Email": "CiEmailWork", "Website": "CiUrlWork"}
VALUES = {  # what is written where a field is not simply given its own name
    "By-line": ["Zoë Ångström", "B: & Co"], "By-lineTitle": ["Staff", "Guest"], "Writer-Editor": ["W1", "W2"],
    "Keywords": ["sea", "a/b", "x & y <z>"], "SupplementalCategories": ["SPO", "FIN"], "Urgency": ["5"],
    "Country-PrimaryLocationCode": ["ITA"], "ObjectAttributeReference": ["001:Current"],
    "SubjectReference": ["IPTC:15054000:SPO:Soccer:", "04000000"], "CopyrightNotice": ["© 2009 Zoë: all/none"],
    "XMP-dc:Creator": ["Žofie 日本", "Second"], "XMP-dc:Subject": ["moře", "a/b", "x & y <z>"],
    "XMP-photoshop:SupplementalCategories": ["ART", "LIF"], "XMP-photoshop:Urgency": ["1"],
    "XMP-iptcCore:CountryCode": ["CZ"], "XMP-iptcCore:Scene": ["010100", "012300"],
    "XMP-iptcCore:SubjectCode": ["15054000", "01000000"], "XMP-dc:Title": ["Titul & 日本 𝄞"],
}
ENGLISH = "-XMP-dc:Title-en=English title"


def writes(names):
    return [f"-{name}={value}" for name in names for value in VALUES.get(name.removeprefix("IPTC:"), [f"{name.split(':')[-1]} é"])]


IIM = ["-IPTC:TimeCreated=10:20:30+02:00", "-IPTC:DateCreated=2001:02:03", *writes(f"IPTC:{iim}" for iim, _ in FIELDS.values() if iim)]
MARKED = ["-IPTC:CodedCharacterSet=UTF8", *IIM]
LATIN = ["-charset", "iptc=Latin1", "-IPTC:CodedCharacterSet=", *IIM]
XMP = [*writes(xmp for _, xmp in FIELDS.values()), ENGLISH, "-XMP-xmpRights:Marked=True", "-XMP-xmpRights:WebStatement=http://a.example/b?c",
       "-XMP-photoshop:DateCreated=2009:05:17 23:20:30+02:00", *(f"-XMP-iptcCore:CreatorContactInfo{name}={name} ü" for name in CONTACT.values())]
XMP_DAY = ["-XMP-photoshop:DateCreated=2009:05", "-XMP-xmpRights:Marked=False"]
CAMERA = ["-IFD0:Make= Grün & Co ", "-IFD0:Model=X:1/2", "-ExifIFD:DateTimeOriginal=2009:05:17 10:20:30", "-IFD0:ModifyDate=2010:01:01 00:00:00",
          "-ExifIFD:UserComment=plain: text"]
COMMENT = ["-ExifIFD:UserComment=Žlutý kůň 日本", "-IFD0:ModifyDate=2010:02:03 13:14:15", "-IFD0:Make=Big"]
ZERO = ["-ExifIFD:DateTimeOriginal=0000:00:00 00:00:00", "-IFD0:Model=Zero"]
MOTOROLA = ["-ExifByteOrder=MM", *COMMENT, "-ExifIFD:DateTimeOriginal=2009:12:31 23:59:59"]
SETS = {"nothing": [], "camera": CAMERA, "comment": COMMENT, "zero": ZERO, "motorola": MOTOROLA, "marked": MARKED, "latin": LATIN, "xmp": XMP,
        "day": XMP_DAY, "all": MARKED + XMP + CAMERA, "attributes": ["-api", "Compact=Shorthand", *XMP]}
JAPANESE = "写真のコメント"  # exiftool does not know the escape sequences
# Without a place for IPTC data sets.
NO_IIM = {"webp", "avif", "heic"}
RAW = {"dng": ["-DNGVersion=1.4.0.0"], "nef": ["-IFD0:Make=NIKON CORPORATION"], "arw": ["-IFD0:Make=SONY"], "orf": [], "rw2": []}


def run(command, **options):
    done = subprocess.run(command, capture_output=True, stdin=subprocess.DEVNULL, **options)
    if done.returncode not in (0, 1):
        sys.exit(f"{command[0]} ended with {done.returncode}: {done.stderr.decode(errors='replace')}")
    return done.stdout


def make_bases(folder):
    run(["ffmpeg", "-v", "error", "-f", "lavfi", "-i", "color=red:s=64x48", *"-frames:v 1 b.jpg -frames:v 1 -pix_fmt rgb24 b.tif -frames:v 1 b.png "
         "-frames:v 1 -c:v libwebp b.webp -frames:v 1 -c:v libaom-av1 -still-picture 1 -cpu-used 8 b.avif".split()], cwd=folder)
    avif = (folder / "b.avif").read_bytes()
    (folder / "b.heic").write_bytes(avif.replace(b"ftypavif", b"ftypheic").replace(b"avifmif1miafMA1B", b"heicmif1miafMA1B").replace(b"av01Color", b"hvc1Color"))
    for kind in RAW:
        (folder / f"b.{kind}").write_bytes((folder / "b.tif").read_bytes())


def tag(folder):
    """Every set of values in a file of every kind; one run of exiftool."""
    arguments = []
    for kind in ("jpg", "tif", "png", "webp", "avif", "heic", *RAW):
        for name, values in SETS.items():
            if (name in ("marked", "latin") and kind in NO_IIM) or \
                    (kind in RAW and name not in ("camera", "all", "comment")) or (name, kind) == ("comment", "rw2"):
                continue
            (folder / f"{name}.{kind}").write_bytes((folder / f"b.{kind}").read_bytes())
            if values:
                arguments += ["-m", "-q", "-overwrite_original", *RAW.get(kind, []), *values, f"{name}.{kind}", "-execute"]
    (folder / "arguments").write_text("\n".join(arguments))
    run(["exiftool", "-@", "arguments"], cwd=folder)
    for name in ("camera", "all", "comment"):  # exiftool writes these only into what is such a file already
        change(folder / f"{name}.orf", lambda bytes_: b"IIRO" + bytes_[4:])
    for name in ("camera", "all"):  # the size of these is where the sensor's right and lower border are
        change(folder / f"{name}.rw2", as_panasonic)


def as_panasonic(tiff):
    for old, new in ((0x100, 7), (0x101, 6)):
        for kind in (3, 4):
            tiff = tiff.replace(struct.pack("<HHI", old, kind, 1), struct.pack("<HHI", new, kind, 1), 1)
    return b"IIU\0" + tiff[4:]


def change(path, how):
    path.write_bytes(how(path.read_bytes()))


def tag_with_exiv2(folder):
    jobs = {"jis": b"set Exif.Photo.UserComment charset=Jis " + JAPANESE.encode("iso2022_jp"),
            "unicode": "set Exif.Photo.UserComment charset=Unicode Žlutý".encode(),
            "more": "set Xmp.photoshop.City Brno\nset Xmp.dc.title lang=x-default Název\nset Xmp.dc.subject XmpBag a\nset Iptc.Application2.Headline "
                    "Ráno\nset Iptc.Application2.Keywords k1\nadd Iptc.Application2.Keywords k2\nset Exif.Image.Model M\n".encode()}
    for name, commands in jobs.items():
        (folder / f"{name}.commands").write_bytes(commands + b"\n")
        for kind in ("jpg", "tif"):
            (folder / f"{name}.{kind}").write_bytes((folder / f"b.{kind}").read_bytes())
        run(["exiv2", "-m", f"{name}.commands", f"{name}.jpg", f"{name}.tif"], cwd=folder)


class Expected:
    """What the tokens of one file stand for, from exiftool's record of it."""

    def __init__(self, record):
        self.record = record
        stem = pathlib.Path(record["SourceFile"]).stem
        self.has_shorthand = stem in ("attributes", "more")
        if stem == "jis":
            record["ExifIFD:UserComment"] = JAPANESE

    def list(self, iim, xmp):
        value = self.record.get(f"IPTC:{iim}", "")
        value = self.record.get(xmp, "") if value == "" else value
        return [str(member) for member in (value if isinstance(value, list) else [value])]

    def field(self, token):
        values = self.list(*FIELDS[token])
        if token == "IPTC_Description_Urgency":
            return URGENCIES[int(values[0])] if values[0] else ""
        for name, table in (("Scene", "scene"), ("Subject_Code", "subjectcode")):
            if token.endswith(name):
                values = [CODES[table][value.split(":")[1] if ":" in value else value] if value else "" for value in values]
        return ",".join(values)

    def contact(self, name):
        return self.record.get("XMP-iptcCore:CreatorContactInfo", {}).get(CONTACT[name], "")

    def from_camera(self, key):
        return str(self.record.get(key, "")).strip()

    def taken(self):
        text = self.record.get("ExifIFD:DateTimeOriginal") or self.record.get("IFD0:ModifyDate") or "0"
        return None if text.startswith("0") else datetime.datetime.strptime(text, "%Y:%m:%d %H:%M:%S")

    def created(self, pattern):
        text = "" if self.has_shorthand else self.record.get("XMP-photoshop:DateCreated", "")
        if len(text) < 25:
            return text.replace(":", "-")
        return datetime.datetime.strptime(text, "%Y:%m:%d %H:%M:%S%z").astimezone(ZONE).strftime(pattern)

    def tokens(self):
        taken = self.taken()
        marked = self.record.get("XMP-xmpRights:Marked")
        values = {token: self.field(token) for token in FIELDS}
        values |= {f"IPTC_Contact_{name}": self.contact(name) for name in CONTACT}
        values |= {
            "EXIF_Date": taken.strftime("%d%m%Y") if taken else "", "EXIF_Time": taken.strftime("%H%M%S") if taken else "",
            "EXIF_Device_Make": self.from_camera("IFD0:Make"), "EXIF_Device_Model": self.from_camera("IFD0:Model"),
            "EXIF_Dimensions": "64x48", "EXIF_Comments": self.from_camera("ExifIFD:UserComment"),
            "IPTC_Description_Copyright_Status":
                "Unknown" if marked is None or self.has_shorthand else "Copyrighted" if marked else "Public Domain",
            "IPTC_Description_Copyright_Info_URL": "" if self.has_shorthand else self.record.get("XMP-xmpRights:WebStatement", ""),
            "IPTC_Origin_Date_Created": self.created("%d%m%Y"),
            "IPTC_Origin_Time_Created": self.record.get("IPTC:TimeCreated", "").replace(":", "") or self.created("%H%M%S"),
        }
        return values


def tokens_of(path):
    output = run([BRINDLE, "fields", str(path), "--json"], env={**os.environ, "TZ": ZONE_NAME}).decode()
    return {row["token"][1:-1]: row["value"] for row in map(json.loads, output.splitlines())}


def compare_photos(folder):
    make_bases(folder)
    tag(folder)
    tag_with_exiv2(folder)
    files = sorted(path for path in folder.iterdir() if path.suffix[1:] in ("jpg", "tif", "png", "webp", "avif", "heic", *RAW) and path.stem != "b")
    latin = [path.name for path in files if path.stem == "latin"]
    others = [path.name for path in files if path.stem != "latin"]
    read = ["exiftool", "-j", "-n", "-G1", "-struct"]
    records = json.loads(run([*read, "-charset", "iptc=UTF8", *others], cwd=folder)) + json.loads(run([*read, "-charset", "iptc=Latin1", *latin], cwd=folder))
    with ThreadPoolExecutor() as pool:
        found = dict(zip(files, pool.map(tokens_of, files)))
    count, faults = 0, []
    for record in records:
        given = found[folder / record["SourceFile"]]
        for token, value in Expected(record).tokens().items():
            count += value != ""
            if given[token] != value:
                faults.append(f"{record['SourceFile']}: <{token}> is {given[token]!r}, exiftool says {value!r}")
    print(f"{len(records)} photographs, {count} values")
    return faults + ([] if count > 1000 else ["so few values: the other programs did not write"])


if __name__ == "__main__":
    with tempfile.TemporaryDirectory() as top:
        folder = pathlib.Path(top)
        faults = compare_photos(folder) + compare_songs(folder)
    print("\n".join(faults))
    sys.exit(1 if faults else 0)
