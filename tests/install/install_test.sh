#!/usr/bin/env bash
# Installing and packaging, checked from the outside:
#   install_test.sh prefix BUILD_DIR SOURCE_DIR   cmake --install into a scratch prefix: every file
#   install_test.sh package BUILD_DIR SOURCE_DIR  the .deb: its dependencies, and the sample analysis
#                                                 run from the unpacked package
set -euo pipefail
what=$1 build=$2 source=$3
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
fail() { echo "FAIL: $*" >&2; exit 1; }

check_prefix() {
  cmake --install "$build" --prefix "$scratch/prefix" >/dev/null
  local icons=share/icons/hicolor expected found
  expected=$(printf '%s\n' bin/vantor bin/vantor-cli share/applications/vantor-log-analyzer.desktop \
    share/doc/vantor-log-analyzer/README.md share/doc/vantor-log-analyzer/evening.log \
    $icons/{128x128,16x16,256x256,32x32,48x48,64x64}/apps/vantor-log-analyzer.png \
    $icons/scalable/apps/vantor-log-analyzer.svg share/man/man1/vantor-cli.1)
  found=$(cd "$scratch/prefix" && find . -type f -o -type l | sed 's|^\./||' | LC_ALL=C sort)
  [ "$found" = "$expected" ] || fail "installed files differ: $(diff <(echo "$expected") <(echo "$found"))"
  # Each size is the drawing rendered afresh (scripts/render-icons), never a stale one.
  local svg="$source/packaging/icons/vantor-log-analyzer.svg"
  cmp -s "$scratch/prefix/$icons/scalable/apps/vantor-log-analyzer.svg" "$svg" || fail "scalable icon differs"
  for size in 16 32 48 64 128 256; do
    rsvg-convert -w "$size" -h "$size" "$svg" | cmp -s - "$scratch/prefix/$icons/${size}x${size}/apps/vantor-log-analyzer.png" ||
      fail "the ${size}x${size} icon is not the drawing rendered at that size: run scripts/render-icons"
  done
  desktop-file-validate "$scratch/prefix/share/applications/vantor-log-analyzer.desktop" || fail "desktop-file-validate"
  [ -z "$(groff -man -ww -z "$scratch/prefix/share/man/man1/vantor-cli.1" 2>&1)" ] || fail "man page warnings"
  [ -x "$scratch/prefix/bin/vantor" ] && [ -x "$scratch/prefix/bin/vantor-cli" ] || fail "programs not executable"
}

check_package() {
  (cd "$scratch" && cpack -G DEB --config "$build/CPackConfig.cmake" >/dev/null)
  local deb depends
  deb=$(ls "$scratch"/vantor-log-analyzer_*_*.deb)
  depends=$(dpkg-deb -f "$deb" Depends)
  for package in libqt6core6 libqt6gui6 libqt6widgets6 libstdc++6 libc6; do
    [[ ", $depends" == *", $package ("* ]] || fail "Depends lacks $package: $depends"
  done
  [ "$(dpkg-deb -f "$deb" Package)" = "vantor-log-analyzer" ] || fail "package name"
  dpkg -x "$deb" "$scratch/root"
  [ "$("$scratch/root/usr/bin/vantor-cli" --version)" = "vantor-cli (Vantor Log Analyzer) 0.80" ] || fail "version"
  cmp -s "$scratch/root/usr/share/doc/vantor-log-analyzer/evening.log" "$source/samples/evening.log" ||
    fail "packaged sample differs"
  # The unpacked program and the build tree's give the same table, report and side files.
  for program in "$scratch/root/usr/bin/vantor-cli" "$build/vantor-cli"; do
    local out="$scratch/run$((++runs))"
    mkdir -p "$out"
    "$program" --quiet --side-dir "$out" --output-dir "$out" --table "$source/samples/evening.log" >"$out/table.txt" ||
      fail "$program failed"
  done
  diff -r "$scratch/run1" "$scratch/run2" >/dev/null || fail "packaged and built runs differ"
  [ "$(wc -l <"$scratch/run1/table.txt")" -gt 10 ] || fail "no statistics from the packaged program"
}

runs=0
case "$what" in
  prefix) check_prefix ;;
  package) check_package ;;
  *) fail "unknown check $what" ;;
esac
