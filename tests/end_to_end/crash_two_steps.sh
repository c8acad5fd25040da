#!/bin/bash
# Kills brindle at every step of its renaming on disks without an exclusive rename. See crash_two_steps.py.
command -v strace > /dev/null && command -v python3 > /dev/null || exit 77
strace -e trace=none true 2> /dev/null || exit 77 # tracing may be forbidden here
exec python3 "$(dirname "$0")/crash_two_steps.py"
