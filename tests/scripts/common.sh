# shellcheck shell=bash
# What the tests beside it share; sourced, not run. Each works on a copy of the scripts, in a folder that ends with it.
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
cp -r "$(dirname "${BASH_SOURCE[0]}")/../../scripts" "$folder"
mkdir "$folder/bin" "$folder/build"

failures=0
fail() {
  printf 'Failed: %s\n' "$*" >&2
  failures=$((failures + 1))
}

# expect WHAT EXPECTED ACTUAL
expect() {
  [[ $2 == "$3" ]] || fail "$1: $(printf 'expected\n%s\nbut it is\n%s' "$2" "$3")"
}

# Puts a program in the place of one that a script calls; the rest of the line, and what is read, is its text.
stand_in() {
  {
    echo '#!/bin/bash'
    cat
  } >"$1"
  chmod +x "$1"
}

finish() {
  ((failures == 0)) && echo "Passed."
  exit $((failures > 0))
}
