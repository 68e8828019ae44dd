# Sourced by the tests of this folder.

die() {
  printf '%s: %s\n' "${0##*/}" "$*" >&2
  exit 1
}

# run WHAT COMMAND...: the command's output is shown only if it fails.
run() {
  local what=$1 output
  shift
  output=$("$@" 2>&1) || die "$what failed:
$*
$output"
}

# A build hands its libraries over by folder name; what was installed must not need them.
refers_to() { # FOLDER TEXT: the files of FOLDER, no binary ones, that hold TEXT
  grep -rlIF -- "$2" "$1"
}
