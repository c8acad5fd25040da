#!/bin/bash
# Installs the build under test, moves the tree elsewhere and uses it from there.
set -eu
command -v cmake > /dev/null || exit 77
top=$(mktemp -d)
trap 'rm -rf "$top"' EXIT
fail() { echo "$*"; exit 1; }

cmake --install "$(dirname "$BRINDLE")" --prefix "$top/usr" > "$top/log" 2>&1 || fail "$(tail -n 5 "$top/log")"
mv "$top/usr" "$top/elsewhere"
# Neither the build's programs nor the installed ones look for libraries along a path of their own.
build=$(dirname "$BRINDLE")
for file in "$BRINDLE" "$build"/{brindle-gui,modules/*.so,tests/*_test,tests/window/*_test} "$top"/elsewhere/{bin,lib/brindle}/*; do
  [ -f "$file" ] || continue
  ! LC_ALL=C readelf -d "$file" | grep -E '\((RPATH|RUNPATH)\)' || fail "$file has a search path"
done
cd "$top/elsewhere"
for file in lib/brindle/brindle_audio.so share/man/man1/brindle.1 share/bash-completion/completions/brindle \
  share/zsh/site-functions/_brindle share/fish/vendor_completions.d/brindle.fish share/doc/brindle/{LICENSE,README.md,metadata.md}; do
  [ -s "$file" ] || fail "there is no $file"
done
head -n 1 share/man/man1/brindle.1 | grep -q '^\.TH BRINDLE' || fail "the manual page is none"
bash -n share/bash-completion/completions/brindle

# A picture and a song of nothing but their makers' names.
mkdir "$top/photos" "$top/songs"
printf '\xFF\xD8\xFF\xE1\0\x22Exif\0\0MM\0*\0\0\0\x08\0\x01\x01\x0F\0\x02\0\0\0\x04Ace\0\0\0\0\0\xFF\xD9' > "$top/photos/a.jpg"
printf 'ID3\x03\0\0\0\0\0\x0ETPE1\0\0\0\x04\0\0\0Ace' > "$top/songs/a.mp3"
export XDG_DATA_HOME=$top/data XDG_CONFIG_HOME=$top/config
ln -s "$top/elsewhere/bin/brindle" "$top/link"
# Nothing here may be loaded: each library is none, and would end the program that tried it.
mkdir "$top/trap"
touch "$top"/trap/{libpugixml.so.1,libfmt.so.9,libtag.so.1,brindle_audio.so}
ln -s . "$top/trap/modules"
cd "$top/trap"
for program in "$BRINDLE" "$top/elsewhere/bin/brindle" "$top/link"; do
  "$program" preview "$top/photos" photo '<EXIF_Device_Make>' | grep -q 'Ace\.jpg' || fail "$program does not know the maker"
  "$program" preview "$top/songs" audio '<Artist>' | grep -q 'Ace\.mp3' || fail "$program does not know the artist"
done
mkdir "$top/named"
touch "$top/named/brindle_audio.so"
LD_LIBRARY_PATH=$top/named "$top/link" preview "$top/songs" audio '<Artist>' | grep -q 'Ace\.mp3' || fail "the environment chose the module"
# A program that was copied to where others write takes no code from there.
mkdir -p "$top/copy/modules"
cp "$BRINDLE" "$top/copy"
cp "$build/modules/brindle_audio.so" "$top/copy/modules"
"$top/copy/brindle" preview "$top/songs" audio '<Artist>' | grep -q 'Ace\.mp3' || fail "the copy does not know the artist"
chmod o+w "$top/copy/modules"
! "$top/copy/brindle" preview "$top/songs" audio '<Artist>' 2> /dev/null | grep -q 'Ace\.mp3' || fail "a module from a folder that all may write in was used"
"$top/link" rename --yes --quiet "$top/photos" photo '<EXIF_Device_Make>'
[ -e "$top/photos/Ace.jpg" ] || fail "nothing was renamed"
# Only the installed module may have been at work.
rm "$top/elsewhere/lib/brindle/brindle_audio.so"
! "$top/link" preview "$top/songs" audio '<Artist>' 2> /dev/null | grep -q 'Ace\.mp3' || fail "the module of another place was used"
