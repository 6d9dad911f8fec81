#!/usr/bin/env bash
# Builds the documentation site from docs/ with Sphinx and MyST:
#   bash tools/docs.sh [dir]      (default build-docs; the site is dir/html)
# tools/site/build_site.py stages the pages, the generated chapter indexes and
# reference tables into dir/src; any Sphinx warning (a broken link, a missing
# page) fails the build.  Debian's python3 (/usr/bin/python3) runs it, the one
# the packages install into.  Needs: python3-sphinx, python3-myst-parser (as root
# tools/setup.sh installs them).  Open dir/html/index.html in a browser.
set -eu
cd "$(dirname "$0")/.."
. tools/setup.sh python3-sphinx python3-myst-parser
dir=${1:-build-docs}
/usr/bin/python3 tools/site/build_site.py . "$dir/src"
rm -rf "$dir/html"
/usr/bin/python3 -m sphinx -b html -q -W --keep-going -j 2 "$dir/src" "$dir/html"
echo "site: $dir/html/index.html"
