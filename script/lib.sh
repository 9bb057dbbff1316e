# What the scripts share: packages, presets, building. Sourced, not run.
set -euo pipefail

program=$(realpath "$0")
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
cd "$root"

say() { printf '%s\n' "$*"; }

# Ends a script that was called wrongly with the usage that its first comment tells.
usage() {
  sed -n 's/^# usage:/usage:/p' "$program" >&2
  exit 2
}

# Installs the packages that are not there yet. Answers whether all of them are there now.
packages() {
  local missing=() name
  for name in "$@"; do
    dpkg-query -W -f '${Status}' "$name" 2>/dev/null | grep -q 'ok installed' || missing+=("$name")
  done
  [ ${#missing[@]} -eq 0 ] && return 0
  [ "$(id -u)" = 0 ] && command -v apt-get >/dev/null || return 1
  export DEBIAN_FRONTEND=noninteractive
  if [ -z "${apt_updated:-}" ]; then
    apt-get update >/dev/null 2>&1 || true
    apt_updated=1
  fi
  apt-get install -y --no-install-recommends "${missing[@]}" >/dev/null 2>&1
}

need_packages() {
  packages "$@" || { say "error: these packages are needed and could not be installed: $*" >&2; exit 2; }
}

# The packages of a preset's compiler.
preset_packages() {
  case $1 in
    ilp32 | asan) say g++-12-multilib ;;
    arm) say g++-12-arm-linux-gnueabihf qemu-user ;;
  esac
}

compiles() { printf '#include <vector>\nint main() {}\n' | "$@" -x c++ - -o /dev/null 2>/dev/null; }

# Can the preset be built here? Says in one line why not.
preset_available() {
  local preset=$1 ok=1
  # shellcheck disable=SC2046
  packages $(preset_packages "$preset") || true
  case $preset in
    ilp32) compiles g++ -m32 -idirafter /usr/include/x86_64-linux-gnu || ok=0 ;;
    asan)
      compiles g++ -m32 -idirafter /usr/include/x86_64-linux-gnu -fsanitize=address,undefined || ok=0
      ;;
    arm) compiles arm-linux-gnueabihf-g++-12 && command -v qemu-arm >/dev/null || ok=0 ;;
  esac
  [ "$ok" = 1 ] && return 0
  say "note: preset $preset is left out: its compiler or emulator can't be installed here"
  return 1
}

# Are the header libraries of the simulator here? Sets node_option for cmake. Without readline its
# prompt has no line editing; that is no reason to stop.
node_option=-DPM_BUILD_NODE=ON
find_node_packages() {
  packages libreadline-dev || true
  packages lib32readline-dev || true
  packages libtomlplusplus-dev libcli11-dev nlohmann-json3-dev && return 0
  say "note: pmnode is left out: its header libraries can't be installed here"
  node_option=-DPM_BUILD_NODE=OFF
  return 1
}

need_build_tools() { need_packages g++ cmake ninja-build; }

# The tests need GoogleTest's source; who only runs the simulator needs neither.
tests_option=-DPM_BUILD_TESTS=OFF

# Configures and builds a preset; a log is shown only when something is wrong. Tests that a folder is
# configured with stay: taking them out would cost the next script/test their build.
build() {
  local preset=$1 log options=("$node_option")
  shift
  mkdir -p "build/$preset"
  log=build/$preset/build.log
  if [ ! -e "build/$preset/CMakeCache.txt" ] || [ "$tests_option" = -DPM_BUILD_TESTS=ON ]; then
    options+=("$tests_option")
  fi
  if ! { cmake --preset "$preset" "${options[@]}" && cmake --build --preset "$preset" "$@"; } \
    >"$log" 2>&1; then
    tail -n 60 "$log" >&2
    say "error: preset $preset does not build; the whole log is in $log" >&2
    return 1
  fi
}

# clang with the parts that fuzzing and coverage need.
clang_available() {
  packages clang-19 libclang-rt-19-dev llvm-19 && command -v clang++-19 >/dev/null && return 0
  say "clang 19 can't be installed here"
  return 1
}

fuzzers_available() {
  need_build_tools
  clang_available || return 1
  printf 'extern "C" int LLVMFuzzerTestOneInput(const char *, unsigned long) { return 0; }\n' |
    clang++-19 -fsanitize=fuzzer,address,undefined -x c++ - -o /dev/null 2>/dev/null && return 0
  say "clang 19 has no fuzzer here"
  return 1
}

# The targets: fuzz/NAME_fuzz.cpp, as far as they could be built.
fuzz_targets() {
  local source name
  for source in fuzz/*_fuzz.cpp; do
    name=$(basename "$source" _fuzz.cpp)
    [ ! -x "build/fuzz/fuzz/fuzz_$name" ] || say "$name"
  done
}

fuzz_dictionary() { [ ! -f "fuzz/dictionary/$1" ] || say "-dict=fuzz/dictionary/$1"; }
