"""Compares the tags of songs, written by ffmpeg and mutagen, with what was given to those programs; see metadata_comparison.sh.

Where a kind of file cannot hold what was given, LESS and OTHERS_LESS say what it holds.
"""
import json
import os
import subprocess
from concurrent.futures import ThreadPoolExecutor

import mutagen
import mutagen.aiff
import mutagen.apev2
import mutagen.asf
import mutagen.id3
import mutagen.mp3
import mutagen.wave

GIVEN = {"artist": "Hélène & Zoë", "date": "1964", "genre": "Chanson", "title": "Amsterdam: a/b 日本", "album": "Olympia", "comment": "Live, fine",
         "track": "3/12", "composer": "Brel"}
EXPECTED = {"Artist": GIVEN["artist"], "Year": "1964", "Genre": "Chanson", "Title": GIVEN["title"], "Album": "Olympia", "Comments": "Live, fine",
            "TrackNumber": "3", "Composer": "Brel"}
# ffmpeg's options for each kind, and where the file holds less than was given.
KINDS = {
    "v24.mp3": "", "v23.mp3": "-id3v2_version 3", "v23_and_v1.mp3": "-id3v2_version 3 -write_id3v1 1", "c.m4a": "", "d.m4b": "-f mp4",
    "e.aac": "-write_id3v2 1", "f.flac": "", "g.ogg": "", "h.oga": "-c:a flac", "i.opus": "", "j.aiff": "-write_id3v2 1", "k.wma": "", "l.wav": "",
    "m.wv": "", "n.tta": "",
}
LESS = {"l.wav": {"Composer": ""}}

TEXTS = {"TIT2": "Title", "TALB": "Album", "TCOM": "Brel", "TRCK": "7", "TCON": "Jazz"}
SEVERAL = ["Hélène", "Zoë 日本"]


def frames(version):
    frames_ = [getattr(mutagen.id3, name)(encoding=1, text=[text]) for name, text in TEXTS.items()]
    frames_.append(mutagen.id3.COMM(encoding=1, lang="eng", desc="iTunNORM", text=["000"]))
    frames_.append(mutagen.id3.COMM(encoding=1, lang="eng", desc="", text=["  two  words "]))
    frames_.append(mutagen.id3.TPE1(encoding=1, text=SEVERAL))
    frames_.append(mutagen.id3.TDRC(encoding=1, text=["2004-05-17"]))
    return frames_


def write_id3(path, kind, version=4):
    song = kind(path)
    if song.tags is None:
        song.add_tags()
    for frame in frames(version):
        song.tags.add(frame)
    if version == 3:
        song.tags.update_to_v23()
    song.save(v2_version=version, **({"v23_sep": "/"} if version == 3 else {}))


def write_plain(path):
    song = mutagen.File(path)
    song.update({"artist": SEVERAL, "date": ["2004-05-17"], "genre": ["Jazz"], "title": ["Title"], "album": ["Album"], "comment": ["  two  words "],
                 "tracknumber": ["7/9"], "composer": ["Brel"]})
    song.save()


def write_id3v1(path, character_set):
    fields = ["Title – é", "Hélène", "Album", "2004"]
    record = b"".join(field.encode(character_set).ljust(size, b"\0") for field, size in zip(fields, (30, 30, 30, 4)))
    with open(path, "ab") as song:
        song.write(b"TAG" + record + b"two  words".ljust(28, b"\0") + b"\0\x07\x08")


def write_info(path):
    """The list of texts in a WAV file, as programs of Windows write it."""
    chunks = b""
    for name, text in (("INAM", "Title – é"), ("IART", "Hélène"), ("IPRD", "Album"), ("ICRD", "2004-05-17"), ("ICMT", "two  words"),
                       ("IGNR", "Jazz"), ("IMUS", "Brel"), ("ITRK", "7")):
        data = text.encode("cp1252") + b"\0"
        chunks += name.encode() + len(data).to_bytes(4, "little") + data + b"\0" * (len(data) % 2)
    with open(path, "rb") as song:
        sound = song.read()[12:]
    body = b"WAVE" + sound[:sound.index(b"LIST")] + sound[sound.index(b"data"):] + b"LIST" + (len(chunks) + 4).to_bytes(4, "little") + b"INFO" + chunks
    with open(path, "wb") as song:
        song.write(b"RIFF" + len(body).to_bytes(4, "little") + body)


def write_mp4(path):
    song = mutagen.File(path)
    song.update({"\xa9ART": SEVERAL, "\xa9day": ["2004-05-17T07:00:00Z"], "\xa9gen": ["Jazz"], "\xa9nam": ["Title"], "\xa9alb": ["Album"],
                 "\xa9cmt": ["  two  words "], "trkn": [(7, 9)], "\xa9wrt": ["Brel"]})
    song.save()


def write_asf(path):
    song = mutagen.asf.ASF(path)
    song.tags.clear()
    song.update({"Author": SEVERAL, "WM/Year": ["2004"], "WM/Genre": ["Jazz"], "Title": ["Title"], "WM/AlbumTitle": ["Album"],
                 "Description": ["  two  words "], "WM/TrackNumber": [mutagen.asf.ASFDWordAttribute(7)], "WM/Composer": ["Brel"]})
    song.save()


def write_ape(path):
    song = mutagen.apev2.APEv2()
    song.update({"Artist": SEVERAL, "Year": "2004-05-17", "Genre": "Jazz", "Title": "Title", "Album": "Album", "Comment": "  two  words ",
                 "Track": "7/9", "Composer": "Brel"})
    song.save(path)


OTHERS = {
    "several_v24.mp3": lambda path: write_id3(path, mutagen.mp3.MP3), "several_v23.mp3": lambda path: write_id3(path, mutagen.mp3.MP3, 3),
    "several.aiff": lambda path: write_id3(path, mutagen.aiff.AIFF), "several.wav": lambda path: write_id3(path, mutagen.wave.WAVE),
    "several.flac": write_plain, "several.ogg": write_plain, "several.opus": write_plain, "several.m4a": write_mp4, "several.wma": write_asf,
    "several.wv": write_ape, "several_ape.mp3": write_ape, "several.tta": write_ape, "latin_v1.mp3": lambda path: write_id3v1(path, "cp1252"),
    "utf8_v1.mp3": lambda path: write_id3v1(path, "utf-8"), "info.wav": write_info,
}
OTHERS_EXPECTED = {"Artist": ",".join(SEVERAL), "Year": "2004", "Genre": "Jazz", "Title": "Title", "Album": "Album", "Comments": "twowords",
                   "TrackNumber": "7", "Composer": "Brel"}
# Version 1 knows no composer. What stands in one text of version 2.3 stays one: a "/" may be the artist's own.
OLD = {"Artist": "Hélène", "Title": "Title – é"}
OTHERS_LESS = {"several_v23.mp3": {"Artist": "/".join(SEVERAL)}, "info.wav": OLD, "latin_v1.mp3": {**OLD, "Composer": ""},
               "utf8_v1.mp3": {**OLD, "Composer": ""}}


def make_songs(folder):
    tags = [part for name, value in GIVEN.items() for part in ("-metadata", f"{name}={value}")]
    outputs = [part for name, options in KINDS.items() for part in ["-t", "0.1", *tags, *options.split(), name]]
    outputs += [part for name in OTHERS for part in ["-t", "0.1", "-map_metadata", "-1", *(["-id3v2_version", "0"] if "_v1" in name else []), name]]
    subprocess.run(["ffmpeg", "-v", "error", "-f", "lavfi", "-i", "anullsrc=r=48000:cl=mono", *outputs], cwd=folder, check=True, stdin=subprocess.DEVNULL)
    for name, write in OTHERS.items():
        write(str(folder / name))


def tokens_of(path):
    output = subprocess.run([os.environ["BRINDLE"], "fields", str(path), "--json"], check=True, capture_output=True).stdout.decode()
    return {row["token"][1:-1]: row["value"] for row in map(json.loads, output.splitlines()) if row["group"] == "Audio"}


def compare_songs(folder):
    make_songs(folder)
    expected = {name: {**EXPECTED, **LESS.get(name, {})} for name in KINDS} | {name: {**OTHERS_EXPECTED, **OTHERS_LESS.get(name, {})} for name in OTHERS}
    with ThreadPoolExecutor() as pool:
        found = dict(zip(expected, pool.map(lambda name: tokens_of(folder / name), expected)))
    print(f"{len(expected)} songs")
    return [f"{name}: <{token}> is {found[name][token]!r}, expected {value!r}"
            for name, values in expected.items() for token, value in values.items() if found[name][token] != value]
