# Sourced by setup: the ODB runtime for SQLite, in .deps/odb unless the distribution has one that serves.

odb_packages=(libodb-dev libodb-sqlite-dev)
odb_version=2.4.0

odb_state() {
  {
    dpkg --print-architecture
    g++ --version
    dpkg-query -W -f='${Package} ${Version}\n' libsqlite3-dev "${odb_packages[@]}" 2>/dev/null || true
  } | hash "$root/scripts/lib/odb_runtime.sh"
}

# The headers and the library must serve a host of either standard with warnings as errors: compile, link and run one.
odb_probe() { # FLAG...
  local folder=$deps/work/probe standard
  mkdir -p "$folder"
  cat >"$folder/probe.cpp" <<'CPP'
#include <odb/core.hxx>
#include <odb/sqlite/database.hxx>
#include <odb/connection.hxx>
#include <odb/transaction.hxx>

int main()
{
  odb::sqlite::database db(":memory:");
  odb::transaction t(db.begin());
  db.execute("CREATE TABLE probe (id INTEGER)");
  db.execute("INSERT INTO probe VALUES (1)");
  const auto rows = db.execute("DELETE FROM probe");
  t.commit();
  return rows == 1 ? 0 : 1;
}
CPP
  for standard in 17 20; do
    g++ -std=c++$standard -Wall -Wextra -Wpedantic -Werror "$folder/probe.cpp" "$@" -lodb-sqlite -lodb -lsqlite3 -o "$folder/probe" &&
      "$folder/probe" || return 1
  done >>"$log" 2>&1
}

odb_from_distribution() {
  [[ $(apt-cache policy "${odb_packages[1]}") == *"Candidate: "[0-9]* ]] || return 1
  install_packages "${odb_packages[@]}"
  odb_probe || { say "the ODB runtime of the distribution does not pass the probe: building it"; return 1; }
  rm -rf "$deps/odb"
}

# ODB 2.4.0 is older than C++17, which has no dynamic exception specifications any more.
odb_modernise() {
  find odb -type f \( -name '*.?xx' -o -name '*.h' \) -exec \
    sed -i -e 's/ throw (std::bad_alloc)//' -e 's/throw ()/noexcept/' {} +
}

odb_build() { # PREFIX CONFIGURE_ARGUMENT...: in an unpacked source tree
  local prefix=$1
  shift
  odb_modernise &&
    ./configure --prefix="$prefix" --libdir="$prefix/lib" --disable-static --disable-dependency-tracking \
      CXXFLAGS="-O2 -g -std=gnu++17 -w -ffile-prefix-map=${prefix%/prefix}=." "$@" &&
    odb_forget_folder &&
    make -j"$(nproc)" &&
    make install
}

# libtool would write the folder of this build into the library.
odb_forget_folder() {
  sed -i -e 's/^hardcode_libdir_flag_spec=.*/hardcode_libdir_flag_spec=""/' \
    -e 's/^runpath_var=.*/runpath_var=DIE_RPATH_DIE/' libtool
}

# The headers name std::auto_ptr, which is deprecated; as system headers they keep a host's warnings for its own code.
odb_finish() { # PREFIX
  find "$1" -name '*.la' -delete
  find "$1/include/odb" -type f -exec sed -i '1i #pragma GCC system_header' {} +
  sed -i "s|^prefix=.*|prefix=\${pcfiledir}/../..|; s|$1|\${prefix}|g" "$1"/lib/pkgconfig/*.pc
}

odb_from_source() {
  local work=$deps/work/odb prefix=$deps/work/odb/prefix
  say "building the ODB runtime $odb_version (half a minute)"
  fetch libodb libodb_$odb_version.orig.tar.bz2 libo/libodb \
    66a1bb4e8bb6ef60cc79334f8028c4d4de98d87f2ff6f8123b4cfb7751ce0007
  fetch libodb-sqlite libodb-sqlite_$odb_version.orig.tar.bz2 libo/libodb-sqlite \
    149bc356cbe81d06ff27434c984bb745af06d745243bdc830e6cbb37e03009ed
  unpack libodb_$odb_version.orig.tar.bz2 "$work/libodb"
  unpack libodb-sqlite_$odb_version.orig.tar.bz2 "$work/libodb-sqlite"
  (cd "$work/libodb" && logged "building libodb" odb_build "$prefix")
  (cd "$work/libodb-sqlite" && logged "building libodb-sqlite" odb_build "$prefix" \
    CPPFLAGS="-I$prefix/include" LDFLAGS="-L$prefix/lib -Wl,-rpath,'\$\$ORIGIN'")
  odb_finish "$prefix"
  odb_probe -I"$prefix/include" -L"$prefix/lib" -Wl,-rpath,"$prefix/lib" ||
    die "the ODB runtime was built but does not run: see the end of $log"
  rm -rf "$deps/odb"
  mv "$prefix" "$deps/odb"
}

setup_odb_runtime() { odb_from_distribution || odb_from_source; }
