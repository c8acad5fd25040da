# A chain names as its methods do one after the other.
exec python3 "$(dirname "$0")/chain_of_rules.py" "$BRINDLE"
