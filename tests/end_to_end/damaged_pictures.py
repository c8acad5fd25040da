"""Previews by metadata of thousands of damaged pictures, and of damaged videos that are called pictures; see damaged_pictures.sh.

A run that is killed by a signal, hangs or eats memory names the seed, with which the same files are made again.
usage: damaged_pictures.py [COUNT [SEED]]
"""
import os
import pathlib
import random
import resource
import subprocess
import sys
import tempfile

from metadata_comparison import RAW, make_bases, run, tag

BRINDLE = os.environ["BRINDLE"]
VIDEOS = {"asf": "wmv2", "wmv": "wmv1", "mkv": "mpeg4", "mov": "mpeg4", "mp4": "mpeg4", "avi": "mpeg4", "webm": "libvpx"}
NAMES = ("jpg", "heic", "tif", "png")
MASK = "<EXIF_Date><EXIF_Device_Make><EXIF_Comments><EXIF_Dimensions><IPTC_Keywords><IPTC_Origin_City><IPTC_Origin_Time_Created>"
BATCH = 1000
MEMORY_KIB = 1 << 20
ODD_BYTES = (0, 1, 4, 0x7F, 0x80, 0xFE, 0xFF)


def originals(folder):
    make_bases(folder)
    tag(folder)
    kinds = ("jpg", "tif", "png", "webp", "avif", "heic", *RAW)
    pictures = [path.read_bytes() for path in sorted(folder.glob("all.*")) + sorted(folder.glob("motorola.*")) if path.suffix[1:] in kinds]
    for kind, codec in VIDEOS.items():
        run(["ffmpeg", "-v", "error", "-f", "lavfi", "-i", "testsrc2=s=16x16:r=2", "-t", "1", "-metadata", "title=T", "-c:v", codec, f"v.{kind}"], cwd=folder)
    seeds = pathlib.Path(__file__).resolve().parents[1] / "fuzz/seeds/image_fuzz"
    pictures += [path.read_bytes() for path in sorted(seeds.iterdir()) if not path.name.startswith("video-")]
    return pictures, [(folder / f"v.{kind}").read_bytes() for kind in VIDEOS]


def damaged(whole, chance):
    data = bytearray(whole)
    # Most of what readers trust stands at the start.
    reach = len(data) if chance.random() < 0.3 else min(len(data), 2000)
    for _ in range(chance.randint(1, 8)):
        data[chance.randrange(reach)] = chance.choice(ODD_BYTES) if chance.random() < 0.5 else chance.randrange(256)
    if chance.random() < 0.2:
        at = chance.randrange(reach)
        data[at:at] = data[chance.randrange(reach):][:chance.randint(1, 64)]
    return bytes(data[:chance.randrange(len(data))] if chance.random() < 0.1 else data)


def preview(folder, environment):
    command = [BRINDLE, "preview", str(folder), "photo", MASK, "--extensions", ";".join(NAMES)]
    try:
        done = subprocess.run(command, capture_output=True, env=environment, timeout=60, stdin=subprocess.DEVNULL)
    except subprocess.TimeoutExpired:
        return "takes more than a minute"
    if resource.getrusage(resource.RUSAGE_CHILDREN).ru_maxrss > MEMORY_KIB:
        return "takes more than a gigabyte"
    if done.returncode in (0, 1) and b"->" not in done.stdout:
        return "no picture has a name: were they read?"
    return None if done.returncode in (0, 1) else f"ended with {done.returncode}: {done.stderr.decode(errors='replace')[-500:]}"


def main(count=4000, seed=1):
    with tempfile.TemporaryDirectory() as top:
        top = pathlib.Path(top)
        pictures, videos = originals(top)
        environment = {**os.environ, "XDG_DATA_HOME": f"{top}/data", "XDG_CONFIG_HOME": f"{top}/config"}
        chance = random.Random(seed)
        for start in range(0, count, BATCH):
            folder = top / f"batch{start}"
            folder.mkdir()
            for i in range(BATCH):
                whole = chance.choice(videos if i % 2 else pictures)
                (folder / f"{i}.{chance.choice(NAMES)}").write_bytes(damaged(whole, chance))
            fault = preview(folder, environment)
            if fault:
                return f"files {start} to {start + BATCH} of seed {seed}: {fault}"
    print(f"{count} damaged files")
    return 0


if __name__ == "__main__":
    sys.exit(main(*map(int, sys.argv[1:])))
