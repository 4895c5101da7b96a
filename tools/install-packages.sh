#!/usr/bin/env bash
# install-packages.sh run|test|package|fresh|fuzz|bench|mutants|python|scale...: installs the Debian packages for building
# (run), testing (test), making packages (package), testing on a minimal system (fresh), fuzzing (fuzz), measuring (bench),
# mutation testing (mutants), the Python module and its tests (python), or the tests over several machines (scale). Prints
# nothing if no package is missing. Uses sudo if it does not run as root.
set -euo pipefail

build=(g++ cmake ninja-build ccache pkg-config python3 qt6-base-dev libicu-dev libdeflate-dev
       zlib1g-dev nettle-dev libssl-dev libcli11-dev nlohmann-json3-dev libxcb1-dev fonts-dejavu-core qt6-wayland)
testing=(groff-base libgtest-dev libgmock-dev clang-format-14 xvfb openbox xdotool imagemagick pcmanfm thunar x11-utils dbus
         at-spi2-core python3-gi gir1.2-atspi-2.0
         python3-fonttools python-matplotlib-data # the sources of the PDF engine's font tables
         xdg-desktop-portal xdg-desktop-portal-gtk
         mutter nautilus kwin-wayland dolphin qtwayland5 xwayland
         phonon4qt5-backend-null) # instead of the media player that dolphin's libraries would bring along
packing=(dpkg-dev file lintian desktop-file-utils shared-mime-info appstream librsvg2-bin flatpak-builder)
minimal=(debootstrap debian-archive-keyring xvfb)
fuzzing=(clang-14 libclang-rt-14-dev)
mutating=(python3-clang-14 libgtest-dev)
benching=(libbenchmark-dev libxml2-dev valgrind poppler-utils w3m catdoc)

python=(python3-dev pybind11-dev mypy)
scaling=(python3-distributed parallel openssh-server slurm-wlm munge)

packages=("${build[@]}")
for what in "$@"; do
    case $what in
        run) ;;
        test) packages+=("${testing[@]}") ;;
        package) packages+=("${packing[@]}") ;;
        fresh) packages+=("${minimal[@]}") ;;
        fuzz) packages+=("${fuzzing[@]}") ;;
        bench) packages+=("${benching[@]}") ;;
        python) packages+=("${python[@]}") ;;
        scale) packages+=("${python[@]}" "${scaling[@]}") ;;
        mutants) packages+=("${mutating[@]}") ;;
        *) echo "install-packages.sh: unknown set '$what'" >&2; exit 2 ;;
    esac
done

if ! command -v dpkg-query >/dev/null; then
    echo "This is not a Debian system: install the equivalents of: ${packages[*]}" >&2
    exit 0
fi
missing=()
for package in "${packages[@]}"; do
    [ "$(dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null || true)" = installed ] || missing+=("$package")
done
[ ${#missing[@]} -eq 0 ] && exit 0

as_root=()
if [ "$(id -u)" -ne 0 ]; then
    if ! command -v sudo >/dev/null; then
        echo "Not root and no sudo here. Install these packages, then run this again: ${missing[*]}" >&2
        exit 1
    fi
    as_root=(sudo)
fi
echo "Installing: ${missing[*]}" >&2
log=$(mktemp)
trap 'rm -f "$log"' EXIT
apt_get() { "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -qq -o DPkg::Lock::Timeout=600 "$@" >"$log" 2>&1; }
if ! { apt_get update && apt_get install -y --no-install-recommends "${missing[@]}"; }; then
    cat "$log" >&2
    exit 1
fi
