#!/usr/bin/env bash
# package_test.sh <build> <work>
# Makes the Debian packages libzem1 and libzem-dev with CPack, checks their
# names, dependencies and contents, unpacks them into a scratch root
# (dpkg-deb -x, no installation on this machine) and builds and runs the C,
# C++ and Fortran programs against that root with pkg-config and CMake.
# Needs: cpack (cmake), dpkg-deb and dpkg-shlibdeps (dpkg-dev).
set -eu
build=$1 work=$2
here=$(cd "$(dirname "$0")" && pwd)
rm -rf "$work" && mkdir -p "$work/debs" "$work/root"
(cd "$build" && cpack -G DEB -B "$work/debs" >"$work/cpack.log" 2>&1) || { cat "$work/cpack.log"; exit 1; }
runtime=$(ls "$work"/debs/libzem1_*.deb) dev=$(ls "$work"/debs/libzem-dev_*.deb)
field() { dpkg-deb -f "$1" "$2"; }
[ "$(field "$runtime" Package)" = libzem1 ] && [ "$(field "$dev" Package)" = libzem-dev ]
field "$runtime" Depends | grep -q libgfortran || { echo "libzem1 does not depend on libgfortran"; exit 1; }
field "$dev" Depends | grep -q "libzem1 (= " || { echo "libzem-dev does not depend on libzem1"; exit 1; }
# The run time holds the versioned object and no development file; the
# development package the rest.
rt_files=$(dpkg-deb -c "$runtime") dev_files=$(dpkg-deb -c "$dev")
grep -q 'lib/x86_64-linux-gnu/libzem\.so\.1\.' <<<"$rt_files" || { echo "libzem1 lacks libzem.so.1"; exit 1; }
if grep -E 'include/|pkgconfig|\.so$|\.so -> ' <<<"$rt_files"; then
  echo "development files in libzem1"; exit 1
fi
for f in usr/include/zem.h usr/include/zem.mod pkgconfig/zem.pc cmake/Zem/ZemConfig.cmake \
         usr/share/doc/zem/frame.md usr/share/doc/zem/examples/c05ayc.c 'libzem\.so -> '; do
  grep -q "$f" <<<"$dev_files" || { echo "libzem-dev lacks $f"; exit 1; }
done
dpkg-deb -x "$runtime" "$work/root"
dpkg-deb -x "$dev" "$work/root"
# In /usr the dynamic linker finds the library: zem.pc adds no run path.
if grep -q rpath "$work"/root/usr/lib/*/pkgconfig/zem.pc; then echo "zem.pc of libzem-dev sets a run path"; exit 1; fi
unset LD_LIBRARY_PATH
bash "$here/clients.sh" "$work/root/usr" "$work/clients"
echo "packages: $(basename "$runtime") $(basename "$dev")"
