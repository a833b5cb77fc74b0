#!/usr/bin/env bash
# Builds the app's Debian package from a clean copy of the tree:
#   scripts/package.sh
# Installs the build dependencies that debian/control names when some are
# missing (apt-get build-dep, with sudo when not root), copies the tree without
# build output or ignored files to build/package/work, runs
# `dpkg-buildpackage -us -uc -b` there (which also runs the unit tests), and
# leaves the .deb files with their .changes and .buildinfo in build/package.
# DEB_BUILD_OPTIONS passes through (e.g. nocheck skips the tests).
set -euo pipefail
cd "$(dirname "$0")/.."
root=$PWD
out="$root/build/package"
work="$out/work"

sudo_cmd=()
[ "$(id -u)" -eq 0 ] || sudo_cmd=(sudo)
export DEBIAN_FRONTEND=noninteractive

# dpkg-dev reads debian/control; everything else comes from its Build-Depends.
if ! command -v dpkg-checkbuilddeps >/dev/null || ! command -v dpkg-buildpackage >/dev/null; then
  "${sudo_cmd[@]}" apt-get update -qq
  "${sudo_cmd[@]}" apt-get install -y -qq --no-install-recommends dpkg-dev
fi
if ! dpkg-checkbuilddeps debian/control 2>/dev/null; then
  echo "Installing the build dependencies from debian/control"
  "${sudo_cmd[@]}" apt-get update -qq
  "${sudo_cmd[@]}" apt-get build-dep -y -qq --no-install-recommends ./
fi

version=$(dpkg-parsechangelog -S Version)
upstream=${version%-*}
src="$work/zqb-agent-$upstream"

# The files of the tree as a fresh clone would hold them, plus uncommitted
# work: what git tracks or would track, never build output or ignored files.
rm -rf "$work"
mkdir -p "$src"
if git rev-parse --is-inside-work-tree >/dev/null 2>&1; then
  git ls-files -z --cached --others --exclude-standard |
    while IFS= read -r -d '' f; do
      if [ -e "$f" ] || [ -L "$f" ]; then printf '%s\0' "$f"; fi
    done |
    tar --null -T - -cf - | tar -C "$src" -xf -
else
  tar --exclude='./build*' --exclude='./out' -cf - . | tar -C "$src" -xf -
fi

# Repeated builds compile the same files at the same path: let ccache, when
# installed, answer them. debhelper gives the build its own HOME, so the cache
# is named explicitly. ZQB_PACKAGE_CCACHE=0 builds without it.
if [ "${ZQB_PACKAGE_CCACHE:-1}" != 0 ] && command -v ccache >/dev/null; then
  CCACHE_DIR=${CCACHE_DIR:-$(ccache -k cache_dir)}
  export CCACHE_DIR CMAKE_CXX_COMPILER_LAUNCHER=ccache
fi

(cd "$src" && dpkg-buildpackage -us -uc -b -j"$(nproc)")

rm -f "$out"/*.deb "$out"/*.changes "$out"/*.buildinfo
mv "$work"/*.deb "$work"/*.changes "$work"/*.buildinfo "$out"/
rm -rf "$work"
echo
echo "Built in $out:"
ls -l "$out"/*.deb
