#!/bin/bash
# Photographs and songs that other programs tagged: what brindle says of them against what those programs say.
for program in exiftool exiv2 ffmpeg; do
  command -v "$program" > /dev/null || exit 77
done
for python in python3 /usr/bin/python3; do # the one that Debian's packages are for
  "$python" -c 'import mutagen' 2> /dev/null && exec "$python" -B "$(dirname "$0")/metadata_comparison.py"
done
exit 77
