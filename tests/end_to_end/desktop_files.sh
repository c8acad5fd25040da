#!/bin/bash
# Installs the build under test with its window, and checks what it tells the desktop with the desktop's own tools.
set -eu
build=$(dirname "$BRINDLE")
[ -x "$build/brindle-gui" ] || exit 77
for tool in cmake desktop-file-validate appstreamcli python3; do command -v $tool > /dev/null || exit 77; done
top=$(mktemp -d)
trap 'rm -rf "$top"' EXIT
fail() { echo "$*"; exit 1; }

cmake --install "$build" --prefix "$top/usr" > "$top/log" 2>&1 || fail "$(tail -n 5 "$top/log")"
share=$top/usr/share
id=org.tessalon.Brindle
desktop-file-validate --warn-kde "$share/applications/$id.desktop" > "$top/entry" 2>&1 || fail "$(cat "$top/entry")"
appstreamcli validate --no-net "$share/metainfo/$id.metainfo.xml" > "$top/data" 2>&1 || fail "$(cat "$top/data")"

# Every icon, content type and program that one file names is there or named by another.
python3 - "$top/usr" << 'END' || fail "the files do not fit together"
import configparser, pathlib, sys
import xml.etree.ElementTree as xml
root, name = pathlib.Path(sys.argv[1]), "org.tessalon.Brindle"
share = root / "share"
icons = {path.stem for path in share.glob("icons/hicolor/scalable/*/*.svg")}
for path in share.glob("icons/hicolor/scalable/*/*.svg"):
    assert xml.parse(path).getroot().tag.endswith("}svg"), path

def read(path):
    file = configparser.ConfigParser(interpolation=None, delimiters="=")
    file.optionxform = str
    assert file.read(path), path
    return file

entry = read(share / f"applications/{name}.desktop")["Desktop Entry"]
spaces = "{http://www.freedesktop.org/standards/shared-mime-info}"
types = {node.get("type"): node for node in xml.parse(share / f"mime/packages/{name}.xml").getroot()}
assert set(entry["MimeType"].strip(";").split(";")) == set(types), "content types"
assert not any("directory" in kind for kind in types), "folders are the file manager's"
globs = {node.find(spaces + "glob").get("pattern") for node in types.values()}
assert globs == {"*.brrule", "*.brprofile"}, globs
named = {node.find(spaces + "icon").get("name") for node in types.values()} | {entry["Icon"]}
assert named <= icons, named - icons
service = read(share / f"dbus-1/services/{name}.service")["D-BUS Service"]
assert service["Name"] == name
for program in (pathlib.Path(service["Exec"]), root / "bin" / entry["Exec"].split()[0]):
    assert program == root / "bin/brindle-gui" and program.stat().st_mode & 0o111, program
# The file managers' menus hand over paths: addresses would need a program that reads them.
for menu in ("kio/servicemenus/brindle-servicemenu.desktop", "nemo/actions/brindle.nemo_action",
             f"file-manager/actions/{name}.desktop", f"Thunar/sendto/{name}.desktop"):
    sections = read(share / menu).values()
    assert "brindle-gui %F" in [section.get("Exec") for section in sections], menu
data = xml.parse(share / f"metainfo/{name}.metainfo.xml").getroot()
assert data.findtext("id") == name and data.findtext("launchable") == f"{name}.desktop"
END
"$top/usr/bin/brindle-gui" --version | grep -q '^brindle-gui [0-9]' || fail "the installed program does not start"
