#!/usr/bin/env bash
# Installing and packaging, checked from the outside:
#   install_test.sh prefix BUILD_DIR SOURCE_DIR   cmake --install into a scratch prefix: every file,
#                                                 the desktop's defaults kept, bash completion
#   install_test.sh package BUILD_DIR SOURCE_DIR  the .deb: lintian, its dependencies, and the sample
#                                                 analysis run from the unpacked package
set -euo pipefail
what=$1 build=$2 source=$3
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
fail() { echo "FAIL: $*" >&2; exit 1; }

check_prefix() {
  cmake --install "$build" --prefix "$scratch/prefix" >/dev/null
  local icons=share/icons/hicolor doc=share/doc/vantor-log-analyzer expected found
  expected=$(printf '%s\n' bin/vantor bin/vantor-cli share/applications/vantor-log-analyzer.desktop \
    share/bash-completion/completions/vantor-cli \
    $doc/README.md $doc/changelog.gz $doc/copyright $doc/evening.log \
    $icons/{128x128,16x16,256x256,32x32,48x48,64x64}/apps/vantor-log-analyzer.png \
    $icons/scalable/apps/vantor-log-analyzer.svg share/man/man1/vantor{,-cli}.1.gz | LC_ALL=C sort)
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
  for page in vantor vantor-cli; do
    [ -z "$(zcat "$scratch/prefix/share/man/man1/$page.1.gz" | groff -man -ww -z 2>&1)" ] || fail "$page.1 warnings"
  done
  check_defaults_kept
  check_completion
}

# The menu entry claims no file type: with a text editor on the machine, what
# opens logs and text is what opened them before the install. The program can
# still be chosen for logs, as "Open With Other Application" does.
check_defaults_kept() {
  local x=$scratch/xdg data before after
  mkdir -p "$x/system/applications" && ln -s /usr/share/mime "$x/system/mime"
  printf '[Desktop Entry]\nType=Application\nName=Editor\nExec=true %%F\nMimeType=text/plain;\n' \
    >"$x/system/applications/editor.desktop"
  update-desktop-database "$x/system/applications" "$scratch/prefix/share/applications"
  desktop() {
    env -i PATH="$scratch/prefix/bin:/usr/bin:/bin" HOME="$x/home" XDG_DATA_HOME="$x/data" XDG_CONFIG_HOME="$x/config" \
      XDG_CONFIG_DIRS="$x/config-dirs" XDG_DATA_DIRS="$data:$x/system" "$@"
  }
  answers() { for type in text/x-log text/plain; do desktop xdg-mime query default $type; desktop gio mime $type; done; }
  data=$x/none before=$(answers)
  data=$scratch/prefix/share after=$(answers)
  [[ "$before" == *editor.desktop* ]] || fail "the stand-in editor is not the default: $before"
  [ "$after" = "$before" ] || fail "the install changed the defaults: $(diff <(echo "$before") <(echo "$after"))"
  desktop gio mime text/x-log vantor-log-analyzer.desktop >/dev/null &&
    [ "$(desktop xdg-mime query default text/x-log)" = vantor-log-analyzer.desktop ] || fail "cannot be chosen for logs"
}

# vantor-cli's completion offers exactly the options --help lists, and logs and folders.
check_completion() {
  local files=$scratch/files offered listed
  mkdir -p "$files/folder" && touch "$files/tonight.log" "$files/notes.txt"
  offered=$(cd "$files" && bash --norc -c 'source /usr/share/bash-completion/bash_completion; source "$1"
    for cur in - ""; do
      COMP_WORDS=(vantor-cli "$cur") COMP_CWORD=1 COMP_LINE="vantor-cli $cur" COMP_POINT=$((11 + ${#cur}))
      _vantor_cli vantor-cli "$cur" vantor-cli && printf "%s\n" "${COMPREPLY[@]}"
    done' _ "$scratch/prefix/share/bash-completion/completions/vantor-cli" | LC_ALL=C sort)
  listed=$({ "$scratch/prefix/bin/vantor-cli" --help | grep -E '^  -' | grep -oE -- '(^| )--?[a-zA-Z][-a-z]*' |
    tr -d ' '; printf '%s\n' folder tonight.log; } | LC_ALL=C sort)
  [ "$offered" = "$listed" ] || fail "completion differs from --help: $(diff <(echo "$listed") <(echo "$offered"))"
}

check_package() {
  (cd "$scratch" && cpack -G DEB --config "$build/CPackConfig.cmake" >/dev/null)
  local deb depends
  deb=$(ls "$scratch"/vantor-log-analyzer_*_*.deb)
  depends=$(dpkg-deb -f "$deb" Depends)
  for package in libqt6core6 libqt6gui6 libqt6widgets6 libstdc++6 libc6; do
    [[ ", $depends" == *", $package ("* ]] || fail "Depends lacks $package: $depends"
  done
  [[ "$(dpkg-deb -f "$deb" Recommends)" == *qt6-wayland* ]] || fail "qt6-wayland is not recommended"
  if ! command -v lintian >/dev/null; then echo "lintian is not installed: the policy check is skipped" >&2
  else lintian --fail-on error,warning "$deb" || fail "lintian finds errors or warnings"; fi
  dpkg -x "$deb" "$scratch/root"
  [[ "$(zcat "$scratch/root/usr/share/doc/vantor-log-analyzer/changelog.gz" | head -1)" == \
    "vantor-log-analyzer ($(dpkg-deb -f "$deb" Version)) "* ]] || fail "the changelog's last entry is not this version"
  [ "$("$scratch/root/usr/bin/vantor-cli" --version)" = "vantor-cli (Vantor Log Analyzer) 0.80" ] || fail "version"
  # The desktop program answers on the terminal, without a display, and refuses what it does not know;
  # after "--" an argument is a log, which only the window analyses: without a display it cannot start.
  [ "$(env -u DISPLAY "$scratch/root/usr/bin/vantor" --version)" = "vantor 0.80" ] || fail "vantor --version"
  env -u DISPLAY "$scratch/root/usr/bin/vantor" --help | grep -q '^Usage: .* \[options\] \[LOG...\]$' || fail "--help"
  while IFS='|' read -r display args status said; do
    local got=0 err && err=$(env -u DISPLAY -u WAYLAND_DISPLAY -u QT_QPA_PLATFORM $display \
      "$scratch/root/usr/bin/vantor" $args 2>&1 >/dev/null) || got=$?
    [ "$got" -eq "$status" ] && [[ "$err" == $said ]] || fail "vantor $args: status $got, $err"
  done <<'ROWS'
QT_QPA_PLATFORM=offscreen|--bogus|2|vantor: Unknown option 'bogus'.*Usage: *
|--bogus|2|vantor: Unknown option 'bogus'.*Usage: *
|-platform offscreen -x|2|vantor: Unknown option 'x'.*
|-- --bogus|134|*no Qt platform plugin could be initialized*
ROWS
  # The unpacked program and the build tree's give the same table, report and side files.
  for program in "$scratch/root/usr/bin/vantor-cli" "$build/vantor-cli"; do
    local out="$scratch/run$((++runs))" && mkdir -p "$out"
    "$program" -q --side-dir "$out" -o "$out" -t "$source/samples/evening.log" >"$out/table.txt" || fail "$program failed"
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
