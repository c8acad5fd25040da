#!/bin/bash
# A redo is killed in the middle: what it had renamed by then becomes a log that is undone, or the redo is run again and
# does the rest; either way every inode comes back.
command -v strace > /dev/null && strace -e trace=none true 2> /dev/null || exit 77
set -euo pipefail
top=$(mktemp -d)
trap 'rm -r "$top"' EXIT
export XDG_DATA_HOME=$top/data XDG_CONFIG_HOME=$top/config
logs=$XDG_DATA_HOME/Tessalon/Brindle4/Logs

fail() { echo "$what, killed at $kill: $1" >&2; exit 1; }
entries() { (cd "$top/files" && find . -printf '%i %p\n' | sort); }

mkdir -p "$top"/files/{a,b}/{c,d}/{e,f}
touch "$top"/files/{a,b}/{c,d}/{e,f}/{1..4}
before=$(entries)
for what in --files --folders; do
  for kill in 1 2 5 9 13; do
    for goes_on in no yes; do
      "$BRINDLE" rename --yes --quiet $what "$top/files" insert new
      after=$(entries)
      "$BRINDLE" undo --yes --quiet
      strace -f -o /dev/null -e trace=renameat2 -e inject=renameat2:signal=KILL:when=$kill \
        "$BRINDLE" redo --yes --quiet &> /dev/null && fail "not killed" || true
      [ -n "$(ls "$logs/Undone")" ] || fail "the undone log is gone"
      if [ $goes_on = yes ]; then
        "$BRINDLE" redo --yes --quiet 2> "$top/said" || fail "$(cat "$top/said")"
        [ "$(entries)" = "$after" ] || fail "the second redo left some"
        [ -z "$(ls "$logs/Undone")" ] || fail "the undone log stayed"
      else
        "$BRINDLE" recover --quiet || fail "not recovered"
      fi
      while "$BRINDLE" undo --yes --quiet 2> /dev/null; do :; done
      [ "$(entries)" = "$before" ] || fail "not every name came back"
      rm -r "$logs"
    done
  done
done
