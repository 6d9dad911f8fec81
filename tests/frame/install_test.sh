#!/usr/bin/env bash
# Installs the built library into a scratch prefix and builds a user's C
# program with pkg-config, a Fortran program with the module, and a CMake
# project with find_package(Zem).
set -eu
build=$1 work=$2
rm -rf "$work" && mkdir -p "$work"
cmake --install "$build" --prefix "$work/prefix" >/dev/null
export PKG_CONFIG_PATH="$work/prefix/lib/pkgconfig:$work/prefix/lib/x86_64-linux-gnu/pkgconfig"
libdir=$(pkg-config --variable=libdir zem)
cat > "$work/p.c" <<'C'
#include <stdio.h>
#include <zem.h>
int main(void) { printf("%lld\n", (long long)x02bjc()); return 0; }
C
gcc -std=c99 -Wall -Werror "$work/p.c" $(pkg-config --cflags --libs zem) -Wl,-rpath,"$libdir" -o "$work/pc"
[ "$("$work/pc")" = 53 ]
cat > "$work/p.f90" <<'F'
program p
  use zem, only: x02bjf
  print '(i0)', x02bjf()
end program p
F
gfortran "$work/p.f90" $(pkg-config --cflags --libs zem) -Wl,-rpath,"$libdir" -o "$work/pf"
[ "$("$work/pf")" = 53 ]
mkdir -p "$work/proj"
cp "$work/p.c" "$work/proj/p.c"
cat > "$work/proj/CMakeLists.txt" <<'CM'
cmake_minimum_required(VERSION 3.25)
project(p C)
find_package(Zem REQUIRED)
add_executable(p p.c)
target_link_libraries(p Zem::zem)
CM
cmake -S "$work/proj" -B "$work/proj/build" -DCMAKE_PREFIX_PATH="$work/prefix" >/dev/null
cmake --build "$work/proj/build" >/dev/null
[ "$("$work/proj/build/p")" = 53 ]
echo "installed library works with pkg-config, gfortran and find_package"
