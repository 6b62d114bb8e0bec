#!/usr/bin/env bash
# Installs what building and testing veltor needs on a Debian machine. Packages already
# present are not touched, so a second run does nothing.
set -euo pipefail

packages=(
  g++ clang cmake ninja-build make pkg-config
  libgtest-dev googletest libbenchmark-dev libboost-dev libedit-dev
  python3-ezdxf gdal-bin parallel
  qt6-base-dev
  libgdal-dev postgresql-15-postgis-3
  mingw-w64-x86-64-dev g++-mingw-w64-x86-64-posix lld
)

missing=()
for p in "${packages[@]}"; do
  if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed"; then
    missing+=("$p")
  fi
done
[ ${#missing[@]} -eq 0 ] && exit 0

sudo=""
if [ "$(id -u)" -ne 0 ]; then
  command -v sudo >/dev/null || { echo "setup: need root (or sudo) to install: ${missing[*]}" >&2; exit 1; }
  sudo="sudo"
fi
export DEBIAN_FRONTEND=noninteractive
# One line per step; the installer's own output is shown only when a step fails.
log="$(mktemp)"
trap 'rm -f "$log"' EXIT
step() {
  local what="$1"; shift
  echo "setup: $what"
  if ! "$@" >"$log" 2>&1; then
    cat "$log" >&2
    echo "setup: failed: $what" >&2
    exit 1
  fi
}
step "updating the package lists" $sudo apt-get update -qq
step "installing ${missing[*]}" $sudo apt-get install -y -qq --no-install-recommends "${missing[@]}"
