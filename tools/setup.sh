# Sourced by run and test: installs what is missing and builds, silent about what is there already.

set -u
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
cd "$root" || exit 1

# What the program, its tests and their build need, as Debian names it.
packages=(
  g++ cmake ninja-build pkg-config ccache git
  qt6-base-dev libqt6sql6-sqlite libsqlite3-dev qt6-svg-dev qt6-wayland qt6-tools-dev qt6-tools-dev-tools
  libfluidsynth-dev timgm6mb-soundfont librtmidi-dev
  libgtest-dev libgmock-dev
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
  # The password is asked for here, so that a refusal is told apart from a failed installation.
  [ ${#as_root[@]} -eq 0 ] || sudo -v || fail "root was refused, and is needed to install: ${missing[*]}."
  mkdir -p build
  log=build/install.log
  # An old package list may name versions that are gone, so the lists are renewed first; old lists may still do.
  "${as_root[@]}" apt-get update >"$log" 2>&1
  apt-cache show "${missing[@]}" >/dev/null 2>>"$log" ||
    fail "the packages ${missing[*]} are not on offer. Is this machine on the network, and is this Debian 12 or later? ($log)"
  "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
    apt-get install -y --no-install-recommends "${missing[@]}" >>"$log" 2>&1 ||
    fail "the packages ${missing[*]} could not be installed. Is this machine on the network? ($log)"
}

# build <preset> [target...]: configures where needed and builds, telling of it once there is work to do.
build() {
  local preset=$1 log line said=
  shift
  local folder=build/$preset
  mkdir -p "$folder"
  log=$folder/build.log
  if [ ! -f "$folder/build.ninja" ]; then
    echo "Zelmar: building ($preset), which takes some minutes the first time"
    said=yes
    cmake --preset "$preset" >"$log" 2>&1 || fail "the build could not be configured; $log tells why."
  fi
  ninja -C "$folder" "$@" 2>&1 | tee "$log" | while IFS= read -r line; do
    case $line in
      *' Building '* | *' Linking '* | *' Generating '*)
        [ -n "$said" ] || echo "Zelmar: building ($preset)"
        said=yes
        ;;
    esac
  done
  [ "${PIPESTATUS[0]}" -eq 0 ] || {
    grep -E 'error:|FAILED:' "$log" | head -n 10 >&2
    fail "the build failed; $log has the whole story."
  }
}
