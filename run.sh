#!/usr/bin/env bash
# Sets up, builds and bakes Brookfall on a Debian machine, then plays or tests.
#   bash run.sh play   install what is missing, build, bake the data, start the game
#   bash run.sh test   the same set-up, a format check, then every test (sanitized build, under Xvfb)
set -euo pipefail
cd "$(dirname "$0")"
mode="${1:-play}"

packages=(cmake ninja-build g++ pkg-config libgtest-dev libgmock-dev libbenchmark-dev
  libsdl2-dev libsdl2-image-dev libsdl2-mixer-dev libopenal-dev libopenal1
  libavformat-dev libavcodec-dev libswscale-dev libavutil-dev
  libgl-dev libglu1-mesa-dev mesa-common-dev libgl1-mesa-dri xvfb xauth fonts-dejavu-core libfreetype-dev
  clang-format zenity xdotool)

install_missing() {
  local missing=()
  for p in "${packages[@]}"; do
    dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
  done
  [ ${#missing[@]} -eq 0 ] && return
  local sudo=""
  [ "$(id -u)" -eq 0 ] || sudo="sudo"
  $sudo apt-get update -qq
  DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -qq --no-install-recommends "${missing[@]}"
}

build() {  # build DIR [cmake options...]
  local dir="$1"; shift
  cmake -S . -B "$dir" -G Ninja "$@" > /dev/null
  cmake --build "$dir"
}

# Fails, naming the files, when a tracked C++ file under src/, tools/, tests/ or
# bench/ is not as clang-format writes it with the top-level .clang-format.
check_format() {
  if ! git rev-parse --is-inside-work-tree > /dev/null 2>&1; then
    echo "Not a git checkout, so the format check is skipped."
    return 0
  fi
  local files=() report offending
  mapfile -d '' -t files < <(git ls-files -z -- 'src/*.cpp' 'src/*.h' 'tools/*.cpp' 'tools/*.h' \
    'tests/*.cpp' 'tests/*.h' 'bench/*.cpp' 'bench/*.h')
  [ ${#files[@]} -eq 0 ] && return 0
  report="$(clang-format --dry-run --Werror "${files[@]}" 2>&1)" && return 0
  offending="$(grep -o '^[^:]*:[0-9]*:[0-9]*: error: code should be clang-formatted' <<< "$report" |
    cut -d: -f1 | sort -u)"
  if [ -n "$offending" ]; then
    echo "Not formatted as .clang-format says (clang-format -i FILE fixes each):" >&2
    sed 's/^/  /' <<< "$offending" >&2
  else
    echo "$report" >&2  # clang-format itself failed: its own words say why
  fi
  return 1
}

# Plays the game under Xvfb from its main menu through the first level to the
# score counters, and keeps the screenshots that the script takes.
record_demo() {
  local runner="$PWD/build/brookfall-headless" script="$PWD/data/demo/firstLevel.script"
  if [ ! -x "$runner" ] || [ ! -f "$script" ]; then
    echo "No demo can be recorded yet: the headless runner or the demo script is missing."
    return
  fi
  local shots="$PWD/build/demo"
  rm -rf "$shots" && mkdir -p "$shots"
  echo "Recording a short demo of the first level under Xvfb instead..."
  (cd "$shots" && LIBGL_ALWAYS_SOFTWARE=1 ALSOFT_DRIVERS=null xvfb-run -a -s "-screen 0 1280x720x24" \
    "$runner" --data "$PWD/../data" --window --menus 'maps\testLevel.rill' "$script" > demo-log.txt 2>&1) || true
  echo "Demo screenshots are in $shots"
}

install_missing
case "$mode" in
  play)
    build build -DCMAKE_BUILD_TYPE=RelWithDebInfo -DBROOKFALL_TESTS=OFF
    if [ -z "${DISPLAY:-}" ] && [ -z "${WAYLAND_DISPLAY:-}" ]; then
      echo "No display found, so the game can't open its window here."
      record_demo
      exit 0
    fi
    cd build/data
    exec ../brookfall
    ;;
  test)
    # Formatting first: a slip fails in a second instead of after the build.
    check_format || exit 1
    build build-test -DCMAKE_BUILD_TYPE=Debug -DBROOKFALL_SANITIZE=ON -DBROOKFALL_STRICT=ON -DBROOKFALL_BENCHMARKS=OFF
    export ASAN_OPTIONS="detect_leaks=1:abort_on_error=0"
    export LSAN_OPTIONS="suppressions=$PWD/tests/lsan.supp:print_suppressions=0"
    # Whole levels are replayed and probed by an optimised runner: through the
    # sanitized one each level takes minutes.
    cmake -S . -B build-fast -G Ninja -DCMAKE_BUILD_TYPE=Release -DBROOKFALL_TESTS=OFF \
      -DBROOKFALL_BENCHMARKS=OFF > /dev/null
    cmake --build build-fast --target brookfall-headless
    export BROOKFALL_FAST_RUNNER="$PWD/build-fast/brookfall-headless"
    # SDL plays music into a silent dummy device: trying ALSA on a machine without a sound
    # card leaves allocations that make LeakSanitizer symbolize for minutes at every exit.
    # The audio tests choose their own recording devices.
    # OpenAL reads an empty config of its own, not /dev/null: on some machines /dev/null is a
    # plain file that gathers every redirected output, and OpenAL's complaints about it went
    # back into it, growing until the machine ran out of memory.
    openal_config="$PWD/build-test/openal-empty.conf"
    : > "$openal_config"
    export LIBGL_ALWAYS_SOFTWARE=1 ALSOFT_DRIVERS=wave ALSOFT_CONF="$openal_config" SDL_AUDIODRIVER=dummy
    # A failed test runs up to twice more: LeakSanitizer's tracer now and then crashes
    # at exit among the software GL driver's threads after a passing test.
    xvfb-run -a -s "-screen 0 1920x1080x24" ctest --test-dir build-test --output-on-failure -j 2 \
      --repeat until-pass:3
    # The splash is the one second thread: its tests run again under ThreadSanitizer.
    cmake -S . -B build-tsan -G Ninja -DCMAKE_BUILD_TYPE=Debug -DBROOKFALL_THREAD_SANITIZE=ON \
      -DBROOKFALL_BENCHMARKS=OFF > /dev/null
    cmake --build build-tsan --target test_menus
    TSAN_OPTIONS="halt_on_error=1" xvfb-run -a -s "-screen 0 1920x1080x24" \
      build-tsan/tests/test_menus --gtest_filter='SplashScreen*' --gtest_brief=1
    ;;
  *)
    echo "usage: bash run.sh play|test" >&2; exit 2 ;;
esac
