#!/bin/bash
# A system that refuses: no more threads, no file locks, no room for a file to grow, no standard descriptors.
set -u
command -v strace > /dev/null && strace -o /dev/null true 2> /dev/null || exit 77
top=$(mktemp -d)
trap 'rm -rf "$top"' EXIT
export XDG_DATA_HOME=$top/data XDG_CONFIG_HOME=$top/config ASAN_OPTIONS=detect_leaks=0
logs=$XDG_DATA_HOME/Tessalon/Brindle4/Logs
failed=0
fail() { echo "$*"; cat "$top/said"; failed=1; }

# 400 files in two folders, enough for two threads.
make_files() {
  rm -rf "$top/files"
  mkdir -p "$top/files/one" "$top/files/two"
  touch "$top"/files/{one,two}/name{1..200}.txt
}
count_new() { find "$top/files" -name 'NAME*.txt' | wc -l; }
# expect STATUS TEXT COUNT COMMAND…: it ends so, says that, and so many files have new names then.
expect() {
  local status=$1 text=$2 count=$3
  shift 3
  "$@" 2>&1 | tail -n 20 > "$top/said" # through a pipe, which no limit of a file's size concerns
  local ended=${PIPESTATUS[0]}
  [ $ended = "$status" ] || fail "$*: status $ended instead of $status"
  grep -q -- "$text" "$top/said" || fail "$*: does not say “$text”"
  ! grep -q 'should not have happened' "$top/said" || fail "$*: was taken by surprise"
  [ "$(count_new)" = "$count" ] || fail "$*: $(count_new) new names instead of $count"
}
expect_no_logs() { [ -z "$(ls -A "$logs")" ] || fail "left behind: $(ls -A "$logs")"; }
without() { strace -f -qq -o /dev/null -e trace="$1" -e inject="$1:error=$2" "${@:3}"; }
limited() { (ulimit -f "$1" && "${@:2}"); }
rename=("$BRINDLE" rename --yes "$top/files" case --upper)

make_files
expect 0 '400 files renamed' 400 without clone,clone3 EAGAIN "${rename[@]}"
expect 0 '' 0 without clone,clone3 EAGAIN "$BRINDLE" undo --yes
for number in {1..40}; do
  printf '\xFF\xD8\xFF\xE1\0\x22Exif\0\0MM\0*\0\0\0\x08\0\x01\x01\x0F\0\x02\0\0\0\x04Ace\0\0\0\0\0\xFF\xD9' > "$top/files/one/$number.jpg"
done
expect 0 'Ace' 0 without clone,clone3 EAGAIN "$BRINDLE" preview "$top/files/one" photo '<EXIF_Device_Make>_<FILEINFO_Filename>'

make_files
rm -rf "$logs"
expect 1 'no file locks' 0 without flock ENOLCK "${rename[@]}"
expect_no_logs
expect 1 'File too large' 0 limited 4 "${rename[@]}"
expect_no_logs
expect 0 '' 400 "${rename[@]}"
expect 1 'no file locks' 400 without flock ENOLCK "$BRINDLE" undo --yes
[ "$(ls "$logs" | wc -l)" = 1 ] || fail "beside the log: $(ls "$logs")"
# Undoing needs no room at all.
expect 0 '400' 0 limited 0 "$BRINDLE" undo --yes
[ "$(ls "$logs")" = Undone ] || fail "left behind: $(ls "$logs")"

# What is opened must never be taken for the terminal.
expect 0 '' 400 "${rename[@]}"
expect 1 'cannot write the output' 0 strace -f -qq -o "$top/trace" -e trace=openat bash -c 'exec "$@" >&-' - "$BRINDLE" undo --yes --json
! grep "\"$top.* = [012]\$" "$top/trace" > "$top/said" || fail "a file was opened in the place of standard output"

exit $failed
