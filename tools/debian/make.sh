#!/usr/bin/env bash
# make.sh FOLDER: copies the sources to FOLDER and adds the folder debian/, from which dpkg-buildpackage makes the
# packages. The address of the maintainers is the environment variable ZVUTILIB_MAINTAINER.
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
cd "$here/../.."
target=$1 maintainer=${ZVUTILIB_MAINTAINER:-maintainers@example.invalid}
version=$(awk '/define ZVUTILIB_VERSION_[A-Z]+ [0-9]+$/ { v = v dot $3; dot = "." } END { print v }' include/ZvUtiLib/Version.h)
# Two packings of one commit are the same bytes, so their time is that of the commit.
seconds=${SOURCE_DATE_EPOCH:-$(git log -1 --format=%ct 2>/dev/null || stat -c %Y CHANGELOG.md)}

rm -rf "$target"
mkdir -p "$target/debian/source"
tar --exclude=./build --exclude=./.git -cf - . | tar -xf - -C "$target"
cp "$here/rules" "$target/debian/rules"
echo "3.0 (quilt)" >"$target/debian/source/format"
sed "s/@MAINTAINER@/$maintainer/" "$here/control.in" >"$target/debian/control"
note=
[ -n "${ZVUTILIB_MAINTAINER:-}" ] || note="
  * The owner has not named an address of maintainers yet: .invalid is
    reserved for addresses that do not exist."
cat >"$target/debian/changelog" <<TEXT
zvutilib ($version-1) unstable; urgency=medium

  * All changes are listed in the changelog of the library itself.$note

 -- The ZvUtiLib maintainers <$maintainer>  $(date -uRd "@$seconds")
TEXT
# copyright INCLUDED...: the terms, and those of the packages whose code is included.
copyright() {
  printf 'Copyright %s the owner of ZvUtiLib\n\n' "$(date -ud "@$seconds" +%Y)"
  cat COPYING
  local package
  for package in "$@"; do
    printf '\nCode of %s is included, under these terms:\n\n' "$package"
    cat "/usr/share/doc/$package/copyright"
  done
}
copyright >"$target/debian/libzvutilib1.copyright"
copyright >"$target/debian/libzvutilib-dev.copyright"
copyright libcli11-dev nlohmann-json3-dev >"$target/debian/zvuti.copyright"

for package in libzvutilib1 libzvutilib-dev zvuti; do
  {
    printf '# The packages are made by the project itself, which has no bug report with a distribution to close.\n'
    printf '%s: initial-upload-closes-no-bugs\n' "$package"
  } >"$target/debian/$package.lintian-overrides"
done
