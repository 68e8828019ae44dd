# Sourced by test and demo: configuring and building by preset.

configure_preset() {
  mkdir -p "$root/build"
  (cd "$root" && cmake --preset "$1" >"$root/build/$1.configure.log" 2>&1) || {
    cat "$root/build/$1.configure.log" >&2
    die "configuring $1 failed"
  }
}

build_preset() { # PRESET TARGET...
  local preset=$1
  shift
  say "building $preset${*:+: $*}"
  configure_preset "$preset"
  (cd "$root" && cmake --build --preset "$preset" ${1:+--target "$@"}) || die "building $preset failed"
}
