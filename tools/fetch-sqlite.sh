#!/bin/bash
# Puts SQLite's single source file into the cache directory, for the demo host. SQLITE_DIR names a folder that has
# sqlite3.c and sqlite3.h already: then nothing is fetched.
set -euo pipefail
package=better-sqlite3@12.11.1 # carries the plain sources of SQLite
sha256=60d2f39a3726cd6b9021da6f4e868608d66fbb6528a9f513dc8ffcc640493422
folder=${XDG_CACHE_HOME:-$HOME/.cache}/tamvelo/sqlite

if [ -n "${SQLITE_DIR-}" ] || [ -e "$folder/sqlite3.c" ]; then
    exit 0
fi
echo "sqlite: fetching the sources (3 MB, once)..."
mkdir -p "$(dirname "$folder")"
new=$(mktemp -d "$folder.XXXXXX")
trap 'rm -rf "$new"' EXIT
(cd "$new" && npm pack --silent "$package" >/dev/null && tar -xzf ./*.tgz --strip-components=3 package/deps/sqlite3)
if ! echo "$sha256  $new/sqlite3.c" | sha256sum --check --quiet; then
    echo "sqlite: sqlite3.c is not the file expected; nothing kept" >&2
    exit 1
fi
mkdir -p "$folder"
mv "$new/sqlite3.h" "$folder/"
mv "$new/sqlite3.c" "$folder/" # last: its presence says that both are there
