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

# What the files of each folder may include: whole folders (not those below them), or single headers. "app/window" and "cli"
# stand at the top, and know nothing of each other.
ALLOWED = {
    "platform": ["platform/"],
    "methods": ["platform/", "methods/", "pipeline/file_system_item.h"],
    "settings": ["platform/", "settings/", "files/meta_data_field.h"],
    "log": ["platform/", "pipeline/", "log/"],
    "pipeline": ["platform/", "methods/", "settings/", "log/", "pipeline/", "files/audio_", "files/photo_renaming.h",
                 "files/meta_data_field.h", "files/metadata_ahead.h"],
    "files": ["platform/", "methods/", "settings/", "pipeline/", "files/"],
    "app": ["platform/", "methods/", "settings/", "log/", "pipeline/", "files/", "app/"],
    "app/window": ["platform/", "methods/", "settings/", "log/", "pipeline/", "files/", "app/", "app/window/"],
    "cli": ["platform/", "methods/", "settings/", "log/", "pipeline/", "files/", "app/", "cli/"],
}
# The window may use its toolkit and the command line its JSON; the core may not even include them.
OUTSIDE_THE_CORE = ("app/window/", "cli/")
TOOLKIT_HEADER = re.compile(r"^(Q[A-Z]\w*|Qt\w*/.*|q[a-z]+\.h|(gtk|gdk|glib|gio|wx|FL|SDL\d?)([/.-].*)?)$")
TOOLKIT_LIBRARY = re.compile(r"\bQt\d?(::|[A-Z])|Qt\d?Core|\b(lib)?(gtk|gdk|glib|gio|gobject|wx_|fltk|SDL)", re.IGNORECASE)
TOOLKIT_SYMBOL = re.compile(r"\bU (Q[A-Z]\w*::|q[A-Z]\w*\(|gtk_|gdk_|g_object_|wx[A-Z])")
# Slow to compile, so they stay out of what everybody includes.
NOT_IN_HEADERS = re.compile(r"^(fmt|nlohmann)/")
GUESSING_LABEL = re.compile(r"\bnew QLabel\b|\bQLabel \w+[;({]")
INCLUDE = re.compile(r'^\s*#\s*include\s*[<"]([^>"]+)[>"]', re.MULTILINE)


def includes_of(folder):
    files = sorted(path for path in folder.rglob("*") if path.suffix in (".h", ".cpp"))
    return {str(path.relative_to(folder)): INCLUDE.findall(path.read_text(encoding="utf-8")) for path in files}


def layer_of(name):
    return "app/window" if name.startswith("app/window/") else name.split("/")[0]


def singles(allowed):
    return tuple(entry for entry in allowed if not entry.endswith("/"))


def upward_includes(includes):
    for name, targets in includes.items():
        allowed = ALLOWED.get(layer_of(name))
        if allowed is None:
            yield f"{name}: its folder has no place in the order of folders (see ALLOWED)"
            continue
        for target in targets:
            if target in includes and layer_of(target) + "/" not in allowed and not target.startswith(singles(allowed)):
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
    for path in sorted(folder.glob("app/window/**/*.cpp")):
        name = str(path.relative_to(folder))
        if name != "app/window/plain_text.cpp" and GUESSING_LABEL.search(path.read_text(encoding="utf-8")):
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
