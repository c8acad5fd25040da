"""As crash_safety.py, on disks that cannot rename exclusively in one step, where the program needs several.

One such disk is any disk whose renameat2 is made to fail; the other a real one, an NTFS image, where it can be mounted.
Between the steps an entry has two names, so after each kill there may be more names than before, and `recover` and
`undo` must leave none.
"""

import concurrent.futures
import contextlib
import os
import pathlib
import subprocess
import sys
import tempfile
import time

import crash_safety
from crash_safety import Tree, kill_everywhere

SCENARIOS = {
    "files": ["files", "insert", "X"],
    "folders below folders": ["--folders", "files", "insert", "X"],
}


class TwoStepTree(Tree):
    LIES = {}  # which marks may be false, and the disk still tells the truth
    ENDS = ["linkat", "renameat", "unlinkat", "mkdirat"]

    def holds_every_file(self):
        return set(self.before.values()) <= set(self.state().values())


class RefusingTree(TwoStepTree):
    DISTURBED = ["renameat2:error=EINVAL"]


@contextlib.contextmanager
def ntfs():
    """A kind of tree whose files lie on a mounted image; none where that cannot be had."""
    with tempfile.TemporaryDirectory(prefix="brindle-ntfs-") as top:
        image, folder = f"{top}/image", pathlib.Path(top) / "disk"
        folder.mkdir()
        with open(image, "wb") as file:
            file.truncate(256 << 20)
        commands = [["mkntfs", "-F", "-Q", image], ["lowntfs-3g", image, str(folder)]]
        try:
            mounted = all(subprocess.run(command, capture_output=True, check=False).returncode == 0 for command in commands)
        except FileNotFoundError:
            mounted = False
        if not mounted:
            yield None
            return

        class NtfsTree(TwoStepTree):
            LIES = {"marks lost": crash_safety.all_marks(0)}
            NAMES = [b"a.txt", b"B.txt", b"o/c", b"o/d", b"o/s/f", b"p/g/h"]

            def __init__(self, top):
                # Such disks give the number of a removed folder to the next one, which the system refuses for a blink.
                for number in range(100):
                    with contextlib.suppress(OSError):
                        return super().__init__(top, os.fsencode(folder / f"{os.path.basename(top)}-{number}/files"))
                raise OSError("no tree can be made on the disk")

        try:
            yield NtfsTree
        finally:
            subprocess.run(["umount", "-l", str(folder)], check=False)


def kill_on(disk, new_tree):
    for what, options in SCENARIOS.items():
        rename = ["rename", "--yes", "--quiet", *options]
        renamed = lambda tree, rename=rename: tree.run(*rename)
        half_way = lambda tree, rename=rename: tree.run(*rename, kill=(crash_safety.THE_END_OF + "linkat", 2))
        kill_everywhere(f"{disk}: rename, {what}", crash_safety.nothing, rename, new_tree.LIES, new_tree=new_tree)
        kill_everywhere(f"{disk}: undo, {what}", renamed, ["undo", "--yes"], new_tree.LIES, new_tree=new_tree)
        if what == "files":
            kill_everywhere(f"{disk}: recover, {what}", half_way, ["recover"], new_tree=new_tree)


def beside_one_another(new_tree):
    """On a busy disk the system asks some calls twice, and the second time says that it is all there already."""
    def rename_and_undo(_):
        with tempfile.TemporaryDirectory(prefix="brindle-busy-") as top:
            tree = new_tree(top)
            ends = [tree.run("rename", "--yes", "--quiet", *SCENARIOS["folders below folders"]), tree.run("undo", "--yes")]
            crash_safety.expect(ends == [0, 0] and tree.state() == tree.before, "busy disk", ends, tree.before, tree.state())

    with concurrent.futures.ThreadPoolExecutor(8) as pool:
        list(pool.map(rename_and_undo, range(400)))


def save_anew(what, call, moment):
    """While `call` is held up, another program saves the file that is being renamed anew, as editors do."""
    with tempfile.TemporaryDirectory(prefix="brindle-saved-") as top:
        tree = RefusingTree(top)
        held = tree.strace("-D", "-e", f"inject={call}:{moment}=500000:when=1", calls=[call])
        old, new = (os.path.join(tree.files, name) for name in (b"o/s/f", b"o/s/Xf"))
        command = [*held, crash_safety.BRINDLE, "rename", "--yes", old, "insert", "X"]
        with subprocess.Popen(command, env=tree.environment, stdout=subprocess.DEVNULL) as process:
            while process.poll() is None and not os.path.lexists(new):
                time.sleep(0.005)
            with open(old + b".new", "wb") as file:
                file.write(b"saved anew")
            os.replace(old + b".new", old)
            code = process.wait()
        kept = os.path.lexists(old) and pathlib.Path(os.fsdecode(old)).read_bytes() == b"saved anew"
        names = set(tree.state()) - set(tree.before)
        crash_safety.expect(kept, f"saved anew {what}: the new file is gone", tree.state())
        crash_safety.expect(code == 0 and tree.state().get(b"o/s/Xf") == tree.before[b"o/s/f"] and len(names) == 1,
                            f"saved anew {what}: the old one has not its new name", code, tree.state())


def main():
    save_anew("behind the link", "linkat", "delay_exit")
    save_anew("behind the last look", "renameat", "delay_enter")
    save_anew("before the old name goes", "unlinkat", "delay_enter")
    kill_on("renameat2 refused", RefusingTree)
    with ntfs() as new_tree:
        if new_tree:
            beside_one_another(new_tree)
            kill_on("NTFS", new_tree)
        else:
            print("no NTFS image can be mounted here: that part is left out")
    return crash_safety.conclusion()


if __name__ == "__main__":
    sys.exit(main())
