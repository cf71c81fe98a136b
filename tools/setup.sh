# Sourced by run and test: installs what is missing and builds, silent about what is there already.

set -u
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
cd "$root" || exit 1

# What the program, its tests and their build need, as Debian names it.
packages=(
  g++ cmake ninja-build pkg-config ccache git
  qt6-base-dev libqt6sql6-sqlite qt6-svg-dev
  libfluidsynth-dev timgm6mb-soundfont librtmidi-dev
  libgtest-dev libgmock-dev libbenchmark-dev
  jackd2 abcmidi
)

fail() {
  echo "Zelmar: $1" >&2
  exit 1
}

missing_packages() {
  local package
  for package in "${packages[@]}"; do
    [ "$(dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null)" = installed ] || echo "$package"
  done
}

install_missing() {
  command -v apt-get >/dev/null && command -v dpkg-query >/dev/null ||
    fail "this system has no apt-get; the scripts know Debian and its relatives only. README lists what is needed."
  local missing log as_root=()
  mapfile -t missing < <(missing_packages)
  [ ${#missing[@]} -eq 0 ] && return
  if [ "$(id -u)" -ne 0 ]; then
    command -v sudo >/dev/null || fail "root is needed to install: ${missing[*]}. Run this as root once, or install sudo."
    as_root=(sudo)
  fi
  echo "Zelmar: installing ${missing[*]}"
  log=$(mktemp)
  # An old package list may name versions that are gone, so the lists are renewed first.
  if ! "${as_root[@]}" apt-get update -o Acquire::Retries=2 >"$log" 2>&1 ||
    grep -qE '^(W|E): .*(Failed to fetch|Some index files failed)' "$log"; then
    if ! apt-cache show "${missing[@]}" >/dev/null 2>&1; then
      tail -n 3 "$log" >&2
      rm -f "$log"
      fail "the package lists cannot be fetched. Is this machine on the network?"
    fi
  fi
  if ! "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
    apt-get install -y --no-install-recommends "${missing[@]}" >"$log" 2>&1; then
    tail -n 5 "$log" >&2
    rm -f "$log"
    fail "the packages above could not be installed. Is this machine on the network, and is this Debian 12 or later?"
  fi
  rm -f "$log"
}

# build <preset> [target...]: configures where needed and builds, telling of it only when there is work.
build() {
  local preset=$1 log
  shift
  local folder=build/$preset
  mkdir -p "$folder"
  log=$folder/build.log
  if [ ! -f "$folder/build.ninja" ]; then
    cmake --preset "$preset" >"$log" 2>&1 || {
      tail -n 20 "$log" >&2
      fail "the build could not be configured; $log has the whole story."
    }
  fi
  # A dry run names at least its folder and the look for new files.
  if ninja -C "$folder" -n "$@" 2>/dev/null | grep -qvE 'Entering directory|Re-checking globbed|Re-running CMake|no work to do'; then
    echo "Zelmar: building ($preset)"
  fi
  ninja -C "$folder" "$@" >"$log" 2>&1 || {
    grep -E 'error|FAILED' "$log" | head -n 20 >&2
    fail "the build failed; $log has the whole story."
  }
}
