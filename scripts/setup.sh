# Sourced by ./run, ./test, bench/run and .ci/run: what the machine needs, and the one build of the project (of the
# preset named in `preset`; dev if none is).
set -euo pipefail
root="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
use_preset() {
    preset="$1"
    build="$root/build/$preset"
}
use_preset "${preset:-dev}"

say() { printf '%s\n' "▸ $*"; }

# Debian packages of the build, the program and the tests.
packages=(g++ cmake ninja-build npm qt6-base-dev qt6-translations-l10n libicu-dev libxlsxwriter-dev
          zlib1g-dev libsodium-dev libgtest-dev libbenchmark-dev fonts-noto-cjk)

have() {
    case "$1" in
        npm) command -v npm >/dev/null ;; # any npm will do; Debian's would bring a second one
        g++ | cmake) command -v "$1" >/dev/null ;;
        *) dpkg-query -W -f='${Status}' "$1" 2>/dev/null | grep -q 'ok installed' ;;
    esac
}

install_packages() {
    local missing=()
    for package in "$@"; do have "$package" || missing+=("$package"); done
    [ "${#missing[@]}" -eq 0 ] && return 0
    if ! command -v apt-get >/dev/null; then
        say "次のパッケージ（Debian の名前）を入れてから、もう一度実行してください: ${missing[*]}"
        exit 1
    fi
    say "パッケージを入れています: ${missing[*]}"
    local sudo=()
    [ "$(id -u)" -eq 0 ] || sudo=(sudo)
    "${sudo[@]}" apt-get update -qq
    DEBIAN_FRONTEND=noninteractive "${sudo[@]}" apt-get install -y -qq --no-install-recommends \
        "${missing[@]}" >/dev/null
}

# build_project target...: configures where a preset is new or changed, and builds what changed.
build_project() {
    if [ ! -f "$build/build.ninja" ] || [ "$root/CMakePresets.json" -nt "$build/build.ninja" ]; then
        say "ビルドを準備しています（build/$preset）"
        mkdir -p "$build"
        (cd "$root" && cmake --preset "$preset" >"$build/configure.log" 2>&1) || {
            cat "$build/configure.log"
            exit 1
        }
    fi
    say "ビルドしています（変わったところだけ）"
    if ! cmake --build "$build" --target "$@" >"$build/build.log" 2>&1; then
        tail -n 60 "$build/build.log"
        say "ビルドに失敗しました。全文は build/$preset/build.log にあります。"
        exit 1
    fi
}
