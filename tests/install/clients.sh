#!/usr/bin/env bash
# clients.sh <prefix> <work>
# Builds the C, C++ and Fortran programs of this folder against the library
# installed under <prefix>, once with pkg-config and once as a CMake project
# with find_package(Zem), runs each and checks what it prints: the same line
# from all six, with the known root and integral.
# Needs: gcc, g++, gfortran, pkg-config, cmake.
set -eu
prefix=$1 work=$2
here=$(cd "$(dirname "$0")" && pwd)
rm -rf "$work" && mkdir -p "$work"
export PKG_CONFIG_PATH=$(ls -d "$prefix"/lib/*/pkgconfig "$prefix"/lib/pkgconfig 2>/dev/null | tr '\n' ':')
pc="$(pkg-config --cflags --libs zem)"
# With a prefix of /usr (a Debian package unpacked somewhere else), zem.pc
# rightly gives no run path: the test supplies the library path itself.
libdir=$(pkg-config --variable=libdir zem)
run_env=()
case "$pc" in *-rpath*) ;; *) run_env=(env LD_LIBRARY_PATH="$libdir") ;; esac
gcc -std=c99 -Wall -Wextra -pedantic -Werror "$here/user.c" $pc -o "$work/user_c"
g++ -std=c++17 -Wall -Wextra -Werror "$here/user.cpp" $pc -o "$work/user_cpp"
(cd "$work" && gfortran -Wall -Werror -Wno-unused-dummy-argument "$here/user.f90" $pc -o "$work/user_f")
mkdir -p "$work/proj"
cat > "$work/proj/CMakeLists.txt" <<CM
cmake_minimum_required(VERSION 3.25)
project(user C CXX Fortran)
find_package(Zem REQUIRED)
foreach(lang c cpp f90)
  string(REPLACE f90 f suffix \${lang})
  add_executable(user_\${suffix} $here/user.\${lang})
  target_link_libraries(user_\${suffix} Zem::zem)
endforeach()
CM
cmake -S "$work/proj" -B "$work/proj/build" -DCMAKE_PREFIX_PATH="$prefix" >/dev/null
cmake --build "$work/proj/build" >/dev/null
expected="root 0.56714329 integral 1.00000000 mean"
first=""
for prog in "$work"/user_c "$work"/user_cpp "$work"/user_f "$work"/proj/build/user_c "$work"/proj/build/user_cpp "$work"/proj/build/user_f; do
  out=$("${run_env[@]}" "$prog")
  case "$out" in "$expected "*) ;; *) echo "$prog printed: $out"; exit 1 ;; esac
  [ -z "$first" ] && first=$out
  [ "$out" = "$first" ] || { echo "$prog printed: $out, not: $first"; exit 1; }
done
echo "C, C++ and Fortran with pkg-config and find_package: $first"
