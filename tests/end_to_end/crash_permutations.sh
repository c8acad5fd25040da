#!/bin/bash
# Kills brindle while names are passed round, and makes its calls fail. See crash_permutations.py.
command -v strace > /dev/null && command -v python3 > /dev/null || exit 77
strace -e trace=none true 2> /dev/null || exit 77 # tracing may be forbidden here
exec python3 "$(dirname "$0")/crash_permutations.py"
