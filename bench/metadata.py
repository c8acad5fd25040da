"""bench/run --only metadata: photographs renamed by date and songs by tags, beside the programs that people use for it.

Every program gives the same names to a fresh tree of hard links; the floor reads the first 16 KiB of each file and puts an
"x" before its name. And one preview of 100,000 photographs beside reading that much of each.
"""

import os
import shutil
import statistics
import subprocess

PHOTO_NAME = "%Y-%m-%d_%H-%M-%S"
PHOTO_MASK = ["photo", "<EXIF_Date>_<EXIF_Time>", "--date-parts", "yyyy-MM-dd", "--time-parts", "HH-mm-ss"]
# No two names are alike, however many links one photograph has.
UNIQUE_MASK = ["photo", "<FILEINFO_Filename>_<EXIF_Date>"]
SONG_MASK = ["audio", "<Artist> - <Title>"]
PREVIEWED = 100_000


def make_photo(path):
    subprocess.run(["ffmpeg", "-v", "error", "-y", "-f", "lavfi", "-i", "testsrc2=s=1280x960", "-frames:v", "1", "-q:v", "4", path], check=True)
    subprocess.run(["exiftool", "-q", "-overwrite_original", "-Make=Maker", "-Model=Model 7", "-DateTimeOriginal=2009:05:17 10:20:30", path], check=True)


def make_song(path):
    subprocess.run(["ffmpeg", "-v", "error", "-y", "-f", "lavfi", "-i", "sine=d=5", "-metadata", "artist=Artist", "-metadata", "title=Title 0000",
                    "-metadata", "album=Album", "-metadata", "track=3/12", "-metadata", "genre=Jazz", path], check=True)


def photo_date(i):
    return f"20{i // 86400 + 10:02}:05:17 {i // 3600 % 24:02}:{i // 60 % 60:02}:{i % 60:02}".encode()


def song_title(i):
    return f"Title {i:04}".encode()


KINDS = {
    "photographs": (make_photo, ".jpg", b"2009:05:17 10:20:30", photo_date),
    "songs": (make_song, ".mp3", b"Title 0000", song_title),
}


def make_store(folder, kind, count):
    """The files, each with a value of its own in place of the first one's."""
    make, extension, value, value_of = KINDS[kind]
    first = folder / f"first{extension}"
    make(str(first))
    bytes_ = first.read_bytes()
    if value not in bytes_:
        raise SystemExit(f"{first} does not hold {value!r} as expected")
    store = folder / kind
    store.mkdir()
    for i in range(count):
        (store / f"IMG_{i:06}{extension}").write_bytes(bytes_.replace(value, value_of(i)))
    return store


def in_tree(tree, script):
    return ["sh", "-c", f'cd "$0" && {script}', str(tree)]


def programs(kind, tree, brindle, floor):
    rename = [brindle, "rename", "--yes", "--quiet", str(tree)]
    if kind == "photographs":
        table = {
            "floor": [floor, "--rename", str(tree)],
            "brindle rename": rename + PHOTO_MASK,
            "jhead -n": in_tree(tree, f"jhead -q -n{PHOTO_NAME} *.jpg"),
            "exiv2 mv": in_tree(tree, f"exiv2 -q -F -r {PHOTO_NAME} mv *.jpg"),
            "exiftool -FileName": in_tree(tree, f"exiftool -q '-FileName<DateTimeOriginal' -d {PHOTO_NAME}.%%e ."),
        }
    else:
        table = {
            "floor": [floor, "--rename", str(tree)],
            "brindle rename": rename + SONG_MASK,
            "exiftool -FileName": in_tree(tree, "exiftool -q '-FileName<$Artist - $Title.%e' -ext mp3 ."),
            "kid3-cli fromtag": ["kid3-cli", "-c", f"cd {tree}", "-c", "select all", "-c", "fromtag '%{artist} - %{title}' 2", "-c", "save"],
        }
    own = ("floor", "brindle")
    return {name: command for name, command in table.items() if name.split()[0] in own or shutil.which(name.split()[0])}


def link_tree(store, tree):
    shutil.rmtree(tree, ignore_errors=True)
    subprocess.run(["cp", "-al", str(store), str(tree)], check=True)


def renamed(tree):
    return sum(not name.startswith("IMG_") for name in os.listdir(tree))


class Rows:
    def __init__(self, bench, brindle, floor):
        self.bench, self.brindle, self.floor = bench, brindle, floor

    def rename(self, kind, store, count, repeat):
        """By program, the seconds of each repetition."""
        tree, seconds = self.bench.folder / f"{kind}-tree", {}
        for _ in range(repeat):
            for name, command in programs(kind, tree, self.brindle, self.floor).items():
                link_tree(store, tree)
                seconds.setdefault(name, []).append(self.bench.measure(command)[0])
                if renamed(tree) != count:  # kid3-cli gives up on a large folder now and then
                    del seconds[name][-1]
                    print(f"{name} renamed {renamed(tree)} of {count} {kind}: does not count")
        return seconds

    def preview(self, store, repeat):
        tree = self.bench.folder / "many"
        names = sorted(os.listdir(store))
        for part in range(PREVIEWED // 1000):
            (tree / f"{part:03}").mkdir(parents=True)
            for i in range(1000):
                os.link(store / names[i % len(names)], tree / f"{part:03}" / f"IMG_{i:06}.jpg")
        table = {"reading their first 16 KiB": [self.floor, str(tree)],
                 "brindle preview": [self.brindle, "preview", "--no-color", str(tree), *UNIQUE_MASK]}
        seconds = {}
        for _ in range(repeat):
            for name, command in table.items():
                seconds.setdefault(name, []).append(self.bench.measure(command)[0])
        return seconds


def group_lines(title, seconds, count):
    reference = statistics.median(next(iter(seconds.values())))
    yield f"{title:<36}{'µs/file':>9} {'ratio':>8}"
    for name, samples in seconds.items():
        if not samples:
            continue
        middle = statistics.median(samples)
        yield f"  {name:<34}{middle / count * 1e6:9.1f} {middle / reference:8.2f}"


def run(bench, brindle, floor, count, repeat):
    """The lines of the table."""
    rows, lines, stores = Rows(bench, brindle, floor), [], {}
    for kind in KINDS:
        stores[kind] = make_store(bench.folder, kind, count)
        lines += group_lines(f"{count:,} {kind} renamed by their tags", rows.rename(kind, stores[kind], count, repeat), count)
    lines += group_lines(f"{PREVIEWED:,} photographs", rows.preview(stores["photographs"], repeat), PREVIEWED)
    return lines
