#!/bin/bash
# tools/fpc-win32.sh ARG... : Free Pascal for 32-bit Windows, with what COM programs use. The first call makes it, in a few
# seconds: Debian has the compiler for this machine and all its sources, but no target Windows, and no make files in them, so
# that what is needed is compiled by hand.
set -euo pipefail
made_by=$(sha256sum "${BASH_SOURCE[0]}" | cut -c1-12)
version=3.2.2
source=/usr/share/fpcsrc/$version
place=${XDG_CACHE_HOME:-$HOME/.cache}/tamvelo
fpc=$place/fpc-$made_by
ready=$fpc/fpc-win32
mkdir -p "$place"
exec 9>"$place/fpc.lock"
flock 9
if [ ! -x "$ready" ]; then
    echo "set-up: Free Pascal for Windows"
    trap '[ $? -eq 0 ] || tail -5 "$fpc/log" >&2' EXIT
    find "$place" -maxdepth 1 -name "fpc-*" -mtime +7 -exec rm -rf {} +
    rm -rf "$fpc"
    mkdir -p "$fpc/out" "$fpc/units"
    (
        cd "$fpc"
        cp -r $source/compiler .
        cd compiler
        native() { ppcx64-$version -n -v0e -O1 -Fu/usr/lib/x86_64-linux-gnu/fpc/$version/units/x86_64-linux/rtl -FU../out "$@"; }
        native -o../out/msg2inc utils/msg2inc.pp
        ../out/msg2inc "$(dpkg -L fp-compiler-$version | grep '/errore\.msg$')" msg msg # the package lacks what this makes
        rm -f ../out/*.ppu ../out/*.o
        native -Sg -Xs -di386 -dGDB -dBROWSERLOG -Fu{i386,x86,systems,.} -Fi{i386,x86,.} -o../out/ppcross386 pp.pas
        rtl=$source/rtl packages=$source/packages
        cross() {
            ../out/ppcross386 -n -v0e -Twin32 -O1 -FU../units -Fu../units \
                -Fi$rtl/{inc,i386,win,win/wininc,win32,objpas,objpas/sysutils,objpas/classes} \
                -Fu$rtl/{inc,i386,win,win/wininc,win32,objpas} \
                -F{u,i}$packages/{rtl-objpas/src/inc,rtl-objpas/src/win,winunits-base/src,fcl-base/src,fcl-registry/src} "$@"
        }
        cross -Us -Sg $rtl/win32/system.pp
        for unit in $rtl/{objpas/objpas,inc/uuchar,win32/buildrtl}.pp $packages/winunits-base/src/comobj.pp; do
            cross -Ur "$unit"
        done
        cd ..
        printf '#!/bin/sh\nexec %s/out/ppcross386 -n -Twin32 -Fu%s/units -v0ew "$@"\n' "$fpc" "$fpc" >fpc-win32.new
        rm -rf compiler out/*.ppu out/*.o out/msg2inc
    ) >"$fpc/log" 2>&1
    chmod +x "$ready.new" # whole, or not there
    mv "$ready.new" "$ready"
fi
flock -u 9
exec "$ready" "$@"
