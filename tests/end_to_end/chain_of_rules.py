"""Compares saved chains with their methods run one at a time.

usage: chain_of_rules.py BRINDLE [SEED...]

A random chain of methods is saved as a rule file and previewed. Then each of its methods alone is previewed on empty files that
are called as the method before it has named them. Every item lives in a folder of its own, so that no name is ever taken.
"""
import json
import os
import pathlib
import random
import shlex
import subprocess
import sys
import tempfile

NAMES = ["IMG_0412.jpg", "a b  c.d.txt", "Café du port.JPG", "noext", ".hidden", "trailing.", "x_y_x_y.tar.gz", "ÄÖÜ ß.x", "1", "🌊🌊.png"]
TEXTS = ["a", "_", "x", " ", ".", "é", "IMG", "y_", "🌊", "1."]


def method(dice):
    text, other, number = dice.choice(TEXTS), dice.choice(TEXTS), str(dice.randint(1, 5))
    place = dice.choice([[], ["--at-end"], ["--at", number], ["--before", other], ["--after", other, "--occurrence", "2"]])
    return dice.choice([
        ["insert", text, *place],
        ["delete", number, "--at", str(dice.randint(1, 4)), *dice.choice([[], ["--from-end"]])],
        ["replace", text, other, *dice.choice([[], ["--all"]])],
        ["remove", text],
        ["prefix", text], ["suffix", text],
        ["case", dice.choice(["--lower", "--upper", "--proper"])],
        ["extension", dice.choice(["--lower", "--upper", "--remove"])], ["extension", "--change", "new"],
        ["reverse"],
        ["number", "--start", number, "--mask", "000", dice.choice(["--prefix", "--suffix"])],
        ["letter", dice.choice(["--prefix", "--suffix"])],
    ])


class Machine:
    def __init__(self, brindle, top):
        self.brindle, self.top = brindle, top
        self.environment = {**os.environ, "HOME": str(top), "XDG_DATA_HOME": f"{top}/data", "XDG_CONFIG_HOME": f"{top}/config", "LC_ALL": "C.UTF-8"}

    def run(self, *words):
        done = subprocess.run([self.brindle, *map(str, words)], env=self.environment, cwd=self.top, capture_output=True, text=True)
        if done.returncode not in (0, 1):
            sys.exit(f"{shlex.join(map(str, words))}\n{done.stderr}")
        return done.stdout

    def preview(self, tree, names, *how):
        """The new name of each item; None where it cannot be had."""
        paths = [self.top / tree / str(i) / name for i, name in enumerate(names)]
        for path in paths:
            path.parent.mkdir(parents=True)
            path.touch()
        lines = [json.loads(line) for line in self.run("preview", "--json", "--hidden", *how[:2], *paths, *how[2:]).splitlines()]
        items = [line for line in lines if line["type"] == "item"]
        assert [item["path"] for item in items] == list(map(str, paths))
        kept = [name if item["newFilename"] == "No Changes" else item["newFilename"] for name, item in zip(names, items)]
        return [None if "reason" in item else name for name, item in zip(kept, items)]


def may_be_empty(method, old, new):
    """Where nothing is left of a name a chain begins anew with the item's own; alone that looks like no change."""
    return old == new and (method[0] == "delete" or method[0] == "remove" and not old.replace(method[1], ""))


def compare(machine, seed):
    dice = random.Random(seed)
    chain = [method(dice) for _ in range(dice.randint(2, 5))]
    words = [word for each in chain for word in ("then", *each)][1:]
    machine.run("rules", "save", "--quiet", f"{seed}.brrule", *words)
    together = machine.preview(f"{seed}", NAMES, "--rules", f"{seed}.brrule")
    names, lost = list(NAMES), set()
    for step, each in enumerate(chain):
        made = machine.preview(f"{seed}-{step}", names, "--sort", "none", *each)
        lost |= {row for row, name in enumerate(made) if name is None or may_be_empty(each, names[row], name)}
        names = [name or "lost" for name in made]
    return [f"seed {seed}, {shlex.join(words)}: {NAMES[row]} -> {together[row]}, one at a time {names[row]}"
            for row in range(len(NAMES)) if row not in lost and together[row] != names[row]], len(NAMES) - len(lost)


def main():
    seeds = list(map(int, sys.argv[2:])) or range(60)
    faults, compared = [], 0
    with tempfile.TemporaryDirectory() as top:
        machine = Machine(str(pathlib.Path(sys.argv[1]).resolve()), pathlib.Path(top).resolve())
        for seed in seeds:
            found, names = compare(machine, seed)
            faults += found
            compared += names
    print("\n".join(faults), f"{compared} names compared", sep="\n")
    return 1 if faults or compared < 5 * len(seeds) else 0


if __name__ == "__main__":
    sys.exit(main())
