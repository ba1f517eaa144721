#!/bin/bash
# SPDX-License-Identifier: MIT
# build.sh PACKAGES_DIR OUTPUT_DIR [NAME]
# Makes a container image of the packages and what of Debian they need, from the sources
# that apt has here: OUTPUT_DIR/swctl.tar, for podman load, docker load and ctr image
# import, and NAME (localhost/swctl) in podman's own store. No registry is asked.
set -euo pipefail
source_dir=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
packages=$(cd "$1" && pwd)
mkdir -p "$2"
output=$(cd "$2" && pwd)
name=${3:-localhost/swctl}
version=$(dpkg-deb -f "$packages"/swctl-tools_*.deb Version)
work=$(mktemp -d)
container=
export BUILDAH_FORMAT=docker
clean() {
  [ -z "$container" ] || buildah rm "$container" >/dev/null
  rm -rf "$work"
}
trap clean EXIT

# What mmdebstrap installs from: Debian's own sources of this machine, and the packages.
sources() {
  apt-get indextargets --format "deb \$(REPO_URI) \$(RELEASE) \$(COMPONENT)" \
    'Created-By: Packages' 'Origin: Debian'
  echo "deb [trusted=yes] copy:$work/pool ./"
}

# The root file system. It holds what is essential, so no apt; and no documentation.
make_root() {
  local codename
  codename=$(sed -n 's/^VERSION_CODENAME=//p' /etc/os-release)
  mkdir "$work/pool"
  chmod 755 "$work"
  cp "$packages"/*.deb "$work/pool"
  (cd "$work/pool" && dpkg-scanpackages -m . >Packages 2>/dev/null)
  sources >"$work/sources.list"
  SOURCE_DATE_EPOCH=$(dpkg-parsechangelog -l "$source_dir/../debian/changelog" -S Timestamp) \
    mmdebstrap --quiet --variant=essential --include=swctl-tools,iproute2,iputils-ping \
    --dpkgopt='path-exclude=/usr/share/man/*' --dpkgopt='path-exclude=/usr/share/locale/*' \
    --dpkgopt='path-exclude=/usr/share/doc/*' --dpkgopt='path-include=/usr/share/doc/*/copyright' \
    "$codename" "$work/root.tar" "$work/sources.list"
}

# Health checks are no part of OCI's format, but of Docker's, which podman has too.
make_image() {
  container=$(buildah from scratch)
  buildah add --quiet "$container" "$work/root.tar" / >/dev/null
  buildah copy --quiet --chmod 755 "$container" "$source_dir/swctl-switch" /usr/bin/ >/dev/null
  buildah config --entrypoint '["swctl-switch"]' --cmd '' --volume /var/lib/swctl \
    --env VCHIP_IMAGE=/var/lib/swctl/chip.img --env SWCTL_STATE_DIRECTORY=/var/lib/swctl \
    --env PATH=/usr/sbin:/usr/bin:/sbin:/bin --env LANG=C.UTF-8 \
    --label org.opencontainers.image.title=swctl \
    --label org.opencontainers.image.version="$version" \
    --healthcheck 'CMD swctl-switch healthy' --healthcheck-interval 10s \
    --healthcheck-start-period 30s --healthcheck-timeout 5s "$container"
  buildah commit --quiet --format docker "$container" "$name:$version" >/dev/null
  buildah tag "$name:$version" "$name:latest"
}

make_root
make_image
rm -f "$output/swctl.tar"
podman save --quiet --format docker-archive --output "$output/swctl.tar" \
  "$name:$version" "$name:latest"
echo "image: $name:$version, $output/swctl.tar"
