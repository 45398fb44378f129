# shellcheck shell=bash
# What the scripts beside it share; sourced, not run.
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)

say() {
  printf '== %s\n' "$*" >&2
}

# Runs a command and keeps its output in build/NAME.log, to be shown only when the command fails.
quietly() {
  local log=$root/build/$1.log
  shift
  mkdir -p "$root/build"
  "$@" >"$log" 2>&1 || failed "$log" "$@"
}

# failed LOG COMMAND ...
failed() {
  cat "$1" >&2
  say "Failed: ${*:2}"
  return 1
}

# Of what ninja says, shows how far it is: in one line, written again and again, or now and then where nobody looks.
show_build() {
  local line at='' shown=$SECONDS
  while read -r line; do
    [[ $line =~ ^\[([1-9][0-9]*/[0-9]+)\]\  ]] || continue
    at=${BASH_REMATCH[1]}
    if [[ -t 2 ]]; then
      printf '\r\e[K   %s' "$at" >&2
    elif ((SECONDS - shown >= 10)); then
      printf '   %s\n' "$at" >&2
      shown=$SECONDS
    fi
  done
  [[ -z $at || ! -t 2 ]] || printf '\r\e[K' >&2
}

# build PRESET [TARGET ...]: keeps what the build says as quietly does, in build/PRESET-build.log.
build() {
  local folder=$root/build/$1
  # Where a configuration exists the build itself brings it up to date.
  if [[ ! -e $folder/build.ninja ]]; then
    quietly "$1-configure" env -C "$root" cmake --preset "$1" || return
  fi
  local log=$root/build/$1-build.log
  local command=(cmake --build "$folder" ${2:+--target "${@:2}"})
  "${command[@]}" 2>&1 | tee "$log" | show_build || failed "$log" "${command[@]}"
}

# The first Windows process starts Wine's services, which keep its output open: let that be nobody's pipe.
warm_wine() {
  "$root/scripts/wine" cmd.exe /c exit </dev/null >/dev/null 2>&1
}

# Ends the server of the build's own prefix, and no other.
stop_wine() {
  local server=/usr/lib/wine/wineserver64
  [[ -x $server ]] || server=wineserver
  WINEPREFIX=${VORLINK_WINEPREFIX:-$root/build/wine-prefix} "$server" -k >/dev/null 2>&1 || true
}

# Shows the header of the script that runs, when this is what it was asked for, and ends it.
answer_help() {
  [[ ${1:-} != --help ]] || {
    sed '1d; /^#/!Q; s/^# \?//' "$0"
    exit
  }
}

# The C++ files of the checkout, and those in C, by their paths from its root.
sources() {
  if [[ -e $root/.git ]]; then
    git -C "$root" ls-files --cached --others --exclude-standard '*.cpp' '*.h' '*.c'
  else
    find "$root" -path "$root/build" -prune -o \( -name '*.cpp' -o -name '*.h' -o -name '*.c' \) -printf '%P\n'
  fi | LC_ALL=C sort
}
