# All packages of a release from a clean checkout, with checksums. Sourced by run.

# The packages are made from a clone of the last commit, so nothing that is not in it can be in them.
release() {
  need_checkout
  local changes version folder clone
  changes=$(git status --porcelain)
  [ -z "$changes" ] || fail "a release is made from a clean checkout, and this one has changes:"$'\n'"$changes"
  version=$(library_version)
  grep -qxF "## $version" CHANGELOG.md || fail "CHANGELOG.md has no section for version $version"
  folder=$PWD/build/release/$version
  clone=$PWD/build/release/sources
  rm -rf "$clone" "$folder"
  mkdir -p "$folder" "$clone/build"
  say "Cloning $(git rev-parse --short HEAD)"
  git clone --quiet --no-hardlinks . "$clone/ZvUtiLib-$version"
  git -C "$clone/ZvUtiLib-$version" archive --prefix="ZvUtiLib-$version/" -o "$folder/ZvUtiLib-$version.tar.gz" HEAD
  local root
  for root in wine-i386 debian-root; do # the root file systems are not part of a release; making them takes minutes
    [ ! -d "build/$root" ] || { mkdir -p "$clone/ZvUtiLib-$version/build" && mv "build/$root" "$clone/ZvUtiLib-$version/build/"; }
  done
  local made=0
  (cd "$clone/ZvUtiLib-$version" && ZVUTILIB_DEBIAN_FLAGS=1 ./run package) || made=$?
  for root in wine-i386 debian-root; do
    [ ! -d "$clone/ZvUtiLib-$version/build/$root" ] || mv "$clone/ZvUtiLib-$version/build/$root" build/
  done
  [ "$made" -eq 0 ] || fail "the packages of the clean checkout are faulty"
  find "$clone/ZvUtiLib-$version/$packages" -maxdepth 1 -type f ! -name '*.sha256' -exec cp {} "$folder" \;
  (cd "$folder" && sha256sum -- * >SHA256SUMS && sha256sum --check --quiet SHA256SUMS)
  rm -rf "$clone"
  say "Release $version"
  cat "$folder/SHA256SUMS"
  echo "the packages are in build/release/$version"
  ! grep -qx '## Next' CHANGELOG.md ||
    echo "run: CHANGELOG.md lists changes under 'Next': give them a version before you publish these packages" >&2
}
