#!/bin/bash
# Kills brindle at every system call that matters, and has everything taken back afterwards. See crash_safety.py.
command -v strace > /dev/null && command -v python3 > /dev/null || exit 77
strace -e trace=none true 2> /dev/null || exit 77 # tracing may be forbidden here
exec python3 "$(dirname "$0")/crash_safety.py"
