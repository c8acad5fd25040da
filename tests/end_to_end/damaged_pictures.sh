#!/bin/bash
# Damaged pictures of every kind, and damaged videos that are called pictures: none may end the program.
for program in exiftool ffmpeg; do
  command -v "$program" > /dev/null || exit 77
done
for python in python3 /usr/bin/python3; do # the one that Debian's packages are for
  "$python" -c 'import mutagen' 2> /dev/null && exec "$python" -B "$(dirname "$0")/damaged_pictures.py"
done
exit 77
