"""Fails when the house loses its shape: a toolkit in the core, an include that runs upwards, a cycle of includes,
or a label that guesses whether its text is markup.

usage: check_architecture.py SOURCE_FOLDER LIBRARY LINKED

SOURCE_FOLDER is src/, LIBRARY the built libbrindle_core.a, LINKED everything the build links with it, joined by
"|" (empty entries allowed).
"""

import pathlib
import re
import subprocess
import sys

# The rooms of the house from the ground up: each may include what stands before it. The two on top know nothing of each
# other, and the command line needs nothing of app.
ROOMS = ["platform", "text", "plist", "settings", "list", "metadata", "methods", "log", "run", "gather", "texts"]
BELOW = {room: ROOMS[:index + 1] for index, room in enumerate(ROOMS)}
BELOW |= {"app": [*ROOMS, "app"], "window": [*ROOMS, "app", "window"], "cli": [*ROOMS, "cli"]}
# The window may use its toolkit and the command line its JSON; the core may not even include them.
OUTSIDE_THE_CORE = ("window/", "cli/")
TOOLKIT_HEADER = re.compile(r"^(Q[A-Z]\w*|Qt\w*/.*|q[a-z]+\.h|(gtk|gdk|glib|gio|wx|FL|SDL\d?)([/.-].*)?)$")
TOOLKIT_LIBRARY = re.compile(r"\bQt\d?(::|[A-Z])|Qt\d?Core|\b(lib)?(gtk|gdk|glib|gio|gobject|wx_|fltk|SDL)", re.IGNORECASE)
TOOLKIT_SYMBOL = re.compile(r"\bU (Q[A-Z]\w*::|q[A-Z]\w*\(|gtk_|gdk_|g_object_|wx[A-Z])")
# Slow to compile, so they stay out of what everybody includes.
NOT_IN_HEADERS = re.compile(r"^fmt/")
GUESSING_LABEL = re.compile(r"\bnew QLabel\b|\bQLabel \w+[;({]")
INCLUDE = re.compile(r'^\s*#\s*include\s*[<"]([^>"]+)[>"]', re.MULTILINE)


def includes_of(folder):
    files = sorted(path for path in folder.rglob("*") if path.suffix in (".h", ".cpp"))
    return {str(path.relative_to(folder)): INCLUDE.findall(path.read_text(encoding="utf-8")) for path in files}


def room_of(name):
    return name.split("/")[0]


def upward_includes(includes):
    for name, targets in includes.items():
        below = BELOW.get(room_of(name))
        if below is None:
            yield f"{name}: its folder has no place in the order of rooms (see ROOMS)"
            continue
        for target in targets:
            if target in includes and room_of(target) not in below:
                yield f"{name} must not include {target}: includes run downwards"


def foreign_headers(includes):
    for name, targets in includes.items():
        if name.startswith(OUTSIDE_THE_CORE):
            continue
        for target in targets:
            if target not in includes and TOOLKIT_HEADER.match(target):
                yield f"{name} includes the toolkit header {target}"
            if name.endswith(".h") and NOT_IN_HEADERS.match(target):
                yield f"{name} includes {target}, which belongs in a .cpp file"


def guessing_labels(folder):
    for path in sorted(folder.glob("window/**/*.cpp")):
        name = str(path.relative_to(folder))
        if name != "window/text.cpp" and GUESSING_LABEL.search(path.read_text(encoding="utf-8")):
            yield f"{name} makes a label that guesses whether its text is markup: plain_label() makes one that does not"


def cycles(includes):
    done, road = set(), []

    def visit(name):
        if name in road:
            yield "includes go round: " + " -> ".join(road[road.index(name):] + [name])
        elif name not in done:
            road.append(name)
            for target in includes[name]:
                if target in includes:
                    yield from visit(target)
            road.pop()
            done.add(name)

    for name in includes:
        yield from visit(name)


def linked_toolkits(linked, library):
    for entry in linked.split("|"):
        if TOOLKIT_LIBRARY.search(entry):
            yield f"brindle_core links {entry}"
    symbols = subprocess.run(["nm", "-uC", library], check=True, capture_output=True, text=True).stdout
    if not symbols:
        yield f"{library} holds no symbols: is it the right file?"
    for line in symbols.splitlines():
        if TOOLKIT_SYMBOL.search(line.strip()):
            yield f"brindle_core uses a toolkit: {line.strip()}"


def main():
    source, library, linked = sys.argv[1:]
    includes = includes_of(pathlib.Path(source))
    faults = [*upward_includes(includes), *foreign_headers(includes), *cycles(includes), *guessing_labels(pathlib.Path(source)),
              *linked_toolkits(linked, library)]
    if not includes:
        faults.append(f"there are no sources in {source}")
    print("\n".join(faults) or f"{len(includes)} files, all in order")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
