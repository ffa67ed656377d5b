#!/bin/bash
# The 32-bit Wine that the tests and the demo host run under: Debian packages unpacked in the cache directory.
# No root rights, no chroot, no mounts, nothing of the machine's own is changed.
#
#   wine32.sh PROGRAM.EXE [ARG]...   run a program (an absolute path starts quickest)
#   wine32.sh --server ARG...        Wine's server of this prefix: -k ends it, -w waits for its end
#   wine32.sh --make                 make Wine and the prefix if they are missing, nothing else
#   wine32.sh --remove               delete Wine and its prefixes from the cache
#
#   TAMVELO_WINE=<program>   a 32-bit capable Wine of your own instead (another system than Debian, say)
#   TAMVELO_WINE_DPI=144     a screen of 144 dpi, with a prefix of its own. A program sees it once it asks for it:
#                            SetThreadDpiAwarenessContext(DPI_AWARENESS_CONTEXT_PER_MONITOR_AWARE_V2)
#   WINEPREFIX=<folder>      a prefix of your own; made and set up on first use
#   CTEST_RESOURCE_GROUP_0_SEAT=id:2,slots:1   as ctest says it: another prefix, for tests that run side by side
#
# Wine decides once per server whether there is a display: with DISPLAY and without it are two prefixes.
set -euo pipefail
umask 022
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
cache=${XDG_CACHE_HOME:-$HOME/.cache}/tamvelo
root=$cache/wine-1
dpi=${TAMVELO_WINE_DPI:-96}

say() { echo "wine32: $*" >&2; }

# Runs a function once even if several processes get here together: once NAME STAMP FUNCTION
once() {
    [ -e "$2" ] && return
    mkdir -p "$cache"
    (
        flock 9
        [ -e "$2" ] || "$3" 9>&- # a server left behind must not hold the lock
    ) 9>"$cache/$1.lock"
}

apt_settings() {
    local setting
    for setting in 'APT::Architecture "i386"' 'APT::Architectures { "i386"; }' 'APT::Install-Recommends "0"' \
        'APT::Sandbox::User ""' "Dir::State::status \"$1/status\"" "Dir::State::lists \"$1/lists\"" \
        "Dir::Cache \"$1\"" "Dir::Etc::sourcelist \"$1/sources\"" 'Dir::Etc::sourceparts "/dev/null"' \
        'Acquire::Languages "none"' 'Acquire::Retries "3"' 'Debug::NoLocking "1"'; do
        echo "$setting;"
    done
}

download() { # the Debian release after this machine's, from the mirror that this machine already uses
    local apt=$1 mirror
    mkdir -p "$apt/lists/partial" "$apt/archives/partial"
    : >"$apt/status" # as if nothing were installed
    mirror=$(apt-get update --print-uris | sed -n "s#^'\(.*/debian\)/*dists/.*#\1#p" | head -n 1 || :)
    [ -n "$mirror" ] || { echo "apt knows no Debian mirror" && return 1; }
    echo "deb [arch=i386 signed-by=/usr/share/keyrings/debian-archive-keyring.gpg] $mirror trixie main" >"$apt/sources"
    apt_settings "$apt" >"$apt/conf"
    export APT_CONFIG=$apt/conf
    apt-get -q update
    apt-get -qy --download-only install libfreetype6 libfontconfig1 libxext6 libxrender1 libxfixes3 libxcursor1 \
        libxi6 libxrandr2 libxinerama1 libxcomposite1 libz-mingw-w64 fonts-wine fonts-liberation
    # These without what they depend on: sound, video and cameras are four fifths of it.
    (cd "$apt/archives" && apt-get -q download libwine wine32 locales)
}

unpack() {
    local deb
    for deb in "$1"/apt/archives/*.deb; do
        dpkg-deb --fsys-tarfile "$deb" | tar -xf - -C "$1" --exclude=./usr/share/doc --exclude=./usr/share/man
    done
    rm -rf "$1/apt" "$1"/usr/x86_64-*
}

relocate() { # what the packages' own installation scripts would do, and paths that suit a folder of our own
    local usr=$1/usr dlls=$1/usr/lib/i386-linux-gnu/wine/i386-windows
    if command -v i686-w64-mingw32-strip; then
        find "$dlls" -type f -print0 | xargs -0 i686-w64-mingw32-strip -S # a third of the size
    fi
    cp "$usr/i686-w64-mingw32/lib/zlib1.dll" "$dlls/"
    printf 'Wine builtin DLL\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0' |
        dd of="$dlls/zlib1.dll" bs=1 seek=64 conv=notrunc status=none
    ln -sf wineserver32 "$usr/lib/wine/wineserver"
    ln -s . "$usr/share/wine/wine" # the server looks for ../../share/wine/wine/nls
    python3 "$here/set-interpreter.py" "$root/usr/lib/ld-linux.so.2" "$usr/lib/wine/wine" "$usr/lib/wine/wineserver32"
    mkdir "$1/locale"
    I18NPATH=$usr/share/i18n localedef -i es_ES -f UTF-8 --no-archive "$1/locale/es_ES.UTF-8"
    echo "<fontconfig><dir>$root/usr/share/fonts</dir><cachedir>$root/fontcache</cachedir></fontconfig>" \
        >"$1/fonts.conf"
}

build_root() {
    rm -rf "$root.tmp"
    mkdir -p "$root.tmp"
    download "$root.tmp/apt"
    unpack "$root.tmp"
    relocate "$root.tmp"
    rm -rf "$root"
    mv "$root.tmp" "$root"
    touch "$root/ready"
}

make_root() {
    say "fetching and unpacking Wine (110 MB, once)..."
    # A process of its own: inside a condition bash would carry on after a failed command.
    if ! "${BASH_SOURCE[0]}" --build-root >"$root.log" 2>&1 </dev/null; then
        cat "$root.log" >&2
        say "could not make Wine. Set TAMVELO_WINE to the program of a Wine that is installed, or try again."
        return 1
    fi
}

make_prefix() {
    say "making the prefix $WINEPREFIX..."
    mkdir -p "$WINEPREFIX"
    { # nothing started here may keep the caller's pipes open
        "${spanish[@]}" "$wine" wineboot -i
        "${spanish[@]}" "$wine" regedit /S "$here/wine.reg"
        "${spanish[@]}" "$wine" reg add 'HKCU\Control Panel\Desktop' /v LogPixels /t REG_DWORD /d "$dpi" /f
        "${spanish[@]}" "$server" -k || : # settings count from the next start on
        "${spanish[@]}" "$server" -w || :
    } >"$cache/prefix.log" 2>&1 </dev/null
    touch "$WINEPREFIX/tamvelo-ready"
}

case ${1:?PROGRAM.EXE, --server, --make or --remove} in
--build-root)
    build_root
    exit
    ;;
--remove)
    rm -rf "$root" "$root.tmp" "$root.log" "$cache"/prefix*
    exit
    ;;
esac

if [ -n "${TAMVELO_WINE-}" ]; then
    wine=$(command -v "$TAMVELO_WINE") || { say "TAMVELO_WINE: no program $TAMVELO_WINE" && exit 1; }
    server=$(dirname "$(readlink -f "$wine")")/wineserver
    [ -x "$server" ] || server=wineserver
    mode=own
else
    once wine "$root/ready" make_root
    wine=$root/usr/lib/wine/wine
    server=$root/usr/lib/wine/wineserver32
    mode=private
    export LD_LIBRARY_PATH=$root/usr/lib/i386-linux-gnu FONTCONFIG_FILE=$root/fonts.conf
    export XLOCALEDIR=$root/usr/share/X11/locale LOCPATH=$root/locale
fi
[ -z "${DISPLAY-}" ] || mode=$mode-display
[ "$dpi" = 96 ] || mode=$mode-$dpi
seat=${CTEST_RESOURCE_GROUP_0_SEAT-id:1,}
seat=${seat#id:}
seat=${seat%%,*}
WINEPREFIX=${WINEPREFIX:-$cache/prefix-$mode}
[ "$seat" = 1 ] || WINEPREFIX+=-$seat
export WINEPREFIX
# Spanish throughout; no questions about .NET and HTML, no menus, and a crash ends the program at once.
export WINEDEBUG=${WINEDEBUG:--all}
export WINEDLLOVERRIDES=${WINEDLLOVERRIDES:-mscoree,mshtml=;winemenubuilder.exe,winedbg.exe=d}
spanish=(env LC_ALL=es_ES.UTF-8) # not exported: this shell itself need not know the language

if [ "$1" = --server ]; then
    shift
    exec "${spanish[@]}" "$server" "$@"
fi
once "prefix-$(echo "$WINEPREFIX" | cksum | cut -d' ' -f1)" "$WINEPREFIX/tamvelo-ready" make_prefix
[ "$1" = --make ] || exec "${spanish[@]}" "$wine" "$@"
