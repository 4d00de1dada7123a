# Sourced by the other scripts: installs the Debian packages that the build and its tests need, if missing.
install_missing() {
    local package missing=() as_root=()
    for package in "$@"; do
        dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q 'install ok installed' || missing+=("$package")
    done
    [ ${#missing[@]} -gt 0 ] || return 0
    [ "$(id -u)" -eq 0 ] || as_root=(sudo)
    echo "Installing: ${missing[*]}"
    "${as_root[@]}" apt-get update -qq
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${missing[@]}"
}
install_missing g++ cmake ninja-build ccache qt6-base-dev qt6-base-dev-tools qt6-svg-dev libgl1-mesa-dev \
    qt6-tools-dev qt6-documentation-tools qt6-l10n-tools libqt6sql6-sqlite qt6-webengine-dev qt6-qpa-plugins libsqlite3-dev libpq-dev postgresql pkg-config mdbtools-dev libglib2.0-dev mdbtools libseccomp-dev libtiff-dev libharfbuzz-dev libgtest-dev librapidcheck-dev xvfb xauth openbox xdotool dbus at-spi2-core python3-gi gir1.2-atspi-2.0 fonts-liberation2 fonts-dejavu-core fonts-droid-fallback poppler-utils qpdf libtiff-tools libxml2-utils gnumeric unrtf
