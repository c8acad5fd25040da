"""bench/run [SIZE...]: measures listing, preview, apply and undo of brindle beside limit programs and other renamers.

Every program puts "x" before the name of each file of the same tree. Repetitions are interleaved: each program once, then
each again; what is shown is the median. Prints one table, keeps the raw figures in build/bench/.
"""

import argparse
import json
import os
import pathlib
import platform
import shutil
import statistics
import subprocess
import sys
import tempfile
import time

import metadata

TOP = pathlib.Path(__file__).resolve().parent.parent
BUILD = TOP / "build" / "bench"
LIMITS = BUILD / "bench"
BRINDLE = str(BUILD / "brindle")
PYTHON_LOOP = str(TOP / "bench" / "limits" / "rename_loop.py")
PERL_RENAME = shutil.which("file-rename") or shutil.which("rename")
METHOD = ["--set", "selectedTab=1", "--set", "insertDeleteInsert=x"]
REFERENCE = {"list": "getdents64 alone", "preview": "floor", "apply": "floor", "undo": "rename loop alone"}
# By name: files a folder (0: no subfolders), what the table says, and mmv's two patterns.
SHAPES = {"flat": (0, "one folder", "'*' 'x#1'"), "folders": (1000, "1,000 a folder", "'*/*' '#1/x#2'")}


def limit(name):
    return str(LIMITS / f"limit_{name}")


def in_folder(tree, script):
    """A shell command in the tree: how the other renamers are meant to be used."""
    return ["sh", "-c", f'cd "$0" && {script}', tree]


def mmv(tree, shape, options=""):
    return in_folder(tree, f"mmv {options} {SHAPES[shape][2]}")


def perl_rename(tree, options=""):
    return in_folder(tree, f"find . -type f -print0 | {PERL_RENAME} -0 -d {options} 's/^/x/'")


def python_loop(tree, mode):
    return ["/usr/bin/python3", PYTHON_LOOP, mode, tree]


def programs(work, tree="", shape="flat"):
    """The programs that do a kind of work, by the name they have in the table."""
    table = {
        "list": {
            "getdents64 alone": [limit("list"), tree],
            "brindle, gathering": [str(LIMITS / "gather_only"), tree],
            "find": ["find", tree],
        },
        "preview": {
            "floor": [limit("floor"), "preview", tree],
            "existence test alone": [limit("exists"), tree],
            "brindle preview": [BRINDLE, "preview", "--no-color", tree, *METHOD],
            "mmv -n": mmv(tree, shape, "-n"),
            "rename -n (Perl)": perl_rename(tree, "-n"),
            "Python loop": python_loop(tree, "preview"),
        },
        "apply": {
            "floor": [limit("floor"), "rename", tree],
            "rename loop alone": [limit("rename"), tree],
            "brindle rename": [BRINDLE, "rename", "--yes", "--quiet", tree, *METHOD],
            "mmv": mmv(tree, shape),
            "rename (Perl)": perl_rename(tree),
            "Python loop": python_loop(tree, "rename"),
        },
        "undo": {
            "rename loop alone": [limit("rename"), "--back", tree],
            "brindle undo": [BRINDLE, "undo", "--yes", "--quiet"],
        },
    }[work]
    present = {"mmv": shutil.which("mmv"), "rename": PERL_RENAME}
    return {name: command for name, command in table.items() if present.get(name.split()[0], True)}


class Bench:
    def __init__(self, folder, only):
        self.folder = folder
        self.only = only
        self.samples = {}  # (shape, size, work, program) -> [(seconds, peak in KiB)]
        self.idle_peaks = {}  # (work, program) -> peak in KiB on an empty folder
        data = folder / "xdg"
        self.environment = dict(os.environ, XDG_DATA_HOME=str(data), XDG_CONFIG_HOME=str(folder / "config"))

    def measure(self, command):
        output = subprocess.run([limit("measure"), *command], check=True, capture_output=True, text=True, env=self.environment)
        seconds, peak, code = output.stdout.split()
        return float(seconds), int(peak), int(code), output.stderr

    def timed(self, key, command):
        os.sync()  # what the program before left to be written is not this one's
        seconds, peak, code, complaint = self.measure(command)
        if code != 0:
            sys.exit(f"{' '.join(command)}\nended with {code}: {complaint.strip()[-500:]}")
        self.samples.setdefault(key, []).append((seconds, peak))

    def count(self, *command):
        return int(subprocess.run(command, check=True, capture_output=True, text=True).stdout)

    def expect(self, what, found, wanted):
        if found != wanted:
            sys.exit(f"{what}: {found} files, expected {wanted}. The tree in {self.folder} is not to be trusted any more.")

    def measure_idle(self):
        """What each program needs before its first file."""
        empty = self.folder / "empty"
        empty.mkdir()
        for work in REFERENCE:
            for name, command in programs(work, str(empty)).items():
                self.idle_peaks[work, name] = min(self.measure(command)[1] for _ in range(3))

    def forget_logs(self):
        shutil.rmtree(self.folder / "xdg", ignore_errors=True)

    def read_only(self, shape, size, work, tree, repeat):
        for _ in range(repeat):
            for name, command in programs(work, tree, shape).items():
                self.timed((shape, size, work, name), command)

    def apply_and_undo(self, shape, size, tree, repeat):
        back = programs("undo", tree)
        for _ in range(repeat):
            for name, command in programs("apply", tree, shape).items():
                self.timed((shape, size, "apply", name), command)
                self.expect(f"after {name}", self.count(limit("list"), tree, "x"), size)
                undo = "brindle undo" if name.startswith("brindle") else "rename loop alone"
                # Only after its own kind of run: a folder renamed by another program is laid out differently on disk.
                if name in ("brindle rename", "rename loop alone"):
                    self.timed((shape, size, "undo", undo), back[undo])
                else:
                    self.count(limit("rename"), "--back", tree)
                self.expect(f"after undoing {name}", self.count(limit("list"), tree, "x"), 0)
                self.forget_logs()

    def run(self, shape, size, repeat):
        tree = str(self.folder / f"{shape}-{size}")
        subprocess.run([limit("make_tree"), tree, str(size), str(SHAPES[shape][0])], check=True)
        for work in ("list", "preview"):
            if work in self.only:
                progress(f"{size:,} files, {SHAPES[shape][1]}: {work}")
                self.read_only(shape, size, work, tree, repeat)
        if "apply" in self.only:
            progress(f"{size:,} files, {SHAPES[shape][1]}: apply and undo")
            self.apply_and_undo(shape, size, tree, repeat)
        shutil.rmtree(tree)

    def start_up(self, repeat=41):
        for _ in range(repeat):
            for name, command in (("an empty program", [limit("nothing")]), ("brindle --version", [BRINDLE, "--version"])):
                seconds, peak, _, _ = self.measure(command)
                self.samples.setdefault(("-", 0, "start", name), []).append((seconds, peak))


def progress(text):
    if sys.stderr.isatty():
        print(f"\r\033[K{text} ...", end="", file=sys.stderr, flush=True)


def median(samples, column=0):
    return statistics.median(sample[column] for sample in samples)


def cell(bench, key, reference_key):
    samples = bench.samples.get(key)
    if not samples:
        return " " * 28
    shape, size, work, name = key
    seconds = median(samples)
    ratio = seconds / median(bench.samples[reference_key])
    per_item = max(0, median(samples, 1) - bench.idle_peaks[work, name]) * 1024 / size
    return f"{seconds / size * 1e6:9.3f} {ratio:8.2f} {per_item:8.0f}  "


def table(bench, sizes, shapes):
    lines = ["".ljust(36) + "".join(f"{f'{size:,} files':>26}  " for size in sizes)]
    lines.append("".ljust(36) + f"{'µs/file':>9} {'ratio':>8} {'B/file':>8}  " * len(sizes))
    for work in REFERENCE:
        for shape in shapes:
            names = [name for name in programs(work) if any((shape, size, work, name) in bench.samples for size in sizes)]
            if names:
                lines.append(f"{work}, {SHAPES[shape][1]}")
            for name in names:
                cells = [cell(bench, (shape, size, work, name), (shape, size, work, REFERENCE[work])) for size in sizes]
                lines.append(f"  {name:<34}" + "".join(cells))
    return "\n".join(line.rstrip() for line in lines)


def start_up_line(bench):
    empty, brindle = (median(bench.samples["-", 0, "start", name]) for name in ("an empty program", "brindle --version"))
    return f"brindle --version: {brindle * 1e3:.2f} ms, {brindle / empty:.2f} times an empty C++ program ({empty * 1e3:.2f} ms)"


def growth_lines(bench, sizes, shapes):
    """Time an item at the largest size against the next smaller one: 1.00 is perfectly linear."""
    for small, large in zip(sizes[-2:-1], sizes[-1:]):
        for shape in shapes:
            parts = []
            for work in REFERENCE:
                for name in programs(work):
                    keys = [(shape, size, work, name) for size in (small, large)]
                    if name.startswith("brindle") and all(key in bench.samples for key in keys):
                        parts.append(f"{work} {median(bench.samples[keys[1]]) / large / (median(bench.samples[keys[0]]) / small):.2f}")
            if parts:
                yield f"growth an item from {small:,} to {large:,} files, {SHAPES[shape][1]}: {', '.join(parts)}"


def machine(folder):
    cpu = next((line.split(":")[1].strip() for line in open("/proc/cpuinfo") if line.startswith("model name")), "?")
    disk = subprocess.run(["stat", "-f", "-c", "%T", folder], capture_output=True, text=True).stdout.strip()
    return {"cpu": cpu, "cores": os.cpu_count(), "kernel": platform.release(), "disk": disk, "date": time.strftime("%F %T")}


def save(bench, about):
    rows = [dict(zip(("shape", "size", "work", "program"), key), seconds=[s for s, _ in samples], peak_kib=[p for _, p in samples],
                 idle_peak_kib=bench.idle_peaks.get((key[2], key[3]))) for key, samples in bench.samples.items()]
    path = BUILD / time.strftime("run-%Y%m%d-%H%M%S.json")
    path.write_text(json.dumps({"machine": about, "rows": rows}, indent=1))
    return path


def repeat_for(size, asked):
    return asked or (11 if size <= 10_000 else 5 if size <= 100_000 else 3)


def options():
    parser = argparse.ArgumentParser(prog="bench/run", description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("sizes", nargs="*", type=int, default=[10_000, 100_000, 1_000_000], help="numbers of files")
    parser.add_argument("--dir", type=pathlib.Path, default=BUILD, help="where to make the trees (default: build/bench)")
    parser.add_argument("--repeat", type=int, help="repetitions (default: 11, 5 and 3 as the trees grow)")
    parser.add_argument("--shape", choices=SHAPES, action="append", help="only this shape of tree")
    parser.add_argument("--only", choices=("list", "preview", "apply", "metadata"), action="append", help="only this work (apply brings undo)")
    parser.add_argument("--photos", type=int, default=2000, help="photographs, and songs, for the work metadata (default: 2000)")
    return parser.parse_args()


def main():
    asked = options()
    sizes, shapes = sorted(set(asked.sizes)), asked.shape or list(SHAPES)
    with tempfile.TemporaryDirectory(prefix="trees-", dir=asked.dir) as folder:
        about = machine(folder)
        bench = Bench(pathlib.Path(folder), asked.only or ["list", "preview", "apply", "metadata"])
        metadata_lines = []
        if "metadata" in bench.only:
            progress("photographs and songs")
            metadata_lines = metadata.run(bench, BRINDLE, limit("headers"), asked.photos, asked.repeat or 5)
        if bench.only != ["metadata"]:
            bench.measure_idle()
            bench.start_up()
            for size in sizes:
                for shape in shapes:
                    bench.run(shape, size, repeat_for(size, asked.repeat))
    progress("")
    if sys.stderr.isatty():
        print("\r\033[K", end="", file=sys.stderr)
    print(f"{about['cpu']}, {about['cores']} cores, Linux {about['kernel']}, {about['disk']}, {about['date']}")
    print("ratio: to the first line of each group; B/file: peak memory beyond that of an empty folder\n")
    if bench.samples:
        print(table(bench, sizes, shapes), start_up_line(bench), *growth_lines(bench, sizes, shapes), sep="\n")
    print(*metadata_lines, sep="\n")
    print(f"raw figures: {save(bench, about).relative_to(TOP)}")


if __name__ == "__main__":
    main()
