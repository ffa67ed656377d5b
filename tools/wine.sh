#!/bin/bash
# The Wine that the tests and the demo host run under: Debian packages unpacked in the cache directory.
# No root rights, no chroot, no mounts, nothing of the machine's own is changed. Two names: wine32.sh is Windows of 32 bits,
# wine64.sh is Windows of 64 bits, which also runs programs of 32.
#
#   wine32.sh PROGRAM.EXE [ARG]...   run a program (an absolute path starts quickest)
#   wine32.sh --server ARG...        Wine's server of this prefix: -k ends it, -w waits for its end
#   wine32.sh --make                 make Wine and the prefix if they are missing, nothing else
#   wine32.sh --remove               delete Wine and its prefixes from the cache
#
#   TAMVELO_WINE=<program>   a Wine of your own instead (another system than Debian, say), with both kinds of programs
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
root=$cache/wine-2
bits=32
[ "$(basename "$0")" != wine64.sh ] || bits=64
dpi=${TAMVELO_WINE_DPI:-96}

say() { echo "wine: $*" >&2; }

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
    for setting in 'APT::Architecture "amd64"' 'APT::Architectures { "amd64"; "i386"; }' 'APT::Install-Recommends "0"' \
        'APT::Sandbox::User ""' "Dir::State::status \"$1/status\"" "Dir::State::lists \"$1/lists\"" \
        "Dir::Cache \"$1\"" "Dir::Etc::sourcelist \"$1/sources\"" 'Dir::Etc::sourceparts "/dev/null"' \
        'Acquire::Languages "none"' 'Acquire::Retries "3"' 'Debug::NoLocking "1"'; do
        echo "$setting;"
    done
}

download() { # the Debian release after this machine's, from the mirror that this machine already uses
    local apt=$1 mirror name needed=()
    mkdir -p "$apt/lists/partial" "$apt/archives/partial"
    : >"$apt/status" # as if nothing were installed
    mirror=$(apt-get update --print-uris | sed -n "s#^'\(.*/debian\)/*dists/.*#\1#p" | head -n 1 || :)
    [ -n "$mirror" ] || { echo "apt knows no Debian mirror" && return 1; }
    echo "deb [arch=amd64,i386 signed-by=/usr/share/keyrings/debian-archive-keyring.gpg] $mirror trixie main" >"$apt/sources"
    apt_settings "$apt" >"$apt/conf"
    export APT_CONFIG=$apt/conf
    apt-get -q update
    for name in freetype6 fontconfig1 xext6 xrender1 xfixes3 xcursor1 xi6 xrandr2 xinerama1 xcomposite1; do
        needed+=("lib$name:i386" "lib$name:amd64")
    done
    apt-get -qy --download-only install "${needed[@]}" libz-mingw-w64 fonts-wine fonts-liberation
    # These without what they depend on: sound, video and cameras are four fifths of it.
    (cd "$apt/archives" && apt-get -q download libwine:i386 libwine:amd64 wine32:i386 wine64:amd64 locales)
}

unpack() {
    local deb
    for deb in "$1"/apt/archives/*.deb; do
        dpkg-deb --fsys-tarfile "$deb" | tar -xf - -C "$1" --exclude=./usr/share/doc --exclude=./usr/share/man
    done
    rm -rf "$1/apt"
}

relocate() { # what the packages' own installation scripts would do, and paths that suit a folder of our own
    local usr=$1/usr machine dlls
    for machine in i386:i686 x86_64:x86_64; do
        dlls=$usr/lib/${machine%:*}-linux-gnu/wine/${machine%:*}-windows
        find "$dlls" -type f -print0 | xargs -0 "${machine#*:}-w64-mingw32-strip" -S || : # a third of the size
        cp "$usr/${machine#*:}-w64-mingw32/lib/zlib1.dll" "$dlls/"
        printf 'Wine builtin DLL\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0' |
            dd of="$dlls/zlib1.dll" bs=1 seek=64 conv=notrunc status=none
    done
    ln -sf wineserver64 "$usr/lib/wine/wineserver"
    ln -s . "$usr/share/wine/wine" # the server looks for ../../share/wine/wine/nls
    python3 "$here/set-interpreter.py" "$root/usr/lib/ld-linux.so.2" "$usr/lib/wine/wine" "$usr/lib/wine/wineserver32"
    python3 "$here/set-interpreter.py" "$root/usr/lib64/ld-linux-x86-64.so.2" "$usr/lib/wine/wine64" "$usr/lib/wine/wineserver64"
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
    say "fetching and unpacking Wine (220 MB, once)..."
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
        "${settings[@]}" "$wine" wineboot -i
        "${settings[@]}" "$wine" regedit /S "$here/wine.reg"
        "${settings[@]}" "$wine" reg add 'HKCU\Control Panel\Desktop' /v LogPixels /t REG_DWORD /d "$dpi" /f
        "${settings[@]}" "$server" -k || : # settings count from the next start on
        "${settings[@]}" "$server" -w || :
    } >"$cache/prefix.log" 2>&1 </dev/null
    touch "$WINEPREFIX/tamvelo-ready"
}

case ${1:?PROGRAM.EXE, --server, --make or --remove} in
--build-root)
    build_root
    exit
    ;;
--remove)
    rm -rf "$cache"/wine-* "$cache"/prefix*
    exit
    ;;
esac

settings=(env LC_ALL=es_ES.UTF-8) # Spanish throughout
if [ -n "${TAMVELO_WINE-}" ]; then
    wine=$(command -v "$TAMVELO_WINE") || { say "TAMVELO_WINE: no program $TAMVELO_WINE" && exit 1; }
    server=$(dirname "$(readlink -f "$wine")")/wineserver
    [ -x "$server" ] || server=wineserver
    mode=own
else
    once wine "$root/ready" make_root
    wine=$root/usr/lib/wine/wine${bits#32}
    server=$root/usr/lib/wine/wineserver$bits
    mode=private
    # Not exported: this shell itself knows neither these libraries nor the language.
    settings+=("LD_LIBRARY_PATH=$root/usr/lib/x86_64-linux-gnu:$root/usr/lib/i386-linux-gnu" "LOCPATH=$root/locale")
    export FONTCONFIG_FILE=$root/fonts.conf XLOCALEDIR=$root/usr/share/X11/locale WINESERVER=$server
fi
export WINEARCH=win$bits # what a prefix is made for, and never again
[ -z "${DISPLAY-}" ] || mode=$mode-display
[ "$dpi" = 96 ] || mode=$mode-$dpi
seat=${CTEST_RESOURCE_GROUP_0_SEAT-id:1,}
seat=${seat#id:}
seat=${seat%%,*}
WINEPREFIX=${WINEPREFIX:-$cache/prefix-$mode}
[ "$bits" = 32 ] || WINEPREFIX+=-64
[ "$seat" = 1 ] || WINEPREFIX+=-$seat
export WINEPREFIX
# No questions about .NET and HTML, no menus, and a crash ends the program at once.
export WINEDEBUG=${WINEDEBUG:--all}
export WINEDLLOVERRIDES=${WINEDLLOVERRIDES:-mscoree,mshtml=;winemenubuilder.exe,winedbg.exe=d}

if [ "$1" = --server ]; then
    shift
    exec "${settings[@]}" "$server" "$@"
fi
once "prefix-$(echo "$WINEPREFIX" | cksum | cut -d' ' -f1)" "$WINEPREFIX/tamvelo-ready" make_prefix
[ "$1" = --make ] || exec "${settings[@]}" "$wine" "$@"
