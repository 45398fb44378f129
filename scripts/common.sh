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
  "$@" >"$log" 2>&1 && return
  cat "$log" >&2
  say "Failed: $*"
  return 1
}

# build PRESET [TARGET ...]
build() {
  local folder=$root/build/$1
  # Where a configuration exists the build itself brings it up to date.
  if [[ ! -e $folder/build.ninja ]]; then
    quietly "$1-configure" env -C "$root" cmake --preset "$1" || return
  fi
  quietly "$1-build" cmake --build "$folder" ${2:+--target "${@:2}"}
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
