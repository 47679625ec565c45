# shellcheck shell=bash disable=SC2034
# Helpers of the repository's shell commands: sourced, never run.

# say TEXT...: what is being done, on standard error.
say() {
  printf '== %s\n' "$*" >&2
}

# fail TEXT...: says what went wrong and ends the script.
fail() {
  printf 'error: %s\n' "$*" >&2
  exit 1
}

# quietly LOG COMMAND...: runs a command into a log file; shows the log's end when it fails.
quietly() {
  local log=$1
  shift
  if ! "$@" >>"$log" 2>&1 </dev/null; then
    tail -n 40 "$log" >&2
    fail "failed: $* (whole log: $log)"
  fi
}

# missing_packages NAME...: those of the Debian packages that are not installed.
missing_packages() {
  local installed name
  # Its status is of no use: it is a failure as soon as one package is unknown.
  installed=$(dpkg-query -W -f '${db:Status-Status} ${Package}\n' "$@" 2>/dev/null | sed -n 's/^installed //p') || true
  for name in "$@"; do
    grep -qxF -- "$name" <<<"$installed" || printf '%s\n' "$name"
  done
}

# as_root COMMAND...: runs it as root, with sudo when needed; sudo asks for a password only at a terminal.
as_root() {
  if [ "$(id -u)" -eq 0 ]; then
    "$@"
  elif ! command -v sudo >/dev/null; then
    fail "root rights are needed for: $*"
  elif [ -t 0 ]; then
    sudo "$@"
  else
    sudo -n "$@"
  fi
}

# ensure_packages NAME...: installs the Debian packages that are missing.
ensure_packages() {
  local missing
  mapfile -t missing < <(missing_packages "$@")
  [ ${#missing[@]} -gt 0 ] || return 0
  command -v apt-get >/dev/null || fail "these Debian packages are needed: ${missing[*]}"
  say "installing Debian packages: ${missing[*]}"
  # A package index from last week names versions that the mirror no longer has.
  as_root env DEBIAN_FRONTEND=noninteractive apt-get update -q </dev/null >&2
  as_root env DEBIAN_FRONTEND=noninteractive apt-get install -q -y --no-install-recommends "${missing[@]}" \
    </dev/null >&2
}

# What building natively takes.
native_packages=(
  build-essential ca-certificates ccache cmake ninja-build pkg-config
  libwxgtk3.2-dev flite1-dev portaudio19-dev libutf8proc-dev librsvg2-dev libpng-dev
  libgtk-3-dev libasound2-dev libjack-jackd2-dev libatspi2.0-dev libxtst-dev libxext-dev libxrandr-dev
  libespeak-ng-dev libxcb-shape0-dev libxcb-xfixes0-dev libxcb-xinput-dev libxcb-xtest0-dev
  fonts-dejavu-core
)
# A display, sound and eyes of one's own, for tests and demonstrations.
display_packages=(xvfb openbox dbus-daemon at-spi2-core xdotool x11-utils x11-xserver-utils imagemagick sox)
# Voices of the system, and a sound server that plays them into nothing.
voice_packages=(
  libespeak-ng1 espeak-ng espeak-ng-data speech-dispatcher speech-dispatcher-espeak-ng speech-dispatcher-flite pulseaudio
)
# Other programs that a person reads from: the tests that drive the real program need them.
scenario_packages=(
  python3 python3-gi gir1.2-atspi-2.0 procps xclip xterm mousepad featherpad zenity chromium xserver-xephyr weston
  trayer xserver-xorg-core xserver-xorg-video-dummy
)
test_packages=(
  libgtest-dev libgmock-dev libbenchmark-dev "${display_packages[@]}" "${voice_packages[@]}" "${scenario_packages[@]}"
)
# googletest: the sources, of which the cross build makes its own library. The characters are compiled by a program
# of this machine, which draws with librsvg.
windows_packages=(
  build-essential ccache cmake ninja-build pkg-config dpkg-dev librsvg2-dev libpng-dev libutf8proc-dev
  g++-mingw-w64-x86-64-posix libz-mingw-w64-dev googletest wine wine64
)
fuzz_packages=(clang-14 clang libclang-rt-14-dev)

# build_jobs: how many compilers at a time: the cores, and at least a gigabyte of memory each.
build_jobs() {
  local cores gigabytes
  cores=$(nproc)
  gigabytes=$(awk '/^MemAvailable/ { print int($2 / 1048576) }' /proc/meminfo)
  if [ "$gigabytes" -ge 1 ] && [ "$gigabytes" -lt "$cores" ]; then
    cores=$gigabytes
  fi
  printf '%s\n' "$cores"
}

# build_preset PRESET OPTION...: configures and builds it; -D options go to the configuration, others to the build.
build_preset() {
  local preset=$1 option configure=() build=()
  shift
  for option in "$@"; do
    case $option in
      -D*) configure+=("$option") ;;
      *) build+=("$option") ;;
    esac
  done
  local root
  root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
  mkdir -p "$root/build"
  say "building ($preset)"
  (
    cd "$root"
    : >"build/configure-$preset.log"
    quietly "build/configure-$preset.log" cmake --preset "$preset" ${configure[@]+"${configure[@]}"}
    cmake --build --preset "$preset" -j "$(build_jobs)" ${build[@]+"${build[@]}"} >&2 </dev/null
  ) || exit 1
}
