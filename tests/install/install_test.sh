#!/usr/bin/env bash
# Installing and packaging, checked from the outside:
#   install_test.sh prefix BUILD_DIR SOURCE_DIR  cmake --install into a scratch prefix: every file
#   install_test.sh package BUILD_DIR SOURCE_DIR the .deb: its dependencies, and the sample
#                                                analysis run from the unpacked package
set -euo pipefail
what=$1 build=$2 source=$3
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
fail() { echo "FAIL: $*" >&2; exit 1; }

check_prefix() {
  cmake --install "$build" --prefix "$scratch/prefix" >/dev/null
  local expected="bin/vantor
bin/vantor-cli
share/applications/vantor-log-analyzer.desktop
share/doc/vantor-log-analyzer/README.md
share/doc/vantor-log-analyzer/evening.log
share/icons/hicolor/128x128/apps/vantor-log-analyzer.png
share/icons/hicolor/16x16/apps/vantor-log-analyzer.png
share/icons/hicolor/256x256/apps/vantor-log-analyzer.png
share/icons/hicolor/32x32/apps/vantor-log-analyzer.png
share/icons/hicolor/48x48/apps/vantor-log-analyzer.png
share/icons/hicolor/64x64/apps/vantor-log-analyzer.png
share/icons/hicolor/scalable/apps/vantor-log-analyzer.svg
share/man/man1/vantor-cli.1"
  local found
  found=$(cd "$scratch/prefix" && find . -type f -o -type l | sed 's|^\./||' | LC_ALL=C sort)
  [ "$found" = "$expected" ] || fail "installed files differ:
$(diff <(echo "$expected") <(echo "$found"))"
  # Each size is the drawing rendered afresh (scripts/render-icons), never a stale one.
  local icons="$scratch/prefix/share/icons/hicolor"
  cmp -s "$icons/scalable/apps/vantor-log-analyzer.svg" "$source/packaging/icons/vantor-log-analyzer.svg" ||
    fail "scalable icon differs from the drawing"
  for size in 16 32 48 64 128 256; do
    local png="$icons/${size}x${size}/apps/vantor-log-analyzer.png"
    [ "$(od -An -tu1 -j16 -N8 "$png" | awk '{print $3*256+$4, $7*256+$8}')" = "$size $size" ] ||
      fail "$png is not ${size}x${size}"
    rsvg-convert -w "$size" -h "$size" "$source/packaging/icons/vantor-log-analyzer.svg" | cmp -s - "$png" ||
      fail "$png is not the drawing rendered at ${size}x${size}: run scripts/render-icons"
  done
  desktop-file-validate "$scratch/prefix/share/applications/vantor-log-analyzer.desktop" ||
    fail "desktop-file-validate"
  local warnings
  warnings=$(groff -man -ww -z "$scratch/prefix/share/man/man1/vantor-cli.1" 2>&1)
  [ -z "$warnings" ] || fail "man page: $warnings"
  [ -x "$scratch/prefix/bin/vantor" ] && [ -x "$scratch/prefix/bin/vantor-cli" ] || fail "programs not executable"
  echo "install: every file in place"
}

check_package() {
  (cd "$scratch" && cpack -G DEB --config "$build/CPackConfig.cmake" >/dev/null)
  local deb
  deb=$(ls "$scratch"/vantor-log-analyzer_*_*.deb)
  local depends
  depends=$(dpkg-deb -f "$deb" Depends)
  for package in libqt6core6 libqt6gui6 libqt6widgets6 libstdc++6 libc6; do
    [[ ", $depends" == *", $package ("* ]] || fail "Depends lacks $package: $depends"
  done
  [ "$(dpkg-deb -f "$deb" Package)" = "vantor-log-analyzer" ] || fail "package name"
  dpkg -x "$deb" "$scratch/root"
  local version
  version=$("$scratch/root/usr/bin/vantor-cli" --version)
  [ "$version" = "vantor-cli (Vantor Log Analyzer) 0.80" ] || fail "version: $version"
  # The unpacked program and the build tree's give the same table, report and side files.
  local sample="$scratch/root/usr/share/doc/vantor-log-analyzer/evening.log"
  cmp -s "$sample" "$source/samples/evening.log" || fail "packaged sample differs"
  for who in packaged built; do
    mkdir -p "$scratch/$who"
    local program="$build/vantor-cli"
    [ "$who" = packaged ] && program="$scratch/root/usr/bin/vantor-cli"
    "$program" --quiet --side-dir "$scratch/$who" --output-dir "$scratch/$who" --table "$source/samples/evening.log" \
      >"$scratch/$who/table.txt" || fail "$who run failed"
  done
  diff -r "$scratch/packaged" "$scratch/built" >/dev/null || fail "packaged and built runs differ"
  [ "$(wc -l <"$scratch/packaged/table.txt")" -gt 10 ] || fail "no statistics from the packaged program"
  echo "package: $(basename "$deb") depends on $depends; the sample analysis runs from it"
}

case "$what" in
  prefix) check_prefix ;;
  package) check_package ;;
  *) fail "unknown check $what" ;;
esac
