#!/bin/bash
# What a person names by mistake: endless files, pipes that nobody writes to, the whole system. And what is private stays so.
set -u
top=$(mktemp -d)
trap 'rm -rf "$top"' EXIT
export XDG_DATA_HOME=$top/data XDG_CONFIG_HOME=$top/config
failed=0
fail() { echo "$*"; failed=1; }
# In kilobytes; a build under a sanitizer takes more before it does anything.
memory=4000000
(ulimit -v $memory && "$BRINDLE" --version) > /dev/null 2>&1 || memory=unlimited
# refuses STATUS TEXT COMMAND…: within seconds and little memory it ends so and says that.
refuses() {
  local said ended
  said=$(ulimit -v $memory; timeout 60 "${@:3}" 2>&1 < "${input:-/dev/null}")
  ended=$?
  [ $ended = "$1" ] || fail "${*:3}: status $ended instead of $1: $said"
  [[ $said == *"$2"* ]] || fail "${*:3}: says $said"
}

cd "$top" || exit 1
mkfifo pipe
mkdir files
touch files/a
refuses 2 'it is a device' "$BRINDLE" preview --from /dev/zero reverse
refuses 2 'it is a device' "$BRINDLE" preview -0 --from /dev/zero reverse
input=/dev/zero refuses 2 'it is a device' "$BRINDLE" preview -0 --from - reverse
refuses 2 'longer than 1 GiB' bash -c 'yes "" | "$0" preview --from - reverse' "$BRINDLE"
for words in '--list /dev/zero' '--list pipe' 'files --rules /dev/zero' 'files --rules pipe' 'files --profile pipe'; do
  refuses 2 'it is no regular file' "$BRINDLE" preview $words
done
refuses 2 'it is no regular file' "$BRINDLE" profile show pipe
refuses 2 'it is no regular file' "$BRINDLE" undo --yes ./pipe

# A pipe may have its writer yet; until then the person is told.
(sleep 2; echo "$top/files/a" > pipe) &
said=$("$BRINDLE" preview --from pipe suffix X 2>&1)
[[ $said == *'Waiting for text from pipe'*'files/a -> aX'* ]] || fail "from a pipe: $said"

# Everything on the machine, by mistake: a method that would change no name, should it ever come to that.
echo / > list
for words in '/' 'files/../../../../../..' '--from list files'; do
  refuses 2 'no-preserve-root' "$BRINDLE" rename --yes $words replace 'no such name, surely' x
done

[ $failed = 0 ] || exit 1
# What is kept is the user's alone, whatever the umask.
umask 022
"$BRINDLE" rename --yes --quiet files suffix X || fail "rename failed"
open=$(find data -perm /077 ! -type l)
[ -z "$open" ] || fail "open to others: $open"
exit $failed
