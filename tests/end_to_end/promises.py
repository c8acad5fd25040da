"""What is promised is done: random small trees whose names clash on purpose, renamed in random ways.

For each tree the preview's promises are compared with what the renaming did, item by item and by inode: every item that
was promised a name has exactly that one, and nothing else has changed. Then undo, redo and undo bring all back.

    promises.py [TREES [SEED]]
"""

import json
import os
import pathlib
import random
import subprocess
import sys
import tempfile

BRINDLE = os.environ["BRINDLE"]
NAMES = ["a", "b", "c", "A", "a.t", "b.t", "c.t", "x", "x (2)", "caf\u00e9", "cafe\u0301", "1", "2", "01", ".h"]
METHODS = [["number", "--start", "1", "--mask", "0"], ["number", "--start", "1", "--prefix"],
           ["delete", "1"], ["delete", "1", "--from-end"], ["replace", "a", "b"], ["replace", "b", "c"],
           ["remove", "a"], ["prefix", "a"], ["suffix", " (2)"], ["case", "--upper"], ["case", "--lower"],
           ["extension", "--change", "t"], ["extension", "--remove"], ["insert", "."]]
CHOICES = [[], ["--permute"], ["--on-problem", "number"], ["--on-problem", "none"],
           ["--permute", "--on-problem", "number"], ["--permute", "--on-problem", "none"]]


NOBODY = 65534
# As somebody who is not allowed everything.
AS_NOBODY = ["setpriv", f"--reuid={NOBODY}", f"--regid={NOBODY}", "--clear-groups"] if os.geteuid() == 0 else []
CAN_BE_NOBODY = not AS_NOBODY or subprocess.run([*AS_NOBODY, BRINDLE, "--version"], capture_output=True).returncode == 0


class Failure(Exception):
    pass


class Tree:
    def __init__(self, top, rng):
        self.top, self.rng = pathlib.Path(top), rng
        self.files = self.top / "files"
        self.environment = {**os.environ, "XDG_DATA_HOME": str(self.top / "data"),
                            "XDG_CONFIG_HOME": str(self.top / "config"), "LC_ALL": "C.UTF-8"}
        self.folders_mode = rng.random() < 0.25
        places = [self.files, self.files / "d", self.files / "d" / "e"][:rng.randint(1, 3)]
        for place in places:
            place.mkdir(parents=True, exist_ok=True)
            for name in rng.sample(NAMES, rng.randint(2, len(NAMES))):
                path = place / name
                if not os.path.lexists(path):
                    (path.mkdir if self.folders_mode or rng.random() < 0.1 else path.touch)()
        self.user = []
        if CAN_BE_NOBODY and rng.random() < 0.2:
            self.close(rng.choice(places))

    def close(self, place):
        """A folder that must not be changed, or in which everybody changes only what is theirs."""
        if AS_NOBODY:
            self.user = AS_NOBODY
            for path in [self.top, *self.top.rglob("*")]:
                os.chown(path, NOBODY, NOBODY, follow_symlinks=False)
        if AS_NOBODY and self.rng.random() < 0.5:
            place.chmod(0o1777)
            for path in [place, *self.rng.sample(sorted(place.iterdir()), 2)]:
                os.chown(path, 0, 0)
        else:
            place.chmod(0o555)

    def inodes(self):
        found = {}
        for folder, folders, files in os.walk(self.files):
            for name in folders + files:
                path = os.path.join(folder, name)
                found[os.lstat(path).st_ino] = path
        return found

    def run(self, *arguments):
        done = subprocess.run([*self.user, BRINDLE, *arguments], env=self.environment, capture_output=True, text=True,
                              stdin=subprocess.DEVNULL)
        objects = [json.loads(line) for line in done.stdout.splitlines() if line.startswith("{")]
        return done.returncode, objects, done.stderr

    def list_file(self):
        """A permutation of the names in one folder, some of them changed; None where it holds none."""
        folder = self.rng.choice([pathlib.Path(f) for f, _, _ in os.walk(self.files)])
        names = sorted(n for n in os.listdir(folder) if (folder / n).is_dir() == self.folders_mode and n[0] != ".")
        if not names:
            return None
        wanted = self.rng.sample(names, len(names))
        wanted = [self.rng.choice(NAMES) if self.rng.random() < 0.15 else name for name in wanted]
        path = self.top / "list.txt"
        rows = [f"{old}\t{new}\t{folder}" for old, new in zip(names, wanted)]
        path.write_text("\n".join(["Filename\tNew Filename\tLocation", *rows]) + "\n")
        return ["--list", str(path)]

    def what(self):
        mode = ["--folders"] if self.folders_mode else []
        listed = self.list_file() if self.rng.random() < 0.35 else None
        if listed:
            return [*mode, *listed]
        chain = []
        for method in self.rng.sample(METHODS, self.rng.choice([1, 1, 2])):
            chain += (["then"] if chain else []) + method
        hidden = ["--hidden"] if self.rng.random() < 0.3 else []
        return [*mode, *hidden, "--sort", self.rng.choice(["name", "none"]), str(self.files), *chain]


def expect(condition, *what):
    if not condition:
        raise Failure(*what)


def followed(path, renamed):
    """Where a path leads once the folders in it have their new names."""
    for old in sorted(renamed, key=len, reverse=True):
        if path == old or path.startswith(old + "/"):
            return followed(os.path.dirname(old), renamed) + "/" + renamed[old] + path[len(old):]
    return path


def check_promises(tree, before, preview):
    items = [item for item in preview if item["type"] == "item"]
    promised = {item["path"]: item["newFilename"] for item in items
                if "problem" not in item and not item.get("reason") and item["newFilename"] not in
                ("No Changes", "No New Name", "")}
    summary = preview[-1]
    if summary["renameable"] == 0:
        promised = {}
    expect(summary["renameable"] == len(promised), "renameable", summary, promised)
    for inode, path in before.items():
        target = followed(path, promised)
        expect(tree.inodes().get(inode) == target, "promised", path, target, tree.inodes().get(inode))
    return promised


def check_tree(tree):
    arguments = [*tree.rng.choice(CHOICES), *tree.what()]
    before = tree.inodes()
    code, preview, errors = tree.run("preview", "--json", *arguments)
    expect(code in (0, 1), "preview", code, errors)
    expect(tree.inodes() == before, "preview touched the tree")
    code, renamed, errors = tree.run("rename", "--json", "--yes", *arguments)
    expect(code in (0, 1), "rename", code, errors)
    try:
        promised = check_promises(tree, before, preview)
        expect(renamed[-1]["renamed"] == len(promised), "counted", renamed[-1], promised)
        after = tree.inodes()
        if not promised:
            return
        for command, expected in (("undo", before), ("redo", after), ("undo", before)):
            code, _, errors = tree.run(command, "--yes")
            expect(code == 0, command, code, errors)
            expect(tree.inodes() == expected, command, sorted(tree.inodes().values()), sorted(expected.values()))
    except Failure as failure:
        raise Failure(arguments, *failure.args) from None


def main():
    trees = int(sys.argv[1]) if len(sys.argv) > 1 else 400
    seed = int(sys.argv[2]) if len(sys.argv) > 2 else random.SystemRandom().randrange(10**9)
    for number in range(seed, seed + trees):
        with tempfile.TemporaryDirectory(prefix="brindle-promises-") as top:
            try:
                tree = Tree(top, random.Random(number))
                check_tree(tree)
            except Failure as failure:
                print(f"FAILED tree {number}:", *failure.args, sep="\n  ")
                sys.exit(1)
            finally:
                for folder, _, _ in os.walk(top):
                    os.chmod(folder, 0o755)
    print(f"{trees} trees from {seed}: what was promised was done, undone, done again and undone")


main()
