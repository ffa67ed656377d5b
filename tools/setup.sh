#!/bin/bash
# Installs what a fresh Debian 12 machine lacks for ./run and ./test; does nothing, quickly, when all is there.
set -euo pipefail

# what shows that it is there (a command or a file)   the package that brings it
needs='
i686-w64-mingw32-g++-posix                                        g++-mingw-w64-i686-posix
i686-w64-mingw32-gcc-posix                                        gcc-mingw-w64-i686-posix
x86_64-w64-mingw32-g++-posix                                      g++-mingw-w64-x86-64-posix
x86_64-w64-mingw32-gcc-posix                                      gcc-mingw-w64-x86-64-posix
i686-w64-mingw32-widl                                             mingw-w64-tools
g++                                                               g++
clang++                                                           clang
cmake                                                             cmake
makensis                                                          nsis
ninja                                                             ninja-build
clang-format                                                      clang-format
clang-tidy                                                        clang-tidy
cppcheck                                                          cppcheck
python3                                                           python3
git                                                               git
npm                                                               npm
ppcx64-3.2.2                                                      fp-compiler-3.2.2
/usr/share/fpcsrc/3.2.2/compiler/pp.pas                           fpc-source-3.2.2
flock                                                             util-linux
localedef                                                         libc-bin
/usr/src/googletest/CMakeLists.txt                                googletest
/usr/lib/clang/14/lib/linux/libclang_rt.fuzzer-x86_64.a           libclang-rt-14-dev
/usr/share/keyrings/debian-archive-keyring.gpg                    debian-archive-keyring
/etc/ssl/certs/ca-certificates.crt                                ca-certificates
'

missing=()
while read -r proof package; do
    if [ -n "$proof" ] && [ ! -e "$proof" ] && ! command -v "$proof" >/dev/null; then
        missing+=("$package")
    fi
done <<<"$needs"
if [ ${#missing[@]} -eq 0 ]; then
    exit 0
fi

echo "set-up: installing ${missing[*]}"
as_root=()
if [ "$(id -u)" -ne 0 ]; then
    as_root=(sudo)
fi
if ! command -v apt-get >/dev/null || { [ ${#as_root[@]} -gt 0 ] && ! command -v sudo >/dev/null; }; then
    echo "set-up: this needs apt-get and root or sudo. Please install these Debian packages, or what matches them." >&2
    exit 1
fi
"${as_root[@]}" apt-get -q update
"${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -qy --no-install-recommends install "${missing[@]}"
