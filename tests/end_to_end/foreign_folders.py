"""Nobody leads brindle out of the folders it was given, and what it cannot look into is told.

Folders are swapped for symbolic links, or for other folders, at moments that are certain: before a system call (strace
holds the program up there), or while it waits for an answer. The files outside must keep their names, and what brindle
says must be so. Then both at full speed, for a while.
"""
import json
import os
import pathlib
import pty
import shutil
import signal
import subprocess
import sys
import tempfile
import threading
import time

BRINDLE = os.environ["BRINDLE"]
os.environ["ASAN_OPTIONS"] = os.environ.get("ASAN_OPTIONS", "") + ":detect_leaks=0"  # which cannot be done under strace


def make(top, *paths):
    for path in paths:
        (top / path).parent.mkdir(parents=True, exist_ok=True)
        (top / path).write_text("x")


def names(folder):
    return sorted(str(path.relative_to(folder)) for path in folder.rglob("*"))


def swap(path, target):
    """The folder goes away, and a link stands in its place; without a target another folder with the same names."""
    away = path.with_name(path.name + ".away")
    path.rename(away)
    if target:
        path.symlink_to(target)
    else:
        shutil.copytree(away, path)


def tree(top):
    """A folder that brindle is given, and one beside it that nobody gave it."""
    shutil.rmtree(top, ignore_errors=True)
    make(top, "given/a", "given/sub/b", "given/sub/deep/c", "outside/b", "outside/deep/c", "outside/sub/b")
    return top / "given", top / "outside"


def run(*words, tracing=(), **options):
    traced = ["strace", "-f", "-o", "/dev/null", *tracing] if tracing else []
    return subprocess.run([*traced, BRINDLE, *words], capture_output=True, stdin=subprocess.DEVNULL,
                          encoding="utf-8", errors="backslashreplace", **options)


def objects(done):
    return [json.loads(line) for line in done.stdout.splitlines()]


def answer_when_asked(words, before_answer):
    """Runs brindle on a terminal, and says yes when `before_answer` has been done."""
    pid, terminal = pty.fork()
    if pid == 0:
        os.execv(BRINDLE, [BRINDLE, *words])
    text = b""
    while b"[y/N]" not in text:
        text += os.read(terminal, 4096)
    before_answer()
    os.write(terminal, b"y\n")
    try:
        while piece := os.read(terminal, 4096):
            text += piece
    except OSError:
        pass
    return os.waitstatus_to_exitcode(os.waitpid(pid, 0)[1]), text.decode()


def swapped_before_the_answer(top):
    swaps = [("sub", "outside"), ("", "outside"), ("sub", None)]
    for mode, places in (([], swaps + [("sub/deep", "outside/deep")]), (["--folders"], swaps)):
        for place, target in places:
            given, outside = tree(top)
            before = names(outside)
            swapped = given / place if place else given
            code, text = answer_when_asked(["rename", *mode, str(given), "suffix", "_x"],
                                           lambda: swap(swapped, top / target if target else None))
            assert code == 1, text
            assert names(outside) == before, (mode, place, names(outside))
            reason = "a symbolic link stands in the way" if target else "not the one that was listed any more"
            assert reason in text, (mode, place, text)
            in_other = [name for name in names(given) if name.startswith(("sub/", "sub_x/")) and "_x" in name[5:]]
            assert place != "sub" or not in_other, in_other


def swapped_while_gathering(top):
    """Stopped when a folder has been read to its end, and before what is in it is entered."""
    for place, swapped in (("given", "given/sub"), ("given", "given"), ("given/sub", "given/sub/deep"), ("given/sub", "given")):
        for mode in ([], ["--folders"]):
            given, outside = tree(top)
            before = names(outside)
            trace = top / "trace"
            program = subprocess.Popen(
                ["strace", "-f", "-o", trace, "-e", "trace=getdents64", "-e", "inject=getdents64:signal=STOP:when=2", "-P",
                 top / place, BRINDLE, "rename", "--yes", *mode, str(given), "suffix", "_x"],
                stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True)
            while not trace.exists() or "stopped by SIGSTOP" not in trace.read_text():
                assert program.poll() is None, "it listed nothing"
                time.sleep(0.01)
            swap(top / swapped, outside / "deep" if swapped.endswith("deep") else outside)
            os.kill(int(trace.read_text().split()[0]), signal.SIGCONT)
            told, _ = program.communicate()
            assert names(outside) == before, (place, swapped, names(outside))
            assert program.returncode == 1 and "a symbolic link stands in the way" in told, (place, swapped, mode, told)


def swapped_all_the_time(top, seconds):
    given, outside = tree(top)
    for index in range(50):
        make(given, *(f"many{index}/f{n}" for n in range(4)))
        make(outside, *(f"f{n}" for n in range(4)))
    before = names(outside)
    ends = threading.Event()

    def swap_on():
        while not ends.is_set():
            for index in range(0, 50, 3):
                place, away = given / f"many{index}", top / f"away{index}"
                try:
                    place.rename(away)
                    place.symlink_to(outside)
                    place.unlink()
                    away.rename(place)
                except OSError:
                    pass

    swapper = threading.Thread(target=swap_on)
    swapper.start()
    end = time.monotonic() + seconds
    while time.monotonic() < end:
        for words in (["--subfolders"], ["--folders"]):
            done = run("rename", "--yes", *words, str(given), "case", "--upper")
            assert done.returncode in (0, 1), done
            run("rename", "--yes", *words, str(given), "case", "--lower")
    ends.set()
    swapper.join()
    assert names(outside) == before


def what_cannot_be_read_is_told(top):
    given, _ = tree(top)
    make(given, b"odd\xff/x".decode("utf-8", "surrogateescape"))

    def refusing(*folders):
        return ["-e", "trace=getdents64", "-e", "inject=getdents64:error=EIO",
                *(word for folder in folders for word in ("-P", folder))]

    refuse = refusing(given / "sub", os.fsencode(given) + b"/odd\xff")
    done = run("preview", "--json", str(given), "suffix", "_x", tracing=refuse)
    told = [entry for entry in objects(done) if entry["type"] == "unreadable"]
    assert done.returncode == 1 and objects(done)[-1]["type"] == "summary", done
    assert {entry["reason"] for entry in told} == {"Input/output error"}, done
    assert {pathlib.Path(entry["path"]).name for entry in told} == {"sub", "odd\ufffd"}, done
    assert [("pathBytes" in entry) == ("odd" in entry["path"]) for entry in told] == [True, True]
    done = run("rename", "--yes", "--quiet", str(given), "suffix", "_x", tracing=refuse)
    assert done.returncode == 1 and done.stderr.count("Input/output error\n") == 2, done
    assert (given / "a_x").exists() and (given / "sub/b").exists()
    for index in range(30):
        make(given, f"closed{index:02}/x")
    done = run("preview", str(given), "suffix", "_x", tracing=refusing(*given.glob("closed*")))
    lines = done.stderr.splitlines()
    assert len(lines) == 11 and lines[-1] == "brindle: 20 more like that: Input/output error", done
    # An argument whose parents cannot be resolved.
    done = run("preview", "--json", str(given / "sub/b"), "suffix", "_x",
               tracing=["-e", "trace=openat2,openat", "-e", "inject=openat2:error=EIO", "-P", str(given / "sub")])
    assert done.returncode == 1 and objects(done)[0] == {
        "type": "unreadable", "path": str(given / "sub/b"), "reason": "Input/output error"}, done


def trees_of_any_depth(top):
    """The way to a folder far down is beyond what one call takes; brindle starts there, and goes on."""
    shutil.rmtree(top, ignore_errors=True)
    top.mkdir(parents=True)
    step = "d" * 100
    at = os.open(top, os.O_RDONLY)
    for _ in range(60):
        os.mkdir(step, dir_fd=at)
        below = os.open(step, os.O_RDONLY, dir_fd=at)
        os.close(at)
        at = below
    for name in ("file", "other"):
        os.close(os.open(name, os.O_CREAT | os.O_WRONLY, dir_fd=at))
    path = str(top) + 60 * ("/" + step)
    for given, expected in ((str(top), ["file_x", "other_x"]), (path + "/file_x", ["file_x_x", "other_x"])):
        done = run("rename", "--yes", "--json", given, "suffix", "_x")
        assert done.returncode == 0 and sorted(os.listdir(at)) == expected, (done.stderr, os.listdir(at))
    assert objects(done)[0]["oldPath"] == path + "/file_x"
    done = run("rename", "--yes", "--json", "file_x_x", "../" + step + "/other_x", "suffix", "y", preexec_fn=lambda: os.fchdir(at))
    assert done.returncode == 0 and sorted(os.listdir(at)) == ["file_x_xy", "other_xy"], done


def main():
    with tempfile.TemporaryDirectory() as folder:
        folder = pathlib.Path(folder).resolve()
        os.environ.update(XDG_DATA_HOME=str(folder / "data"), XDG_CONFIG_HOME=str(folder / "config"), LC_ALL="C.UTF-8")
        top = folder / "top"
        what_cannot_be_read_is_told(top)
        trees_of_any_depth(top)
        swapped_before_the_answer(top)
        swapped_while_gathering(top)
        swapped_all_the_time(top, 5)


if __name__ == "__main__":
    sys.exit(main())
