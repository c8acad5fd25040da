"""As crash_safety.py, for runs in which items take over each other's names: rings that are exchanged, and chains.

On disks that cannot exchange, the same goes by way of a reserved name, of which nothing may be left. Calls that fail in the
middle must leave every ring whole: all of its members under their new names, or all under their old ones.
"""

import os
import sys
import tempfile

import crash_safety
from crash_safety import Tree, expect, kill_everywhere
from crash_two_steps import RefusingTree, ntfs

# 1 to 2, 2 to 3, 3 to 1; and 6 to 7, 5 to 6, 4 to 5.
ROUND = "replace 1 @ then replace 3 1 then replace 2 3 then replace @ 2".split()
SHIFT = "then replace 6 7 then replace 5 6 then replace 4 5".split()
FILES = [b"r1", b"r2", b"r3", b"s4", b"s5", b"s6", b"o/r1", b"o/r2", b"o/r3", b"p/x"]
FOLDERS = [b"r1/r1/f", b"r1/r2/f", b"r1/r3/f", b"r2/s4/f", b"r2/s5/f", b"r3/f", b"p/x"]
SCENARIOS = {
    "rings and chains of files": (FILES, ["--permute", "files", *ROUND, *SHIFT]),
    "rings of folders below folders": (FOLDERS, ["--folders", "--permute", "files", *ROUND, *SHIFT]),
}
LIES = {"marks lost": crash_safety.all_marks(0), "marks ahead": crash_safety.all_marks(2)}


def of_names(kind, names):
    class NamedTree(kind):
        NAMES = names
    return NamedTree


def kill_on(disk, kind, lies, scenarios):
    for what, (names, options) in scenarios.items():
        new_tree = of_names(kind, names)
        rename = ["rename", "--yes", "--quiet", *options]
        renamed = lambda tree, rename=rename: tree.run(*rename)
        kill_everywhere(f"{disk}: rename, {what}", crash_safety.nothing, rename, lies, new_tree=new_tree)
        kill_everywhere(f"{disk}: undo, {what}", renamed, ["undo", "--yes"], lies, new_tree=new_tree)
        stopped = lambda tree, rename=rename: tree.run(*rename, kill=(crash_safety.THE_END_OF + kind.ENDS[0], 2))
        kill_everywhere(f"{disk}: recover, {what}", stopped, ["recover"], lies, new_tree=new_tree)


def rings_are_whole(tree):
    """Whether every ring is as it was, or has gone one name on; and nobody else has come."""
    now, folders = tree.state(), {os.path.dirname(name) for name in tree.before}
    for folder in folders:
        ring = [os.path.join(folder, name) for name in (b"r1", b"r2", b"r3")]
        was = [tree.before.get(name) for name in ring]
        if None not in was and [now.get(name) for name in ring] not in (was, was[-1:] + was[:-1]):
            return False
    return len(now) == len(tree.before)


def fail_everywhere(what, arguments, prepare):
    """Makes one renameat2 after the other fail, once and from there on."""
    names, options = SCENARIOS["rings and chains of files"]
    rename = ["rename", "--yes", "--quiet", *options]
    for ever_after in ("", "+"):
        for number in range(1, 40):
            with tempfile.TemporaryDirectory(prefix="brindle-fails-") as top:
                tree = of_names(Tree, names)(top)
                name = f"{what}, renameat2 {number}{ever_after} fails"
                prepare(tree, rename)
                record = tree.top / "trace"
                inject = f"inject=renameat2:error=EIO:when={number}{ever_after}"
                tree.call([*tree.strace("-e", inject, calls=["renameat2"], record=record), crash_safety.BRINDLE,
                           *(arguments or rename)])
                expect(tree.holds_every_file(), f"{name}: a file is gone", tree.state())
                expect(bool(ever_after) or rings_are_whole(tree), f"{name}: a ring is broken", tree.before, tree.state())
                if arguments is None or tree.state() != tree.before:  # else the log alone could not be put away
                    crash_safety.take_back(tree, name)
                if "INJECTED" not in record.read_text():
                    break


def main():
    fail_everywhere("rename", None, lambda tree, rename: None)
    fail_everywhere("undo", ["undo", "--yes"], lambda tree, rename: tree.run(*rename))
    kill_on("one step", Tree, LIES, SCENARIOS)
    few = {what: SCENARIOS[what] for what in list(SCENARIOS)[:1]}
    kill_on("renameat2 refused", RefusingTree, {}, few)
    with ntfs() as new_tree:
        if new_tree:
            kill_on("NTFS", new_tree, {}, few)
    return crash_safety.conclusion()


if __name__ == "__main__":
    sys.exit(main())
