# Sourced by run, test and the commands of dev/: installs by package name what is missing, and builds.
# Works as root or with sudo; says what it does; quick when nothing is to be done.

tessaro_packages=(build-essential cmake ninja-build qt6-base-dev zlib1g-dev liblodepng-dev libgtest-dev libgmock-dev fontconfig fonts-dejavu-core)
tessaro_test_packages=(gdal-bin locales poppler-utils aspell aspell-en)
tessaro_lint_packages=(clang-16 clang-tidy-16 clang-format-16 libclang-rt-16-dev python3)

# install_missing PACKAGE...
install_missing() {
    local missing=() package
    for package in "$@"; do
        dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q 'install ok installed' || missing+=("$package")
    done
    [ ${#missing[@]} -eq 0 ] && return 0
    echo "installing: ${missing[*]}"
    local as_root=()
    [ "$(id -u)" -eq 0 ] || as_root=(sudo)
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get update -qq
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
}

# build PRESET [cmake argument...]: configures once, then builds what has changed.
build() {
    local preset=$1
    shift
    local folder=build
    [ "$preset" = release ] || folder=build/$preset
    [ -f "$folder/build.ninja" ] || cmake --preset "$preset" >/dev/null
    cmake --build "$folder" "$@"
}
