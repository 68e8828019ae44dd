# Sourced by setup: pugixml in wide-character mode, in .deps/pugixml. Distributions build it narrow only.

pugixml_version=1.13

pugixml_state() {
  { dpkg --print-architecture; g++ --version; } | hash "$root/scripts/lib/wide_pugixml.sh"
}

pugixml_pc() {
  cat <<PC
prefix=\${pcfiledir}/../..
Name: pugixml-wide
Description: pugixml in wide-character mode, for linking into one shared library
Version: $pugixml_version
Cflags: -I\${prefix}/include
Libs: -L\${prefix}/lib -lpugixml-wide
PC
}

# The mode is set in the configuration header itself, which library and users both read: set anywhere else it could
# differ between them, and the library would be narrow without a word. The symbols are hidden because a narrow pugixml in
# the same process has symbols of the same names.
pugixml_build() { # SOURCE PREFIX
  local mode=PUGIXML_WCHAR_MODE config=$1/src/pugiconfig.hpp
  sed -i "s|^// *#define $mode|#ifndef $mode\n#define $mode\n#endif|" "$config" &&
    grep -q "^#define $mode" "$config" &&
    g++ -std=c++17 -O2 -g -ffile-prefix-map="$1"=. -fPIC -fvisibility=hidden -fvisibility-inlines-hidden \
      -c "$1/src/pugixml.cpp" -o "$1/pugixml.o" &&
    mkdir -p "$2/include" "$2/lib/pkgconfig" &&
    ar rcs "$2/lib/libpugixml-wide.a" "$1/pugixml.o" &&
    cp "$1"/src/*.hpp "$1/src/pugixml.cpp" "$2/include/" &&
    pugixml_pc >"$2/lib/pkgconfig/pugixml-wide.pc"
}

setup_wide_pugixml() {
  local work=$deps/work/pugixml file=pugixml_$pugixml_version.orig.tar.gz
  say "building pugixml $pugixml_version in wide-character mode"
  fetch pugixml $file p/pugixml 5c5ad5d7caeb791420408042a7d88c2c6180781bf218feca259fd9d840a888e1
  unpack $file "$work/source"
  logged "building pugixml" pugixml_build "$work/source" "$work/prefix"
  rm -rf "$deps/pugixml"
  mv "$work/prefix" "$deps/pugixml"
}
