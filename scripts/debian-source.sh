#!/usr/bin/env bash
# Unpacks a Debian source package, with Debian's patches applied, into a folder, for a build that
# must compile a library itself rather than link Debian's binary (the libcxx preset: a C++ library
# compiled against libstdc++ cannot be linked into a libc++ program).
#
#   scripts/debian-source.sh PACKAGE FOLDER
#
# The source comes from the same archive and release as the installed binary packages, through a
# private apt state under FOLDER: the host's apt configuration and package lists are not touched.
# The unpacked tree is FOLDER/PACKAGE; a stamp with the version keeps a second run quick.
set -euo pipefail

Package="${1:?usage: scripts/debian-source.sh PACKAGE FOLDER}"
Folder="${2:?usage: scripts/debian-source.sh PACKAGE FOLDER}"
mkdir -p "$Folder"
Folder="$(cd "$Folder" && pwd)"
Stamp="$Folder/$Package.version"
if [ -f "$Stamp" ] && [ -d "$Folder/$Package" ]; then
	exit 0
fi

# The host's deb lines, turned into deb-src lines of the same archives and suites.
Apt="$Folder/.apt"
rm -rf "$Apt"
mkdir -p "$Apt/lists/partial" "$Apt/cache/archives/partial" "$Apt/download"
{
	grep -hE '^(URIs|Suites|Components|Signed-By):' /etc/apt/sources.list.d/*.sources 2>/dev/null |
		awk 'BEGIN { print "Types: deb-src" } /^URIs:/ && NR > 1 { print ""; print "Types: deb-src" } { print }'
} >"$Apt/sources.sources"
if [ -f /etc/apt/sources.list ]; then
	sed -n 's/^deb \(.*\)/deb-src \1/p' /etc/apt/sources.list >"$Apt/sources.list"
else
	: >"$Apt/sources.list"
fi
mkdir -p "$Apt/parts"
cp "$Apt/sources.sources" "$Apt/parts/host.sources"
Options=(-o Dir::Etc::SourceList="$Apt/sources.list" -o Dir::Etc::SourceParts="$Apt/parts"
	-o Dir::State::Lists="$Apt/lists" -o Dir::Cache="$Apt/cache" -o APT::Sandbox::User="$(id -un)")
apt-get "${Options[@]}" update -qq
(cd "$Apt/download" && apt-get "${Options[@]}" source --download-only -qq "$Package" >/dev/null)
rm -rf "${Folder:?}/$Package"
# apt checked the files against the archive's signed index; the maintainer's own signature on the
# .dsc would need the Debian keyrings, which a build machine has no use for.
dpkg-source --no-check -x "$Apt"/download/*.dsc "$Folder/$Package" >/dev/null
# dpkg-source leaves the upstream tarball beside the tree.
rm -f "$Folder"/*.orig.tar.*
basename "$Apt"/download/*.dsc .dsc >"$Stamp"
rm -rf "$Apt"
