# Shared by run, test and the scripts of this folder: sourced, not run. The caller has set `root` to the checkout.

say() { printf '\033[1m==>\033[0m %s\n' "$*" >&2; }
die() { printf 'error: %s\n' "$*" >&2; exit 1; }

# show_help: what the comment at the script's head says of it.
script=$(realpath -m "$0")
show_help() { sed -n '2,${/^#/!q;s/^# \{0,1\}//p}' "$script"; }

# help_if_asked ARGUMENT...: ends the script with its help where one of its arguments asks for that.
help_if_asked() {
  local argument
  for argument in "$@"; do
    case $argument in -h|--help) show_help; exit 0 ;; esac
  done
}

# misused WHY...: ends the script with 2, for arguments that it does not take.
misused() {
  { printf 'error: %s\n\n' "$*"; show_help; } >&2
  exit 2
}

# one_of KIND ARGUMENT NAME...: misused, unless the argument is one of the names that there are of this kind.
one_of() {
  local kind=$1 argument=$2 name
  shift 2
  for name in "$@"; do
    [ "$name" != "$argument" ] || return 0
  done
  misused "no $kind is named \"$argument\"; there are: $*"
}

as_root() {
  if [ "$(id -u)" -eq 0 ]; then "$@"
  elif command -v sudo >/dev/null 2>&1; then sudo "$@"
  else die "packages are missing and this is neither root nor has sudo. Install them by hand: $*"
  fi
}

# packages PURPOSE...: the package names of these purposes.
packages() {
  local purpose
  for purpose in "$@"; do
    awk -v want="$purpose" '$1 == want { for (i = 2; i <= NF; i++) print $i }' "$root/scripts/packages.txt"
  done
}

# need PURPOSE...: installs what is missing of these purposes; silent and quick when nothing is.
need() {
  local package missing=()
  for package in $(packages "$@"); do
    dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q 'ok installed' || missing+=("$package")
  done
  [ ${#missing[@]} -eq 0 ] && return
  command -v apt-get >/dev/null 2>&1 || die "this is no Debian system; install by other means: ${missing[*]}"
  say "Installing packages: ${missing[*]}"
  as_root env DEBIAN_FRONTEND=noninteractive apt-get update -qq
  as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${missing[@]}" >&2
}

# forget_stale PRESET: a build tree that was configured under another path (a moved or copied checkout), or for another compiler
# than the preset's, is of no use.
forget_stale() {
  local cache=$root/build/$1/CMakeCache.txt compiler=clang++
  [ -f "$cache" ] || return 0
  case $1 in
    release|shipped|package|bench|coverage) compiler=g++ ;;
    windows) compiler= ;;  # its toolchain file names the one there is
  esac
  grep -q "^CMAKE_HOME_DIRECTORY:INTERNAL=$root\$" "$cache" &&
    { [ -z "$compiler" ] || grep -q "^CMAKE_CXX_COMPILER:[A-Z]*=\(.*/\)\?$compiler\$" "$cache"; } ||
    rm -rf "$root/build/$1"
}

# with_libreoffice PRESET: has the preset's builds from now on hold the extension of LibreOffice.
with_libreoffice() {
  local folder=$root/build/$1
  forget_stale "$1"
  grep -qs '^MIRELO_LIBREOFFICE:BOOL=ON' "$folder/CMakeCache.txt" && return
  mkdir -p "$folder"
  (cd "$root" && cmake --preset "$1" -D MIRELO_LIBREOFFICE=ON) >"$folder/build.log" 2>&1 ||
    { tail -n 60 "$folder/build.log" >&2; die "the build failed; the whole output is in $folder/build.log"; }
}

# build PRESET [TARGET...]: configures when needed and builds; the build's own output appears only when it fails.
build() {
  local preset=$1 log
  shift
  log=$root/build/$preset/build.log
  say "Building ($preset)"
  forget_stale "$preset"
  mkdir -p "$root/build/$preset"
  if ! (cd "$root" && { [ -f "build/$preset/build.ninja" ] || cmake --preset "$preset"; } &&
        cmake --build --preset "$preset" ${1:+--target "$@"}) >"$log" 2>&1; then
    tail -n 60 "$log" >&2
    die "the build failed; the whole output is in $log"
  fi
}

# run_tests ARGUMENT...: CTest with these. Tests send Ctrl-C to programs, which ignore it where whoever started them did, as
# scripts do for what they start in the background.
run_tests() {
  (cd "$root" && env --default-signal=INT ctest "$@" --no-tests=error)
}

# folder_in_memory: makes an empty folder in memory and prints its name; fails where the machine has no room there for some GiB of
# files, or lets no program start there.
folder_in_memory() {
  local shared=/dev/shm folder
  [ "$(df --output=avail "$shared" 2>/dev/null | tail -n 1)" -ge $((4 << 20)) ] 2>/dev/null || return 1
  [ "$(awk '$1 == "MemAvailable:" { print $2 }' /proc/meminfo)" -ge $((8 << 20)) ] || return 1
  case $(findmnt --noheadings --output FSTYPE,OPTIONS --target "$shared") in *noexec*) return 1 ;; tmpfs*) ;; *) return 1 ;; esac
  folder=$(mktemp -d "$shared/mirelo-XXXXXX") || return 1
  chmod 1777 "$folder"  # as /tmp: some tests start programs as another user
  echo "$folder"
}
