#!/usr/bin/env bash
# Installs the Debian packages the build, tests, benchmarks and fuzzers need. Quick and
# silent when everything is already there; needs root (or sudo) only when something is missing.
set -euo pipefail

packages=(
	cmake ninja-build g++ make git pkg-config
	clang libclang-rt-14-dev clang-format
	libsimdjson-dev nlohmann-json3-dev libcli11-dev
	libgtest-dev libgmock-dev libbenchmark-dev
	libssl-dev libdw-dev
	chromium python3
	libcpp-httplib-dev curl openssl libcurl4-openssl-dev
	libespeak-ng-dev espeak-ng-data
	libfast-float-dev
	# The portability presets (scripts/portability.sh): arm64 cross build under qemu, clang with
	# libc++, GoogleTest's source to build it against libc++, and what cpp-httplib's source
	# package needs to be unpacked and compiled (scripts/debian-source.sh).
	g++-aarch64-linux-gnu qemu-user libc++-14-dev libc++abi-14-dev googletest
	dpkg-dev zlib1g-dev libbrotli-dev
)

missing=()
for p in "${packages[@]}"; do
	if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed"; then
		missing+=("$p")
	fi
done
[ ${#missing[@]} -eq 0 ] && exit 0

echo "Installing: ${missing[*]}"
sudo=""
[ "$(id -u)" -eq 0 ] || sudo="sudo"
export DEBIAN_FRONTEND=noninteractive
$sudo apt-get update -qq
$sudo apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
