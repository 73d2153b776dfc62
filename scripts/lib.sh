# Shared by run, test and the scripts of this folder: sourced, not run. The caller has set `root` to the checkout.

say() { printf '\033[1m==>\033[0m %s\n' "$*" >&2; }
die() { printf 'error: %s\n' "$*" >&2; exit 1; }

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

# build PRESET [TARGET...]: configures when needed and builds; the build's own output appears only when it fails.
build() {
  local preset=$1 log
  shift
  log=$root/build/$preset/build.log
  mkdir -p "$root/build/$preset"
  say "Building ($preset)"
  # A build tree that was configured under another path (a moved or copied checkout) is of no use.
  if [ -f "$root/build/$preset/CMakeCache.txt" ] &&
     ! grep -q "^CMAKE_HOME_DIRECTORY:INTERNAL=$root\$" "$root/build/$preset/CMakeCache.txt"; then
    rm -rf "$root/build/$preset"
    mkdir -p "$root/build/$preset"
  fi
  if ! (cd "$root" && { [ -f "build/$preset/build.ninja" ] || cmake --preset "$preset"; } &&
        cmake --build --preset "$preset" ${1:+--target "$@"}) >"$log" 2>&1; then
    tail -n 60 "$log" >&2
    die "the build failed; the whole output is in $log"
  fi
}
