#!/bin/bash
# wine-up.sh WINE KEEPER.EXE : brings Wine's server and desktop up for a series of programs and keeps them up, at every seat of
# tests/seats.json, until `wine-up.sh WINE --down`. Whoever starts the first program of a prefix also starts Wine's helpers,
# which inherit its output: ctest would wait for them for seconds. Hence nothing of the caller's is left open here.
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
wine=$1 # wine32.sh or wine64.sh
keeper=$2

up() { "$wine" tasklist | grep -q -i "$1"; }
bring_up() {
    "$wine" --make </dev/null
    exec </dev/null >/dev/null 2>&1
    "$wine" --server -p || : # stay without programs; fails if it is up already, which is as good
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
}

waited=()
for seat in $(grep -o '"id": "[0-9]*"' "$here/../tests/seats.json" | grep -o '[0-9]*'); do
    export CTEST_RESOURCE_GROUP_0_SEAT=id:$seat,slots:1
    if [ "$keeper" = --down ]; then
        "$wine" --server -k || :
    else
        (bring_up) &
        waited+=($!)
    fi
done
for one in "${waited[@]}"; do
    wait "$one"
done
