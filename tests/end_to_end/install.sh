#!/bin/bash
# Installs the build under test, moves the tree elsewhere and uses it from there.
set -eu
command -v cmake > /dev/null || exit 77
top=$(mktemp -d)
trap 'rm -rf "$top"' EXIT
fail() { echo "$*"; exit 1; }

cmake --install "$(dirname "$BRINDLE")" --prefix "$top/usr" > "$top/log" 2>&1 || fail "$(tail -n 5 "$top/log")"
mv "$top/usr" "$top/elsewhere"
cd "$top/elsewhere"
for file in lib/brindle/brindle_{image,audio}.so share/man/man1/brindle.1 share/bash-completion/completions/brindle \
  share/zsh/site-functions/_brindle share/fish/vendor_completions.d/brindle.fish share/doc/brindle/{LICENSE,README.md,metadata.md}; do
  [ -s "$file" ] || fail "there is no $file"
done
head -n 1 share/man/man1/brindle.1 | grep -q '^\.TH BRINDLE' || fail "the manual page is none"
bash -n share/bash-completion/completions/brindle

# A picture of nothing but its maker's name.
mkdir "$top/photos"
printf '\xFF\xD8\xFF\xE1\0\x22Exif\0\0MM\0*\0\0\0\x08\0\x01\x01\x0F\0\x02\0\0\0\x04Ace\0\0\0\0\0\xFF\xD9' > "$top/photos/a.jpg"
export XDG_DATA_HOME=$top/data XDG_CONFIG_HOME=$top/config
ln -s "$top/elsewhere/bin/brindle" "$top/link"
cd /
for program in "$top/elsewhere/bin/brindle" "$top/link"; do
  "$program" preview "$top/photos" photo '<EXIF_Device_Make>' | grep -q 'Ace\.jpg' || fail "$program does not know the maker"
done
"$top/link" rename --yes --quiet "$top/photos" photo '<EXIF_Device_Make>'
[ -e "$top/photos/Ace.jpg" ] || fail "nothing was renamed"
# Only the installed modules may have been at work.
rm "$top/elsewhere/lib/brindle/brindle_image.so"
! "$top/link" fields "$top/photos/Ace.jpg" 2> /dev/null | grep -q 'Device_Make.*Ace' || fail "the module of another place was used"
