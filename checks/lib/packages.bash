# Shared by ./dev and the checks: installs Debian packages that are missing.

# The project's build on this machine: compiler, build tools, the libraries it links, and the
# archive tools the log collection runs.
# shellcheck disable=SC2034 # used by the scripts that source this file
build_packages=(
  cmake make g++ pkg-config
  libboost-dev libssl-dev libjsoncpp-dev libpng-dev
  libgtest-dev libgmock-dev libbenchmark-dev
  zip unzip
)

# What the whole test suite needs besides: the cross compiler that builds a plug-in for another
# machine, which agentsim must refuse, and Chromium with its driver and Selenium for the
# console's browser tests.
# shellcheck disable=SC2034
test_suite_packages=(
  gcc-arm-linux-gnueabihf
  chromium chromium-driver python3-selenium
)

as_root() {
  if [ "$(id -u)" -eq 0 ]; then "$@"; else sudo "$@"; fi
}

# install_missing_packages LABEL PACKAGE...: installs those not installed yet; the package lists
# are refreshed only when something is missing.
install_missing_packages() {
  local label="$1" missing=() package
  shift
  for package in "$@"; do
    if ! dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q "install ok installed"; then
      missing+=("$package")
    fi
  done
  if [ "${#missing[@]}" -gt 0 ]; then
    echo "$label: installing ${missing[*]}"
    as_root apt-get update -qq
    as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends \
      "${missing[@]}"
  fi
}
