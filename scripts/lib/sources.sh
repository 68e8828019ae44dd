# Sourced by setup: fetches released source archives from the package mirrors that this machine already uses.

cache=$deps/cache

sum_is() { printf '%s  %s\n' "$2" "$1" | sha256sum --check --status 2>/dev/null; }

# The machine's own repository addresses. The security archive rarely has what we look for, so it is asked last.
mirrors() {
  apt-get indextargets --format '$(REPO_URI)' 'Created-By: Packages' | sort -u |
    awk '/security/ { last = last $0 "\n"; next } { print } END { printf "%s", last }'
}

fetch_from_pools() { # FILE POOL_FOLDER SUM
  local uri component
  for uri in $(mirrors); do
    for component in main universe; do
      printf '\n== %s from %s\n' "$1" "${uri}pool/$component/$2" >>"$log"
      /usr/lib/apt/apt-helper download-file "${uri}pool/$component/$2/$1" "$cache/$1" "SHA256:$3" >>"$log" 2>&1 || continue
      sum_is "$cache/$1" "$3" && return 0
    done
  done
  return 1
}

# A mirror with another folder layout has no pool where we look. Then apt itself asks the neighbouring releases for the
# source package; it does so in a root of its own, because the system's configuration is not ours to change.
fetch_by_private_apt() { # FILE SOURCE_PACKAGE SUM
  local private=$deps/work/apt uri suite suites
  case $(. /etc/os-release && echo "$ID") in
    ubuntu) suites="noble jammy" components="main universe" ;;
    *) suites="trixie bookworm bullseye sid" components=main ;;
  esac
  for uri in $(mirrors | grep -v security); do
    for suite in $suites; do
      rm -rf "$private"
      mkdir -p "$private/parts" "$private/lists/partial" "$private/cache/archives/partial" "$private/out"
      printf 'Types: deb-src\nURIs: %s\nSuites: %s\nComponents: %s\n' "$uri" "$suite" "$components" >"$private/parts/one.sources"
      local options=(-qq -o Dir::Etc::SourceList=/dev/null -o Dir::Etc::SourceParts="$private/parts"
        -o Dir::State::Lists="$private/lists" -o Dir::State::status=/dev/null -o Dir::Cache="$private/cache")
      printf '\n== %s from the sources of %s\n' "$1" "$suite" >>"$log"
      (cd "$private/out" && apt-get "${options[@]}" update &&
        apt-get "${options[@]}" source --download-only --tar-only "$2") >>"$log" 2>&1 || continue
      sum_is "$private/out/$1" "$3" && cp "$private/out/$1" "$cache/$1" && return 0
    done
  done
  return 1
}

# fetch SOURCE_PACKAGE FILE POOL_FOLDER SUM: afterwards $cache/FILE is there, with that sum. The sum is asked again on
# each use: a cache that somebody touched is no better than a download that went wrong.
fetch() {
  mkdir -p "$cache"
  sum_is "$cache/$2" "$4" && return 0
  [ -n "$(mirrors)" ] || update_index
  fetch_from_pools "$2" "$3" "$4" || fetch_by_private_apt "$2" "$1" "$4" ||
    die "no package mirror has $2: put that file (SHA-256 $4) into $cache and run again"
}

# unpack FILE FOLDER: the archive's content without its top folder.
unpack() {
  mkdir -p "$2"
  tar -xf "$cache/$1" -C "$2" --strip-components=1
}
