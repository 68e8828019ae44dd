# Sourced by the scripts: where the project is, how to speak, how to become root.

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
deps=$root/.deps
log=$deps/setup.log

say() { printf '%s: %s\n' "${0##*/}" "$*"; }
die() {
  printf '%s: %s\n' "${0##*/}" "$*" >&2
  exit 1
}

as_root() {
  if [ "$(id -u)" = 0 ]; then
    "$@"
  elif command -v sudo >/dev/null; then
    sudo "$@"
  else
    die "not root and no sudo: run as root once: $*"
  fi
}

# logged WHAT COMMAND...: the command's output goes to the log; if it fails, the log's end tells why.
logged() {
  local what=$1
  shift
  printf '\n== %s\n' "$*" >>"$log"
  "$@" >>"$log" 2>&1 || {
    tail -n 15 "$log" >&2
    die "$what failed; the whole output is in $log"
  }
}

# hash FILE...: one number for the text of the files and for what comes in on standard input.
hash() { cat "$@" - | sha256sum | cut -d ' ' -f 1; }
