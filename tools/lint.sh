#!/bin/bash
# The checks that need no program run: format, direction of includes, cppcheck, clang-tidy. Wants build/release
# configured, and built once if a source includes a generated header. With --format it formats the sources instead.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
build=build/release
cache=${XDG_CACHE_HOME:-$HOME/.cache}/tamvelo/lint
mkdir -p "$cache/cppcheck"
failed=0

shipped=()
for folder in base com contract win objects environment grid frame search selection gridconfig reports dates entry demo bench; do
    [ ! -d "$folder" ] || shipped+=("$folder")
done
mapfile -t sources < <(find "${shipped[@]}" tests -name '*.cpp' -o -name '*.h')

if [ "${1-}" = --format ]; then
    exec clang-format -i "${sources[@]}"
fi

echo "lint: format of ${#sources[@]} files"
if ! findings=$(clang-format --dry-run -Werror "${sources[@]}" 2>&1); then
    echo "$findings" | sed -n 's/^\([^:]*\):[0-9].*error: .*/\1/p' | sort -u # one line a file; none: show it all
    echo "$findings" | grep -q 'clang-format-violations' || echo "$findings"
    echo "(tools/lint.sh --format puts them right)"
    failed=1
fi

echo "lint: includes"
python3 tools/storeys.py "${sources[@]}" || failed=1

if [ ${#shipped[@]} -gt 0 ]; then
    echo "lint: cppcheck"
    # unknownMacro, missingInclude: cppcheck does not read the headers of Windows
    cppcheck --quiet -j 2 --cppcheck-build-dir="$cache/cppcheck" --std=c++20 --language=c++ --platform=win32W \
        --library=windows --enable=warning,performance,portability --inline-suppr \
        --suppress=unknownMacro --suppress=missingInclude --suppress=missingIncludeSystem \
        -D_WIN32 -DUNICODE -D_UNICODE -I. --error-exitcode=1 "${shipped[@]}" || failed=1

    echo "lint: clang-tidy"
    python3 tools/tidy.py "$build" "$cache" || failed=1
fi
exit "$failed"
