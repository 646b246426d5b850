#!/usr/bin/env bash
# Fills a folder with the arm64 (aarch64) copies of the Debian libraries the standalone build
# links, for the cross build of the `arm64` preset. Debian cannot install a -dev package for two
# architectures at once (installing libsimdjson-dev:arm64 would remove the host's), so the arm64
# packages are only downloaded and unpacked into the folder; nothing on the host changes except
# that apt learns about the arm64 architecture (dpkg --add-architecture, apt-get update).
#
#   scripts/arm64-sysroot.sh SYSROOT [EXTRA-PACKAGE...]
#
# Every package below is taken with the packages it depends on, except those the cross
# toolchain (g++-aarch64-linux-gnu) brings itself: the C library and the compiler's runtime.
# A stamp in SYSROOT keeps a second run with the same list quick.
set -euo pipefail

# The libraries the build, the programs and the tests link, one a line. Add a line here when the
# standalone build starts to link another library.
Packages=(
	libsimdjson-dev
	libfast-float-dev
	nlohmann-json3-dev
	libcli11-dev
	libgtest-dev
	libgmock-dev
	libssl-dev
	libdw-dev
	libcurl4-openssl-dev
	libcpp-httplib-dev
	libespeak-ng-dev
)

# Provided by the cross toolchain in /usr/aarch64-linux-gnu, which the compiler and the emulator use.
ToolchainOwned=(
	libc6 libc6-dev libc-dev-bin libgcc-s1 libstdc++6 gcc-12-base linux-libc-dev
	libcrypt1 libcrypt-dev libnsl2 libnsl-dev libtirpc3 libtirpc-dev libtirpc-common rpcsvc-proto
)

Sysroot="${1:?usage: scripts/arm64-sysroot.sh SYSROOT [EXTRA-PACKAGE...]}"
shift
Packages+=("$@")
mkdir -p "$Sysroot"
Sysroot="$(cd "$Sysroot" && pwd)"
Stamp="$Sysroot/.packages"
# The stamp names the layout too, so that a change to how the folder is laid out redoes it.
Wanted="$(printf 'layout 4\n%s\n' "${Packages[@]}")"
if [ -f "$Stamp" ] && [ "$(cat "$Stamp")" = "$Wanted" ]; then
	exit 0
fi

sudo=""
[ "$(id -u)" -eq 0 ] || sudo="sudo"
if ! dpkg --print-foreign-architectures | grep -qx arm64; then
	$sudo dpkg --add-architecture arm64
	$sudo apt-get update -qq
elif ! apt-cache show libsimdjson-dev:arm64 >/dev/null 2>&1; then
	$sudo apt-get update -qq
fi

# Every package the list needs, by name as apt-cache prints them: "name:arm64" for arm64 packages,
# a bare name or "<name:arm64>" for architecture-independent ones (headers, data).
Requested=()
for Package in "${Packages[@]}"; do
	Requested+=("$Package:arm64")
done
mapfile -t Resolved < <(apt-cache depends --recurse --no-recommends --no-suggests --no-conflicts --no-breaks \
	--no-replaces --no-enhances "${Requested[@]}" | grep -v '^ ' | tr -d '<>' | sort -u)

# One look-up for all of them: which exist as arm64 packages and which are architecture-independent.
Names=()
for Entry in "${Resolved[@]}"; do
	Name="${Entry%%:*}"
	Skip=0
	for Owned in "${ToolchainOwned[@]}"; do
		[ "$Name" = "$Owned" ] && Skip=1
	done
	[ $Skip -eq 1 ] || Names+=("$Name")
done
mapfile -t Names < <(printf '%s\n' "${Names[@]}" | sort -u)
Kinds="$(apt-cache show --no-all-versions "${Names[@]}" "${Names[@]/%/:arm64}" 2>/dev/null |
	awk '/^Package: /{Name=$2} /^Architecture: /{print Name " " $2}' | sort -u)"
Downloads=()
for Name in "${Names[@]}"; do
	if grep -qx "$Name arm64" <<<"$Kinds"; then
		Downloads+=("$Name:arm64")
	elif grep -qx "$Name all" <<<"$Kinds"; then
		Downloads+=("$Name")
	fi
done
mapfile -t Downloads < <(printf '%s\n' "${Downloads[@]}" | sort -u)

Debs="$Sysroot/.debs"
rm -rf "$Debs"
mkdir -p "$Debs"
echo "arm64 sysroot: downloading ${#Downloads[@]} packages into $Sysroot"
(cd "$Debs" && apt-get download -qq "${Downloads[@]}" 2>&1 | grep -v "unsandboxed" || true)
for Deb in "$Debs"/*.deb; do
	dpkg-deb -x "$Deb" "$Sysroot"
done
rm -rf "$Debs"

# Development links that point at absolute paths would leave the sysroot; make them relative.
find "$Sysroot" -type l -lname '/*' | while read -r Link; do
	Target="$(readlink "$Link")"
	ln -sfn "$(realpath -m --relative-to="$(dirname "$Link")" "$Sysroot$Target")" "$Link"
done
# Debian keeps architecture-specific headers (OpenSSL's configuration, for one) in
# usr/include/aarch64-linux-gnu, which a native compiler searches by itself and a cross compiler
# does not: they join the common headers, which the toolchain file puts on the search path.
# Some libraries still install into /lib, which Debian merges into /usr/lib on a real system:
# the sysroot gets the same single library folder, where the linker and qemu look.
if [ -d "$Sysroot/lib/aarch64-linux-gnu" ]; then
	cp -an "$Sysroot/lib/aarch64-linux-gnu/." "$Sysroot/usr/lib/aarch64-linux-gnu/"
fi
if [ -d "$Sysroot/usr/include/aarch64-linux-gnu" ]; then
	cp -rn "$Sysroot/usr/include/aarch64-linux-gnu/." "$Sysroot/usr/include/"
fi
# A few libraries keep private companions in a folder of their own, found on a real system through
# an absolute RUNPATH (libpulse's /usr/lib/aarch64-linux-gnu/pulseaudio), which here would point
# at the host. The companions join the single library folder, where the linker and qemu look.
Libraries="$Sysroot/usr/lib/aarch64-linux-gnu"
find "$Libraries" -maxdepth 1 -name 'lib*.so*' -type f -print0 | xargs -0 -r readelf -d 2>/dev/null |
	sed -n 's/.*R\(UN\)\?PATH.*\[\(.*\)\]/\2/p' | tr ':' '\n' | grep '^/usr/lib/aarch64-linux-gnu/.' | sort -u |
	while read -r Folder; do
		[ -d "$Sysroot$Folder" ] || continue
		find "$Sysroot$Folder" -maxdepth 1 -name 'lib*.so*' | while read -r Companion; do
			[ -e "$Libraries/$(basename "$Companion")" ] ||
				ln -s "$(realpath --relative-to="$Libraries" "$Companion")" "$Libraries/$(basename "$Companion")"
		done
	done
echo "$Wanted" > "$Stamp"
