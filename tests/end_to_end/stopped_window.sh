#!/bin/bash
# A window that is stopped holds no other up: the second program says so and goes on with a window of its own.
set -u
build=$(cd "$(dirname "$BRINDLE")" && pwd)
[ -x "$build/brindle-gui" ] || exit 77
for tool in dbus-run-session dbus-send; do command -v $tool > /dev/null || exit 77; done
[ -n "${IN_SESSION:-}" ] || IN_SESSION=1 exec dbus-run-session -- bash "$0"

top=$(mktemp -d)
trap 'kill -KILL $first $second 2>/dev/null; rm -rf "$top"' EXIT
first= second=
mkdir -m 700 "$top/run"
export XDG_DATA_HOME=$top/data XDG_CONFIG_HOME=$top/config XDG_RUNTIME_DIR=$top/run QT_QPA_PLATFORM=offscreen LC_ALL=C.UTF-8
fail() { echo "$1" >&2; cat "$top"/err* >&2; exit 1; }
owned() {
  dbus-send --session --print-reply --dest=org.freedesktop.DBus / org.freedesktop.DBus.NameHasOwner \
    string:org.tessalon.Brindle | grep -q 'boolean true'
}
# Whether a command succeeds within so many tenths of a second.
within() {
  local tenths=$1; shift
  for ((i = 0; i < tenths; ++i)); do "$@" && return; sleep 0.1; done
  return 1
}

touch "$top/a" "$top/b"
"$build/brindle-gui" "$top/a" 2>"$top/err1" & first=$!
within 300 owned || fail "the first window does not come"
timeout 20 "$build/brindle-gui" "$top/b" 2>"$top/err2" || fail "a window that answers is not handed the paths"
! grep -q 'does not answer' "$top/err2" || fail "a window that answers is said not to"

kill -STOP $first
"$build/brindle-gui" "$top/b" 2>"$top/err3" & second=$!
within 150 grep -qs 'does not answer' "$top/err3" || fail "the second program waits for the stopped one"
kill -0 $second || fail "the second program has no window"
