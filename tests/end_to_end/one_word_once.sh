#!/bin/bash
# Standard error says once a run what is the matter with each of many files, names the first, and is quiet when asked.
set -u
top=$(mktemp -d)
trap 'rm -rf "$top"' EXIT
export XDG_DATA_HOME=$top/data XDG_CONFIG_HOME=$top/config
fail() { echo "$*"; exit 1; }

# Photographs with a subject code that no table holds, and a control character in it.
mkdir "$top/photos"
for number in {1..300}; do
  printf '\xFF\xD8\xFF\xED\0\x2APhotoshop 3.0\0008BIM\x04\x04\0\0\0\0\0\x0D\x1C\x02\x0C\0\x08\x1b9999999\0\xFF\xD9' > "$top/photos/$number.jpg"
done
cd "$top" || exit 1
preview=("$BRINDLE" preview --sort name photos photo 'x<IPTC_Image_Subject_Code><SEQUENCES_Number_Sequence>')
"${preview[@]}" > names 2> said || fail "$(cat said)"
grep -q '^photos/300\.jpg -> ' names || fail "the names were not made"
[ "$(grep -c 'no text for the code' said)" = 1 ] || fail "said so often: $(grep -c 'no text for the code' said)"
grep -q 'code .*9999999 (in “.*/photos/1\.jpg”)$' said || fail "the first file is not named: $(cat said)"
grep -q 'and 299 more like this$' said || fail "the others are not counted: $(cat said)"
! grep -q $'\x1b' said || fail "a control character went to the terminal"
"${preview[@]}" --quiet > /dev/null 2> said
[ ! -s said ] || fail "not quiet: $(cat said)"
