#!/usr/bin/env bash
# The TV's target: a 32-bit Arm (hard-float) build with Debian's cross compiler, in build-arm/,
# and the whole unit and integration suite run by CTest under user-mode emulation (qemu-arm).
# The target's libraries come from Debian's armhf packages, downloaded and unpacked into
# build-arm/sysroot, never installed; downloads and sysroot stay cached there. Prints the size of
# the stripped Arm plug-in and checks that its frame conversion has its NEON version.
set -euo pipefail

# shellcheck source=lib/packages.bash
source "$(dirname "${BASH_SOURCE[0]}")/lib/packages.bash"

root="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
build="$root/build-arm"
sysroot="$build/sysroot"
debs="$build/debs"
apt_state="$build/apt"
jobs="$(nproc 2>/dev/null || echo 2)"
triplet=arm-linux-gnueabihf
started="$(date +%s)"

# The host's tools: the cross compiler (with its own armhf C and C++ runtime), the emulator, the
# header-only Boost the build uses as it is, and what the tests run on the host (zip, unzip).
packages=(
  cmake make pkg-config
  "g++-$triplet" qemu-user
  libboost-dev
  zip unzip
)

# The target's libraries, as Debian's armhf packages: run-time and -dev halves. Google Benchmark
# only because the project's configuration looks for it; no benchmark is built.
target_packages=(
  libssl3 libssl-dev
  libjsoncpp25 libjsoncpp-dev
  libpng16-16 libpng-dev zlib1g zlib1g-dev
  libgtest-dev libgmock-dev
  libbenchmark1debian libbenchmark-dev
)

# What the suite needs; the benchmarks are left out.
targets=(norvane_zel agentsim unit_tests integration_tests tvsim_tests hostsim_tests console_tests)


install_packages() {
  install_missing_packages arm "${packages[@]}"
}

# apt-get with its own package lists, for armhf alone: the host's apt configuration keeps its
# architectures, so the host's own `apt-get update` never depends on the armhf indexes.
target_apt() {
  local options=(
    -o "Dir::State::Lists=$apt_state/lists" -o "Dir::Cache=$apt_state/cache"
    -o APT::Architecture=armhf -o APT::Architectures=armhf
  )
  # Downloads go to folders apt's unprivileged download user may not be able to write.
  if [ "$(id -u)" -eq 0 ]; then options+=(-o APT::Sandbox::User=root); fi
  apt-get "${options[@]}" "$@"
}

# The downloaded package file of one package, or nothing.
cached_deb() {
  compgen -G "$debs/$1_*_armhf.deb" | head -n 1 || true
}

download_target_packages() {
  local missing=()
  for package in "${target_packages[@]}"; do
    if [ -z "$(cached_deb "$package")" ]; then missing+=("$package"); fi
  done
  if [ "${#missing[@]}" -eq 0 ]; then
    return
  fi
  echo "arm: downloading armhf ${missing[*]}"
  mkdir -p "$apt_state/lists/partial" "$apt_state/cache/archives/partial" "$debs"
  # One index failing (a mirror in sync) leaves the others usable; the download says if a
  # package is really unavailable.
  target_apt update -qq || echo "arm: some armhf package indexes failed; going on with the rest"
  (cd "$debs" && target_apt download -qq "${missing[@]}")
}

# Absolute links in the packages point into the target's root; they are made relative so that
# they resolve inside the sysroot.
relativize_links() {
  local link target
  while IFS= read -r -d '' link; do
    target="$(readlink "$link")"
    ln -sfn "$(realpath -m --relative-to="$(dirname "$link")" "$sysroot$target")" "$link"
  done < <(find "$sysroot" -type l -lname '/*' -print0)
}

# The run-time files the emulated programs load from the sysroot: the cross toolchain's C and
# C++ libraries and its dynamic loader, where an armhf system has them.
link_toolchain_runtime() {
  local runtime library
  runtime="$(dirname "$(realpath "$("$triplet-gcc" -print-file-name=libc.so.6)")")"
  ln -sfn "$runtime/ld-linux-armhf.so.3" "$sysroot/lib/ld-linux-armhf.so.3"
  for library in "$runtime"/*.so.*; do
    if [ ! -e "$sysroot/lib/$triplet/$(basename "$library")" ]; then
      ln -s "$library" "$sysroot/lib/$triplet/"
    fi
  done
}

make_sysroot() {
  local stamp="$sysroot/.packages" wanted deb
  wanted="$(for package in "${target_packages[@]}"; do basename "$(cached_deb "$package")"; done)"
  if [ -f "$stamp" ] && [ "$(cat "$stamp")" = "$wanted" ]; then
    return
  fi
  echo "arm: unpacking the armhf packages into $sysroot"
  rm -rf "$sysroot"
  mkdir -p "$sysroot/lib/$triplet" "$sysroot/usr/include"
  for package in "${target_packages[@]}"; do
    deb="$(cached_deb "$package")"
    dpkg-deb -x "$deb" "$sysroot"
  done
  relativize_links
  link_toolchain_runtime
  ln -sfn /usr/include/boost "$sysroot/usr/include/boost"
  echo "$wanted" >"$stamp"
}

build_targets() {
  cmake -S "$root" -B "$build" -DCMAKE_BUILD_TYPE=RelWithDebInfo \
    "-DCMAKE_TOOLCHAIN_FILE=$root/cmake/toolchains/$triplet.cmake" \
    "-DNORVANE_ARM_SYSROOT=$sysroot" >/dev/null
  cmake --build "$build" -j "$jobs" --target "${targets[@]}"
}

# Fails unless the plug-in is a 32-bit Arm hard-float shared object; prints its stripped size.
report_plugin() {
  local plugin="$build/src/libnorvane_zel.so" header stripped
  header="$("$triplet-readelf" -h "$plugin")"
  if ! grep -q 'Class: *ELF32' <<<"$header" || ! grep -q 'Machine: *ARM' <<<"$header" ||
    ! grep -q 'hard-float ABI' <<<"$header"; then
    echo "arm: $plugin is not a 32-bit Arm hard-float library" >&2
    exit 1
  fi
  stripped="$build/libnorvane_zel.stripped.so"
  "$triplet-strip" -o "$stripped" "$plugin"
  echo "arm: stripped libnorvane_zel.so: $(stat -c %s "$stripped") bytes"
}

# Fails unless the frame conversion's NEON version is in the plug-in: four-plane loads and stores.
report_neon_conversion() {
  local plugin="$build/src/libnorvane_zel.so" loads stores
  loads="$("$triplet-objdump" -d "$plugin" | grep -c $'\tvld4\.8' || true)"
  stores="$("$triplet-objdump" -d "$plugin" | grep -c $'\tvst4\.8' || true)"
  if [ "$loads" -eq 0 ] || [ "$stores" -eq 0 ]; then
    echo "arm: the plug-in has no NEON pixel conversion (vld4.8/vst4.8)" >&2
    exit 1
  fi
  echo "arm: NEON pixel conversion: $loads vld4.8 and $stores vst4.8 instructions"
}

# Under emulation: CTest runs each test program through qemu-arm (the toolchain file says so);
# programs a test starts itself (agentsim) go through it as well. Suites this check does not build
# have only a placeholder test; they are left out by name.
run_tests() {
  local skipped
  skipped="$(cd "$build" && ctest -N -R '_NOT_BUILT$' |
    sed -n 's/.*Test *#[0-9]*: \(.*\)_NOT_BUILT$/\1/p' | paste -sd ' ')"
  if [ -n "$skipped" ]; then echo "arm: suites not built here, not run: $skipped"; fi
  (cd "$build" &&
    NORVANE_TEST_EMULATOR="$(command -v qemu-arm)" QEMU_LD_PREFIX="$sysroot" \
      ctest -j "$jobs" --output-on-failure -E '_NOT_BUILT$')
}

install_packages
download_target_packages
make_sysroot
build_targets
report_plugin
report_neon_conversion
run_tests
echo "arm: done in $(($(date +%s) - started)) s"
