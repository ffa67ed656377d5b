#!/bin/bash
# tools/fpc-win32.sh : prints the path of a Free Pascal compiler for 32-bit Windows with what COM programs use, and makes it first
# where there is none. Debian has the compiler for this machine and all sources, but no target Windows; its source package lacks
# the generated make files, so that what is needed is compiled here by hand.
set -euo pipefail
made_by=$(sha256sum "${BASH_SOURCE[0]}" | cut -c1-12)
version=3.2.2
source=/usr/share/fpcsrc/$version
place=${XDG_CACHE_HOME:-$HOME/.cache}/tamvelo
fpc=$place/fpc-$made_by
ready=$fpc/fpc-win32
mkdir -p "$place"
exec 9>"$place/fpc.lock" 3>&1 1>&2
flock 9
if [ ! -x "$ready" ]; then
    echo "set-up: Free Pascal for Windows, about half a minute"
    rm -rf "$place"/fpc-*
    mkdir -p "$fpc/out" "$fpc/units"
    cd "$fpc"
    cp -r $source/compiler .
    cd compiler
    fpc -v0e -FU../out -o../out/msg2inc utils/msg2inc.pp
    ../out/msg2inc "$(dpkg -L fp-compiler-$version | grep '/errore\.msg$')" msg msg # the package lacks what this makes
    rm -f ../out/*.o ../out/*.ppu
    # A compiler that is used twice need not be a quick one.
    fpc -v0e -O1 -Sg -Xs -di386 -dGDB -dBROWSERLOG -Fui386 -Fux86 -Fusystems -Fu. -Fii386 -Fix86 -Fi. -FU../out -o../out/ppcross386 pp.pas
    rm -f ../out/*.o ../out/*.ppu
    rtl=$source/rtl
    compile() {
        "$fpc/out/ppcross386" -n -v0e -Twin32 -O1 -XPi686-w64-mingw32- -FU"$fpc/units" -Fu"$fpc/units" \
            -Fi$rtl/{inc,i386,win,win/wininc,objpas,objpas/sysutils,objpas/classes,win32} \
            -Fu$rtl/{inc,i386,win,objpas,win/wininc,win32} "$@"
    }
    cd "$fpc"
    compile -Us -Sg $rtl/win32/system.pp
    for unit in $rtl/objpas/objpas.pp $rtl/inc/uuchar.pp $rtl/win32/buildrtl.pp; do
        compile -Ur "$unit"
    done
    packages=$source/packages
    compile -Ur -Fu$packages/{rtl-objpas/src/inc,rtl-objpas/src/win,winunits-base/src,fcl-base/src,fcl-registry/src} \
        -Fi$packages/{rtl-objpas/src/inc,winunits-base/src,fcl-base/src,fcl-registry/src} $packages/winunits-base/src/comobj.pp
    printf '#!/bin/sh\nexec %s/out/ppcross386 -n -Twin32 -Fu%s/units -XPi686-w64-mingw32- -FD/usr/bin -v0ew "$@"\n' "$fpc" "$fpc" >"$ready.new"
    rm -rf compiler
    chmod +x "$ready.new"
    mv "$ready.new" "$ready"
fi
echo "$ready" >&3
