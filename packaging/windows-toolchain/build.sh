#!/usr/bin/env bash
# Builds the C++ compiler of the Windows package: g++ 12.2 for MinGW-w64 that itself runs on Windows.
#
#   build.sh            everything, a quarter of an hour on two idle cores
#   build.sh STAGE...   some of: fetch unpack patch libraries binutils gcc assemble pack
#
# Works on Debian 12, from Debian source packages, without root; nothing is installed. It needs
#   build-essential g++-mingw-w64-x86-64-posix dpkg-dev xz-utils
# and sources in the lists of apt. The result is build/windows-toolchain/toolchain.tar.xz: one folder
# tools/ that works wherever it is unpacked. Variables: WORK (working folder), JOBS,
# SOURCE_DATE_EPOCH.
#
# Three machines have a part in such a build: this one (build), the Windows that the compiler runs on
# (host) and the Windows that it compiles for (target). Host and target are the same, and the target's
# libraries are those of Debian's cross compiler of the same version, so only the programs are built.
set -euo pipefail
export LC_ALL=C TZ=UTC
here=$(cd "$(dirname "$0")" && pwd)

work=${WORK:-$here/../../build/windows-toolchain}
jobs=${JOBS:-$(nproc)}
export SOURCE_DATE_EPOCH=${SOURCE_DATE_EPOCH:-1700000000}

windows=x86_64-w64-mingw32
machine=x86_64-linux-gnu
gcc_version=12.2.0
gcc_major=12
binutils_version=2.40
prefix=/nowhere/tools # only the places in it count: the compiler finds them from its own

mkdir -p "$work"
work=$(cd "$work" && pwd)
cd "$work"
downloads=$work/downloads
sources=$work/sources
builds=$work/build
libraries=$work/libraries
build_tools=$work/build-tools
result=$work/result/tools

# The programs of the package are static, carry no times and get a manifest that makes UTF-8 the code
# page of their arguments and file names.
compile_flags="-O2 -pipe -fno-ident"
link_flags="-static -s -Wl,--no-insert-timestamp -Wl,$work/utf8.o"

# m4, bison and flex are unpacked here and used from here.
export PATH=$build_tools/usr/bin:$PATH
export M4=$build_tools/usr/bin/m4 BISON_PKGDATADIR=$build_tools/usr/share/bison
export LD_LIBRARY_PATH=$build_tools/usr/lib/$machine${LD_LIBRARY_PATH:+:$LD_LIBRARY_PATH}

# The lists of the machine with source packages switched on, in a state of our own.
prepare_apt() {
    mkdir -p apt/lists/partial apt/cache/archives/partial apt/parts
    local file
    for file in /etc/apt/sources.list.d/*.sources; do
        [ -f "$file" ] || continue
        sed 's/^Types:.*/Types: deb deb-src/' "$file" > "apt/parts/$(basename "$file")"
    done
    : > apt/sources.list
    if [ -f /etc/apt/sources.list ]; then
        sed -n 'p; s/^deb /deb-src /p' /etc/apt/sources.list > apt/sources.list
    fi
    apt=(apt-get -qq -o Dir::Etc::sourcelist="$work/apt/sources.list"
        -o Dir::Etc::sourceparts="$work/apt/parts" -o Dir::State::Lists="$work/apt/lists"
        -o Dir::Cache="$work/apt/cache" -o APT::Sandbox::User="$(id -un)")
}

stage_fetch() {
    mkdir -p "$downloads"
    prepare_apt
    "${apt[@]}" update
    cd "$downloads"
    "${apt[@]}" download gcc-12-source binutils-source m4 libsigsegv2 bison flex
    "${apt[@]}" --download-only source gmp mpfr4 mpclib3
}

stage_unpack() {
    rm -rf "$sources" "$build_tools"
    mkdir -p "$sources" "$build_tools"
    local package
    for package in m4 libsigsegv2 bison flex; do
        dpkg -x "$downloads/$package"_*.deb "$build_tools"
    done
    for package in gcc-12-source binutils-source; do
        dpkg -x "$downloads/$package"_*.deb "$sources/debian"
    done
    cd "$sources"
    tar xf debian/usr/src/gcc-12/gcc-$gcc_version-dfsg.tar.xz
    tar xf debian/usr/src/binutils/binutils-$binutils_version.tar.xz
    for package in gmp mpfr4 mpclib3; do
        dpkg-source --no-check -x "$downloads/$package"_*.dsc "$package" > unpack.log
    done
    # The manual of gmp is not in Debian's sources, and its build asks for a makefile there.
    mkdir -p gmp/doc
    if [ ! -f gmp/doc/Makefile.in ]; then printf 'all install:\n' > gmp/doc/Makefile.in; fi
}

stage_patch() {
    cd "$sources/gcc-$gcc_version"
    # The state of Debian's compiler, whose libstdc++ this one uses.
    patch -p2 -s --no-backup-if-mismatch < ../debian/usr/src/gcc-12/patches/git-updates.diff
    # Headers and libraries come from our own tree, never from \mingw on the current drive.
    sed -i -e '/^#undef NATIVE_SYSTEM_HEADER_DIR/d' -e '/^#define NATIVE_SYSTEM_HEADER_DIR/d' \
        -e 's|"/mingw/lib/"|"/nowhere/lib/"|' gcc/config/i386/mingw32.h
    # Assembler and linker open files by the code page of the process, which the manifest makes UTF-8
    # and the C library's locale does not follow; separators are turned after the conversion.
    sed -i -e 's|cp = ___lc_codepage_func ();|cp = CP_ACP;|' \
        -e 's|ix < partPathLen; ix++|ix < partPathWSize; ix++|' \
        -e 's|IS_UNIX_DIR_SEPARATOR(filename\[ix\])|IS_UNIX_DIR_SEPARATOR(partPath[ix])|' \
        "$sources/binutils-$binutils_version/bfd/bfdio.c"
}

write_manifest() {
    cp "$here/utf8.manifest" "$work/utf8.manifest"
    echo '1 24 "utf8.manifest"' > "$work/utf8.rc"
    (cd "$work" && $windows-windres utf8.rc -O coff -o utf8.o)
}

# configure_in FOLDER SOURCE OPTIONS...: enters an empty folder and configures there. The path of the
# sources is relative, so that no folder of this machine gets into the programs.
configure_in() {
    rm -rf "${builds:?}/$1"
    mkdir -p "$builds/$1"
    cd "$builds/$1"
    "../../sources/$2/configure" --build=$machine --host=$windows --disable-shared "${@:3}" \
        > configure.log 2>&1
}

run_make() {
    nice make -j"$jobs" MAKEINFO=true "$@" >> make.log 2>&1
}

build_library() { # build_library SOURCE OPTIONS...
    configure_in "$1" "$1" --prefix="$libraries" --enable-static \
        CFLAGS="$compile_flags" LDFLAGS=-static "${@:2}"
    run_make
    run_make install
}

stage_libraries() {
    rm -rf "$libraries"
    build_library gmp CC_FOR_BUILD=gcc
    build_library mpfr4 --with-gmp="$libraries"
    build_library mpclib3 --with-gmp="$libraries" --with-mpfr="$libraries"
}

stage_binutils() {
    write_manifest
    configure_in binutils binutils-$binutils_version --target=$windows --prefix=$prefix \
        --disable-nls --disable-gdb --disable-gdbserver --disable-sim --disable-readline \
        --disable-gprof --disable-gprofng --disable-gold --disable-plugins --disable-lto \
        --disable-multilib --disable-werror --disable-libctf --without-zstd --without-debuginfod \
        --enable-deterministic-archives --with-static-standard-libraries \
        CFLAGS="$compile_flags" CXXFLAGS="$compile_flags" LDFLAGS="$link_flags"
    run_make all-gas all-ld
}

stage_gcc() {
    write_manifest
    configure_in gcc gcc-$gcc_version --target=$windows --prefix=$prefix \
        --with-native-system-header-dir=$prefix/$windows/include \
        --with-local-prefix=/nowhere/local --with-gmp="$libraries" --with-mpfr="$libraries" \
        --with-mpc="$libraries" --without-isl --without-zstd --enable-languages=c,c++ \
        --enable-threads=posix --enable-checking=release --enable-version-specific-runtime-libs \
        --with-gcc-major-version-only --with-tune=generic --disable-lto --disable-nls \
        --disable-multilib --disable-bootstrap --disable-plugin --disable-analyzer \
        --disable-werror --disable-gcov --disable-libcc1 --disable-libssp --disable-libgomp \
        --disable-libquadmath --disable-libatomic --disable-win32-registry \
        --disable-maintainer-mode --disable-dependency-tracking \
        CFLAGS="$compile_flags" CXXFLAGS="$compile_flags" LDFLAGS="$link_flags" \
        CFLAGS_FOR_BUILD="-O1 -pipe" CXXFLAGS_FOR_BUILD="-O1 -pipe"
    run_make configure-gcc
    sed -i "s|$work/||g" gcc/configargs.h # what g++ -v shows
    run_make all-gcc
}

target_libraries="mingw32 mingwex moldname msvcrt kernel32 user32 gdi32 comctl32 comdlg32 shell32
    advapi32 pthread winpthread m ole32 oleaut32 uuid shlwapi winmm version ws2_32 msimg32 winspool
    uxtheme dwmapi gdiplus imm32 setupapi"
target_objects="crt2.o crt2u.o dllcrt2.o binmode.o txtmode.o"
compiler_files="libgcc.a libgcc_eh.a libstdc++.a libsupc++.a libstdc++fs.a
    crtbegin.o crtend.o crtfastmath.o"

copy_programs() {
    local compilers=$result/libexec/gcc/$windows/$gcc_major
    mkdir -p "$result/bin" "$result/$windows/bin" "$compilers"
    install -m755 "$builds/gcc/gcc/xg++.exe" "$result/bin/g++.exe"
    install -m755 "$builds/gcc/gcc/cc1plus.exe" "$builds/gcc/gcc/collect2.exe" "$compilers/"
    install -m755 "$builds/binutils/gas/as-new.exe" "$result/$windows/bin/as.exe"
    install -m755 "$builds/binutils/ld/ld-new.exe" "$result/$windows/bin/ld.exe"
    find "$result" -name '*.exe' -exec $windows-strip {} +
}

# Static libraries only: without an import library of libstdc++ no program can come to need its DLL.
copy_target_files() {
    local debian=/usr/lib/gcc/$windows/$gcc_major-posix own=$result/lib/gcc/$windows/$gcc_major name
    mkdir -p "$own" "$result/$windows/lib"
    cp -rL "$debian/include" "$debian/include-fixed" "$own/"
    for name in $compiler_files; do cp -L "$debian/$name" "$own/"; done
    cp -rL "/usr/$windows/include" "$result/$windows/"
    for name in $target_libraries; do
        cp -L "/usr/$windows/lib/lib$name.a" "$result/$windows/lib/"
    done
    for name in $target_objects; do cp -L "/usr/$windows/lib/$name" "$result/$windows/lib/"; done
    find "$result" \( -name '*.a' -o -name '*.o' \) \
        -exec $windows-strip --strip-debug --enable-deterministic-archives {} +
    # The compiler was configured without shared libraries and would not name the unwinder, which
    # Debian keeps in a library of its own.
    cat > "$own/specs" << 'SPECS'
*libgcc:
%{mthreads:-lmingwthrd} -lmingw32 -lgcc -lgcc_eh -lmoldname -lmingwex -lmsvcrt -lkernel32

SPECS
}

copy_licences() {
    local licences=$result/share/licenses name
    mkdir -p "$licences"
    for name in COPYING3 COPYING.RUNTIME COPYING3.LIB; do
        cp "$sources/gcc-$gcc_version/$name" "$licences/"
    done
    cp /usr/share/doc/mingw-w64-common/copyright "$licences/mingw-w64.txt"
    cp "$here/SOURCES.md" "$licences/"
}

# Links, names that Windows cannot hold or tell apart, and folders of this machine in a file.
find_oddities() {
    find "$result" -type l
    find "$result" | sort -f | uniq -di
    find "$result" | grep -iE '/(con|prn|aux|nul|com[0-9]|lpt[0-9])(\.[^/]*)?$' || true
    grep -rlaF "$work" "$result" || true
}

stage_assemble() {
    rm -rf "$work/result"
    copy_programs
    copy_target_files
    copy_licences
    chmod -R u=rwX,go=rX "$result"
    local odd
    odd=$(find_oddities)
    if [ -n "$odd" ]; then
        printf 'build.sh: these cannot go into the package:\n%s\n' "$odd" >&2
        return 1
    fi
}

stage_pack() {
    tar -C "$work/result" --sort=name --owner=0 --group=0 --numeric-owner \
        --mtime="@$SOURCE_DATE_EPOCH" -cf - tools | nice xz -9e -T1 > toolchain.tar.xz.part
    mv toolchain.tar.xz.part toolchain.tar.xz
    ls -l "$work/toolchain.tar.xz"
}

stages=("$@")
if [ $# -eq 0 ]; then
    stages=(fetch unpack patch libraries binutils gcc assemble pack)
fi
for stage in "${stages[@]}"; do
    if ! declare -F "stage_$stage" > /dev/null; then
        echo "build.sh: there is no stage '$stage'" >&2
        exit 2
    fi
done
for stage in "${stages[@]}"; do
    started=$SECONDS
    cd "$work"
    "stage_$stage"
    echo "$stage: $((SECONDS - started)) s"
done
