# Sourced by setup, reference and abi: the packages of the distribution.

build_packages=(build-essential cmake ninja-build pkg-config ca-certificates bzip2
  odb libsqlite3-dev libboost-dev libutfcpp-dev)
test_packages=(libgtest-dev libgmock-dev libbenchmark-dev nlohmann-json3-dev sqlite3 libxml2-utils clang-format)
reference_packages=(doxygen)
abi_packages=(abigail-tools)

apt_get() { as_root env DEBIAN_FRONTEND=noninteractive apt-get -qq -o Dpkg::Use-Pty=0 -o DPkg::Lock::Timeout=300 "$@"; }

# missing_packages NAME...: those that are not installed, one per line.
missing_packages() {
  { dpkg-query -W -f='${db:Status-Abbrev} ${Package}\n' "$@" 2>/dev/null || true; } |
    awk -v names="$*" '$1 == "ii" { have[$2] } END { n = split(names, a, " ")
      for (i = 1; i <= n; i++) if (!(a[i] in have)) print a[i] }'
}

# An index that is days old names packages that the mirror has dropped, so it is renewed once before the first download.
update_index() {
  [ -z "${index_updated:-}" ] || return 0
  logged "apt-get update" apt_get update
  index_updated=yes
}

install_packages() {
  local missing
  mapfile -t missing < <(missing_packages "$@")
  [ ${#missing[@]} -gt 0 ] || return 0
  say "installing ${missing[*]}"
  update_index
  logged "apt-get install" apt_get install -y --no-install-recommends "${missing[@]}"
}

# The ODB compiler is a plugin of exactly one g++, and its package does not depend on that g++.
odb_gxx() {
  local plugin
  plugin=$(dpkg -L odb | grep '/plugin/odb\.so$') || die "the package odb holds no compiler plugin"
  plugin=${plugin%/plugin/odb.so}
  printf 'g++-%s\n' "${plugin##*/}"
}
