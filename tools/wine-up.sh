#!/bin/bash
# wine-up.sh KEEPER.EXE : brings Wine's server and desktop up for a series of programs and keeps them up, until
# `wine32.sh --server -k`. Whoever starts the first program of a prefix also starts Wine's helpers, which inherit its
# output: ctest would wait for them for seconds. Hence nothing of the caller's is left open here.
set -euo pipefail
wine=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)/wine32.sh
keeper=$1

"$wine" --make </dev/null
exec </dev/null >/dev/null 2>&1
"$wine" --server -p || : # stay without programs; fails if it is up already, which is as good
up() { "$wine" tasklist | grep -q -i "$1"; }
if ! up "$(basename "$keeper")"; then
    setsid "$wine" "$keeper" &
fi
for _ in {1..50}; do
    if up explorer.exe && up "$(basename "$keeper")"; then
        exit 0
    fi
    sleep 0.1
done
exit 1
