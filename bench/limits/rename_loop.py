"""rename_loop.py preview|rename FOLDER: the loop people write in Python, with the check that keeps it from replacing."""

import os
import sys

for folder, _, files in os.walk(sys.argv[2]):
    for name in files:
        new = os.path.join(folder, "x" + name)
        if os.path.lexists(new):
            continue
        if sys.argv[1] == "rename":
            os.rename(os.path.join(folder, name), new)
        else:
            print(name, "->", new)
