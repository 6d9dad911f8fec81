# Sourced by demo.sh and test.sh: makes sure the build tools are there.
# On a fresh Debian machine, run as root, missing packages are installed
# with apt-get; otherwise the missing ones are named and the script stops.
zem_packages="cmake make g++ gfortran pkg-config libgtest-dev libgmock-dev $*"
# d02: the order-condition test computes in exact rationals with GMP.
zem_packages="$zem_packages libgmp-dev"
# e04: the real-file test reads the MPS examples of glpk-utils and the SDPA
# example of libsdpa-dev (and is skipped without them).
zem_packages="$zem_packages glpk-utils libsdpa-dev"
# e04st: the interior-point solver it is built on (linked into libzem.so),
# and the MPS examples of glpk-utils that its tests read (glpsol itself is
# run only by tools/glpk_mps_reference.sh, never by the tests).
zem_packages="$zem_packages coinor-libipopt-dev glpk-utils"
missing=""
for p in $zem_packages; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing="$missing $p"
done
if [ -n "$missing" ]; then
  if [ "$(id -u)" = 0 ] && command -v apt-get >/dev/null; then
    echo "Installing:$missing"
    export DEBIAN_FRONTEND=noninteractive
    apt-get update -qq && apt-get install -y -qq $missing >/dev/null || { echo "apt-get failed"; exit 1; }
  else
    echo "Missing packages:$missing (install them, or run this script as root)"; exit 1
  fi
fi
