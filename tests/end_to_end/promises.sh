# Each item that is promised a name gets it, no other changes, and undo and redo bring all back.
exec python3 "$(dirname "$0")/promises.py" 300 1
