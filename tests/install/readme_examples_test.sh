#!/usr/bin/env bash
# Every vantor-cli line of the README's sh blocks and of its console sessions (after
# the "$ "), run in order as written by a user of the
# installed program: in a directory holding the sample log under each name the
# line uses, absolute paths moved into the scratch directory, --open handed to a
# stand-in xdg-open. Each run must end with status 0, whatever "|| echo" follows it.
#   readme_examples_test.sh VANTOR_CLI SOURCE_DIR
set -euo pipefail
cli=$1 source=$2
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
fail() { echo "FAIL: $*" >&2; exit 1; }

# A copy outside the build tree behaves as an installed one; vantor-cli on PATH
# records the status of every run.
mkdir -p "$scratch/program" "$scratch/bin" "$scratch/work" && cp "$cli" "$scratch/program/vantor-cli"
printf '#!/bin/sh\n"%s" "$@"; status=$?; echo "$status $*" >>"%s"; exit $status\n' \
  "$scratch/program/vantor-cli" "$scratch/statuses" >"$scratch/bin/vantor-cli"
printf '#!/bin/sh\necho "$1" >>"%s"\n' "$scratch/opened" >"$scratch/bin/xdg-open"
chmod +x "$scratch/bin/vantor-cli" "$scratch/bin/xdg-open"

examples=$(awk '/^```(sh|console)$/ { block = $0; next } /^```/ { block = "" }
  block == "```sh" && /^vantor-cli / { print } block == "```console" && sub(/^\$ vantor-cli /, "vantor-cli ")' \
  "$source/README.md")
[ "$(grep -c . <<<"$examples")" -ge 6 ] || fail "the README's vantor-cli examples were not found"
while IFS= read -r line; do
  for log in $(grep -oE '[^ ]+\.log\b' <<<"$line"); do cp "$source/samples/evening.log" "$scratch/work/$log"; done
  (cd "$scratch/work" && env PATH="$scratch/bin:$PATH" HOME="$scratch/home" XDG_STATE_HOME="$scratch/state" \
    bash -c "${line// \// $scratch/}" >/dev/null 2>&1) || fail "$line"
done <<<"$examples"

[ "$(grep -c '^0 ' "$scratch/statuses")" -eq "$(grep -c . <<<"$examples")" ] ||
  fail "an example did not run vantor-cli or ended with a status other than 0: $(grep -v '^0 ' "$scratch/statuses")"
# An example with --open hands the desktop a report it wrote (the opener runs detached).
if grep -q -- ' --open ' <<<"$examples"; then
  for _ in $(seq 50); do [ -s "$scratch/opened" ] && break; sleep 0.1; done
  opened=$(cat "$scratch/opened" 2>/dev/null || true)
  [[ "$opened" == *.html ]] && (cd "$scratch/work" && [ -s "$opened" ]) || fail "--open opened no report: $opened"
fi
