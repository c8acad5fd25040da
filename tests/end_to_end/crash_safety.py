"""Kills `brindle rename`, `undo` and `recover` at every system call that touches the disk, one after the other.

After each kill: no file may be missing, and `recover` and `undo` must bring back the same names with the same inodes and
leave nothing behind in the log folder but the undone log. The same is tried as if a disk had gone away: the marks of what was
killed are then lost, or ahead of what reached the disk.

BRINDLE names the program. CRASH_SAFETY_EVERY=N tries only every Nth call.
"""

import concurrent.futures
import os
import pathlib
import re
import struct
import subprocess
import sys
import tempfile
import time

BRINDLE = os.environ["BRINDLE"]
EVERY = int(os.environ.get("CRASH_SAFETY_EVERY", "1"))
CALLS = ("openat,rename,renameat,renameat2,link,linkat,unlink,unlinkat,mkdir,mkdirat,symlink,write,pwrite64,ftruncate,"
         "fallocate,fsync,fdatasync,mmap,flock,exit_group")
THE_END_OF = "the end of "  # a call, when the disk has done it and the program does not know yet
KILLED = -9

FILES = [b"a.txt", b"B\xff\n.txt", b"o/c", b"o/d:e", b"o/s/f", b"p/g/h"]
HARD_LINK, LINK = b"hard", b"p/link"

SCENARIOS = {
    "files of several folders": ["files", "insert", "X"],
    "folders below folders": ["--folders", "files", "insert", "X"],
    "letter case alone": ["files", "case", "--upper"],
}


class Tree:
    """A fresh tree of files, with the program's own folders beside it."""

    NAMES = FILES
    ENDS = ["renameat2"]  # the calls whose end is a moment of its own
    DISTURBED = []  # what strace does to every run

    def __init__(self, top, files=None):
        self.top = pathlib.Path(top)
        self.files = files or os.fsencode(self.top / "files")
        self.environment = {**os.environ, "XDG_DATA_HOME": str(self.top / "data"), "XDG_CONFIG_HOME": str(self.top / "config"),
                            "LC_ALL": "C.UTF-8"}
        self.logs = self.top / "data/Tessalon/Brindle4/Logs"
        for name in self.NAMES:
            path = os.path.join(self.files, name)
            os.makedirs(os.path.dirname(path), exist_ok=True)
            with open(path, "wb") as file:
                file.write(name)
        os.link(os.path.join(self.files, self.NAMES[0]), os.path.join(self.files, HARD_LINK))
        os.symlink(b"nowhere", os.path.join(self.files, LINK))
        self.before = self.state()

    def state(self):
        found = {}
        for folder, folders, names in os.walk(self.files):
            for name in folders + names:
                path = os.path.join(folder, name)
                found[os.path.relpath(path, self.files)] = os.lstat(path).st_ino
        return found

    def holds_every_file(self):
        return sorted(self.state().values()) == sorted(self.before.values())

    def call(self, command):
        return subprocess.run(command, env=self.environment, cwd=os.path.dirname(self.files), stdin=subprocess.DEVNULL, capture_output=True,
                              check=False)

    def strace(self, *options, calls=(), record="/dev/null"):
        """The command that traces, and disturbs, what stands behind it."""
        disturbed = [word for disturbance in self.DISTURBED for word in ("-e", f"inject={disturbance}")]
        traced = [*calls, *(disturbance.split(":")[0] for disturbance in self.DISTURBED)]
        return ["strace", "-f", "-o", record, "-e", "trace=" + ",".join(traced), *disturbed, *options]

    def brindle(self, *arguments):
        """An undisturbed run, but for what this disk does to every one."""
        return self.call([*(self.strace() if self.DISTURBED else []), BRINDLE, *arguments])

    def run(self, *arguments, kill=None):
        if kill is None:
            return self.brindle(*arguments).returncode
        call, number = kill
        if call.startswith(THE_END_OF):
            return self.kill_after(call.removeprefix(THE_END_OF), number, arguments)
        return self.call([*self.strace("-e", f"inject={call}:signal=KILL:when={number}", calls=[call]), BRINDLE,
                          *arguments]).returncode

    def kill_after(self, call, number, arguments):
        """Stops the program at the end of the call, which the tracer writes down, and kills it there."""
        record = self.top / "held"
        record.write_text("")
        command = [*self.strace("-D", "-e", f"inject={call}:signal=STOP:when={number}", calls=[call], record=record), BRINDLE,
                   *arguments]
        with subprocess.Popen(command, env=self.environment, cwd=os.path.dirname(self.files), stdin=subprocess.DEVNULL,
                              stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL) as process:
            while process.poll() is None and b"stopped by SIGSTOP" not in record.read_bytes():
                time.sleep(0.005)
            process.kill()
            return process.wait()

    def trace(self, *arguments):
        """The calls of an undisturbed run, as (name, number), from the first look at the program's own folders on."""
        record = self.top / "trace"
        self.call([*self.strace(calls=[CALLS, "newfstatat"], record=record), BRINDLE, *arguments])
        counts, found, started = {}, [], False
        for line in record.read_text(errors="replace").splitlines():
            match = re.match(r"(\d+) +(\w+)\(", line)
            if not match:
                continue
            started = started or "Tessalon" in line
            counts[match.groups()] = counts.get(match.groups(), 0) + 1
            call = (match[2], counts[match.groups()])
            if started and match[2] != "newfstatat" and call not in found:
                found.append(call)
        return found

    def marked(self):
        return [path for path in self.leftover_paths() if path.suffix in (".journal", ".undo")]

    def leftovers(self):
        return [path.name for path in self.leftover_paths()]

    def leftover_paths(self):
        return sorted(path for path in self.logs.iterdir() if path.name != "Undone") if self.logs.exists() else []


def set_marks(path, mark):
    """Makes every mark of a journal, or of the progress of an undo, the one given."""
    data = bytearray(path.read_bytes())
    if data[:8] == b"brinjrnl":
        entries, _, _, offset = struct.unpack_from("<4Q", data, 16)
    elif data[:8] == b"brinund2":
        entries, offset = struct.unpack_from("<Q", data, 16)[0], os.sysconf("SC_PAGESIZE")
    else:
        return
    data[offset:offset + entries] = bytes([mark]) * entries
    path.write_bytes(data)


failures = []


def expect(condition, what, *details):
    if not condition:
        failures.append(what)
        print("FAILED:", what, *details, sep="\n  ")


def take_back(tree, what):
    """Recovers and undoes; all must be as it was."""
    recovered = tree.brindle("recover")
    expect(recovered.returncode == 0, f"{what}: recover", recovered)
    if tree.leftovers():
        undone = tree.brindle("undo", "--yes")
        expect(undone.returncode == 0, f"{what}: undo", undone)
    expect(tree.state() == tree.before, f"{what}: the names are not as before", tree.before, tree.state())
    expect(not tree.leftovers(), f"{what}: something is left behind", tree.leftovers())


def nothing(_):
    pass


def all_marks(mark):
    def repair(tree):
        for path in tree.marked():
            set_marks(path, mark)
    return repair


def attempt(what, prepare, arguments, kill, repair, new_tree):
    """Returns whether the kill hit, and whether marks were left for `repair` to change."""
    with tempfile.TemporaryDirectory(prefix="brindle-crash-") as top:
        tree = new_tree(top)
        prepare(tree)
        code = tree.run(*arguments, kill=kill)
        expect(tree.holds_every_file(), f"{what}: a file is gone", tree.state())
        had_marks = bool(tree.marked())
        repair(tree)
        take_back(tree, what)
        return code == KILLED, had_marks


def kill_everywhere(what, prepare, arguments, repairs=None, new_tree=Tree):
    with tempfile.TemporaryDirectory(prefix="brindle-crash-") as top:
        tree = new_tree(top)
        prepare(tree)
        calls = tree.trace(*arguments)
    calls += [(THE_END_OF + call, number) for call, number in calls if call in new_tree.ENDS]
    calls = calls[::EVERY]

    def kill_at(call):
        name = f"{what}, killed at {call[0]} {call[1]}"
        killed, had_marks = attempt(name, prepare, arguments, call, nothing, new_tree)
        for repair in repairs or {} if had_marks else {}:
            attempt(f"{name}, {repair}", prepare, arguments, call, repairs[repair], new_tree)
        return killed

    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        kills = sum(pool.map(kill_at, calls))
    # Another thread may have come first, or the clock: then there are a few calls less.
    expect(kills >= max(0.9 * len(calls) - 1, 10 / EVERY), f"{what}: not killed", kills, calls)
    print(f"{what}: killed at {kills} calls", flush=True)


def main():
    lies = {"marks lost": all_marks(0), "marks ahead": all_marks(2)}
    for what, options in SCENARIOS.items():
        rename = ["rename", "--yes", "--quiet", *options]
        kill_everywhere(f"rename, {what}", nothing, rename, lies)
        kill_everywhere(f"undo, {what}", lambda tree, rename=rename: tree.run(*rename), ["undo", "--yes"], lies)
        crash = lambda tree, rename=rename: tree.run(*rename, kill=("renameat2", 2))
        kill_everywhere(f"recover, {what}", crash, ["recover"], lies)
    return conclusion()


def conclusion():
    print(f"{len(failures)} failures")
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main())
