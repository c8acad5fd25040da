"""Types the commands of a transcript and compares what comes out.

usage: run_transcript.py BRINDLE TRANSCRIPT [--update]

In a transcript a line "$ …" is a command for bash, run in a fresh folder with folders of its own for data and settings; the
lines behind it are its standard output, then "! …" its standard error, then "[N]" its exit code when that is not 0. "# …" is a
remark. Dates, times and the folder are replaced by words, and base64 is taken apart. With --update the file is written anew; read the difference.
"""
import base64
import difflib
import os
import pathlib
import re
import subprocess
import sys
import tempfile

NEUTRAL = [
    (r"\d\d-\d\d-\d{4} \d\d-\d\d-\d\d", "DATE"),
    (r"\d{4}-\d\d-\d\d[ T]\d\d:\d\d:\d\d(\.\d+)?Z?", "WHEN"),
    (r'"seconds":\d+\.\d+', '"seconds":S'),
]


def run(command, folder, environment):
    done = subprocess.run(["bash", "-c", command], cwd=folder, env=environment, capture_output=True,
                          stdin=subprocess.DEVNULL)
    out, errors = (stream.decode("utf-8", "backslashreplace") for stream in (done.stdout, done.stderr))
    text = out if not out or out.endswith("\n") else out + "\\\n"
    text += "".join(f"! {line}\n" for line in errors.splitlines())
    text = re.sub(r'(Bytes":")([^"]*)', lambda found: found[1] + repr(base64.b64decode(found[2]))[2:-1], text)
    text = text.replace(str(folder.parent), "$TOP")
    for pattern, word in NEUTRAL:
        text = re.sub(pattern, word, text)
    return text + (f"[{done.returncode}]\n" if done.returncode else "")


def play(transcript, brindle, top):
    folder = top / "here"
    folder.mkdir()
    kept = {key: os.environ[key] for key in os.environ if key.startswith(("ASAN_", "UBSAN_", "TSAN_", "LD_"))}
    environment = {**kept, "HOME": str(top), "XDG_DATA_HOME": f"{top}/data", "XDG_CONFIG_HOME": f"{top}/config", "TZ": "UTC",
                   "LC_ALL": "C.UTF-8", "PATH": f"{brindle.parent}:{pathlib.Path(__file__).parent}:{os.environ['PATH']}"}
    played = ""
    for line in transcript.splitlines():
        if line.startswith(("$ ", "# ")) or not line:
            played += line + "\n"
        if line.startswith("$ "):
            played += run(line[2:], folder, environment)
    return played


def main():
    brindle, path = pathlib.Path(sys.argv[1]).resolve(), pathlib.Path(sys.argv[2])
    expected = path.read_text(encoding="utf-8")
    with tempfile.TemporaryDirectory() as top:
        played = play(expected, brindle, pathlib.Path(top).resolve())
    if "--update" in sys.argv:
        path.write_text(played, encoding="utf-8")
    difference = list(difflib.unified_diff(expected.splitlines(), played.splitlines(), "expected", "played", lineterm=""))
    print("\n".join(difference))
    return 1 if difference else 0


if __name__ == "__main__":
    sys.exit(main())
