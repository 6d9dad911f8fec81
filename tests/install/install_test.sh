#!/usr/bin/env bash
# install_test.sh <build> <work>
# Installs the built library into a scratch prefix, as `cmake --install`
# does for a user, and checks what the user gets: programs in C, C++ and
# Fortran that build with pkg-config and find_package and start without
# ldconfig or LD_LIBRARY_PATH; the pages, the examples and the licence under
# share/doc/zem; installed headers that cite installed pages only.
set -eu
build=$1 work=$2
here=$(cd "$(dirname "$0")" && pwd)
rm -rf "$work" && mkdir -p "$work"
prefix="$work/prefix"
cmake --install "$build" --prefix "$prefix" >/dev/null
unset LD_LIBRARY_PATH
grep -q -- '-Wl,-rpath,${libdir}' "$prefix"/lib/*/pkgconfig/zem.pc "$prefix"/lib/pkgconfig/zem.pc 2>/dev/null ||
  { echo "zem.pc of a private prefix gives no run path"; exit 1; }
bash "$here/clients.sh" "$prefix" "$work/clients"
doc="$prefix/share/doc/zem"
for f in LICENSE frame.md errors.md examples/c05ayc.c examples/c05ayf.f90 examples/c05ayc.out; do
  [ -f "$doc/$f" ] || { echo "not installed: share/doc/zem/$f"; exit 1; }
done
# Every page and example of the source tree is installed.
src=$(cd "$here/../.." && pwd)
for f in "$src"/docs/*.md "$src"/examples/*.c "$src"/examples/*.f90; do
  name=${f#"$src"/docs/}; name=${name#"$src"/}
  [ -f "$doc/$name" ] || { echo "not installed: $f"; exit 1; }
done
# A header may point to a page only where it is installed.
if grep -nE '(^|[^/])docs/' "$prefix"/include/*.h "$prefix"/include/*.fi "$prefix"/include/*.f90; then
  echo "an installed header cites a source path (say share/doc/zem/<page>.md)"; exit 1
fi
echo "installed library: clients build and start without LD_LIBRARY_PATH; docs and examples installed"
