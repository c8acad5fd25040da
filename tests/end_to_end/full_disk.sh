#!/bin/bash
# A run is killed, its log's disk fills up to the last byte, and undo still brings every name back. A second disk takes the
# files; both are made of memory, in a mount namespace that goes with this script.
command -v strace > /dev/null && strace -e trace=none true 2> /dev/null || exit 77
if [ "$1" != inside ]; then
  unshare -rm true 2> /dev/null || exit 77 # namespaces may be forbidden here
  exec unshare -rm bash "$0" inside
fi
set -euo pipefail
top=$(mktemp -d)
trap 'umount "$top/data" "$top/files"; rm -r "$top"' EXIT
mkdir "$top"/{data,files}
mount -t tmpfs -o size=2m none "$top/data" || exit 77
mount -t tmpfs -o size=32m none "$top/files"
export XDG_DATA_HOME=$top/data XDG_CONFIG_HOME=$top/data/config

fill() { dd if=/dev/zero of="$XDG_DATA_HOME/rubbish" bs=4096 2> /dev/null || true; }
names() { (cd "$top/files" && ls -i); }

(cd "$top/files" && touch "a holiday picture with a name that is not short at all "{0001..1500})
before=$(names)
for kill in 2 700 1499; do
  "$BRINDLE" rename --yes --quiet "$top/files" insert "more of it & " &> /dev/null && "$BRINDLE" undo --yes --quiet
  [ "$(names)" = "$before" ] || { echo "the undo of a whole run left: $(names | head -3)"; exit 1; }
  strace -f -o /dev/null -e trace=renameat2 -e inject=renameat2:signal=KILL:when=$kill \
    "$BRINDLE" rename --yes --quiet "$top/files" insert "more of it & " && { echo "not killed"; exit 1; } || true
  fill
  "$BRINDLE" undo --yes > "$top/said" 2>&1 || { cat "$top/said"; echo "killed at $kill: the undo failed"; exit 1; }
  [ "$(names)" = "$before" ] || { echo "killed at $kill: not every name came back"; exit 1; }
  rm "$XDG_DATA_HOME/rubbish"
done

# Without room for its log, nothing is renamed.
fill
if "$BRINDLE" rename --yes --quiet "$top/files" insert X 2> "$top/said"; then echo "renamed without a log"; exit 1; fi
grep -q "nothing was renamed" "$top/said" && [ "$(names)" = "$before" ] || { cat "$top/said"; exit 1; }
[ -z "$(find "$XDG_DATA_HOME/Tessalon/Brindle4/Logs" -maxdepth 1 -type f)" ] || { echo "something was left behind"; exit 1; }
