#!/usr/bin/env bash
# packages.sh <build-dir> <source-dir> <libdir>: builds the Debian packages from the build folder,
# checks what each holds and depends on, unpacks them into a scratch root and uses them there as
# a user would: the installed utility takes its headless tour against the installed simulator,
# the installed decoder decodes, a host builds against the development package. Then lintian
# judges the packages. Everything lies in one scratch folder, removed at the end.
set -euo pipefail
build=$(cd "$1" && pwd)
src=$(cd "$2" && pwd)
libdir=$3
scratch=$(mktemp -d)
sim_pid=
cleanup() {
  if [ -n "$sim_pid" ]; then kill "$sim_pid" 2>/dev/null || true; wait "$sim_pid" 2>/dev/null || true; fi
  rm -rf "$scratch"
}
trap cleanup EXIT
fail() { echo "FAILED: $*" >&2; exit 1; }

debs=$scratch/debs root=$scratch/root
mkdir -p "$root" "$scratch/home" "$scratch/config"

cpack --config "$build/CPackConfig.cmake" -G DEB -B "$debs" >"$scratch/cpack.log" 2>&1 || { cat "$scratch/cpack.log"; fail "cpack"; }
deb() { compgen -G "$debs/$1_*.deb" || fail "no package $1"; }
version=$(dpkg-deb -f "$(deb libfenk)" Version)
soversion=${version%%.*}
[ "$(find "$debs" -maxdepth 1 -name '*.deb' | wc -l)" -eq 4 ] || fail "cpack made: $(ls "$debs")"

# One row a package: its name | its section | dependencies it must name | files it must hold below
# /usr, besides its copyright file and changelog.
rows=(
  "libfenk|libs|libc6 libqt6widgets6|$libdir/libfenk.so.$soversion share/fenklib/DATA/PredefinedMessageSets.xml share/fenklib/DATA/ReceiverMessageRegistry.xml"
  "libfenk-dev|libdevel|libfenk qt6-base-dev|$libdir/libfenk.so include/fenk/fenklib/FenkLaunchers.h $libdir/cmake/FenkLib/FenkLibConfig.cmake $libdir/cmake/FenkLib/FenkLibConfigVersion.cmake $libdir/pkgconfig/fenk.pc"
  "lyn-utility|science|libfenk libqt6widgets6|bin/lyn-utility share/man/man1/lyn-utility.1.gz share/applications/org.fenklib.LynUtility.desktop share/metainfo/org.fenklib.LynUtility.metainfo.xml share/icons/hicolor/scalable/apps/org.fenklib.LynUtility.svg"
  "fenk-tools|science|libc6 libstdc++6|bin/rcvsim bin/nmeadump share/man/man1/rcvsim.1.gz share/man/man1/nmeadump.1.gz"
)
ours=" libfenk libfenk-dev lyn-utility fenk-tools "

# A dependency holds when it is one of ours at this version, or a package this machine has at a
# version that satisfies it: shlibdeps and the hand-written ones alike must name real packages.
check_dependency() {   # <package> <one dependency, e.g. "libc6 (>= 2.34)">
  local name op want have
  read -r name op want <<<"$(sed -E 's/[()]//g; s/:any$//' <<<"$2")"
  if [[ $ours == *" $name "* ]]; then
    [ "$op $want" = "= $version" ] || fail "$1 depends on $2, not on this version $version"
    return
  fi
  have=$(dpkg-query -W -f='${Version}' "$name" 2>/dev/null) || fail "$1 depends on $2, a package unknown here"
  [ -z "$op" ] || dpkg --compare-versions "$have" "$op" "$want" || fail "$1 depends on $2, this machine has $have"
}

all_files=$scratch/all-files
for row in "${rows[@]}"; do
  IFS='|' read -r pkg section needs files <<<"$row"
  f=$(deb "$pkg")
  [ "$(dpkg-deb -f "$f" Section)" = "$section" ] || fail "$pkg: section $(dpkg-deb -f "$f" Section)"
  [ -n "$(dpkg-deb -f "$f" Maintainer)" ] || fail "$pkg: no maintainer"
  depends=$(dpkg-deb -f "$f" Depends)
  names=$(sed -E 's/ \([^)]*\)//g; s/, /\n/g' <<<"$depends")
  for need in $needs; do
    grep -qxF "$need" <<<"$names" || fail "$pkg does not depend on $need: $depends"
  done
  IFS=',' read -ra items <<<"$depends"
  for item in "${items[@]}"; do check_dependency "$pkg" "$(xargs <<<"$item")"; done
  listing=$(dpkg-deb -c "$f" | awk '{print $6}' | sed 's|^\./||')
  for want in $files share/doc/$pkg/copyright share/doc/$pkg/changelog.Debian.gz; do
    grep -qx "usr/$want" <<<"$listing" || fail "$pkg lacks /usr/$want"
  done
  grep -v '/$' <<<"$listing" >>"$all_files"
  # The packaging changelog's latest entry is this very version.
  dpkg-deb --fsys-tarfile "$f" | tar -xO "./usr/share/doc/$pkg/changelog.Debian.gz" | gunzip >"$scratch/changelog"
  [ "$(dpkg-parsechangelog -l "$scratch/changelog" -S Version)" = "$version" ] || fail "$pkg: changelog is not for $version"
done
dup=$(sort "$all_files" | uniq -d)
[ -z "$dup" ] || fail "files in two packages: $dup"
echo "four packages of $version with their files and dependencies"

# What a user of the program installs first: no development package, so that neither the program
# nor the library can lean on it.
for pkg in libfenk lyn-utility fenk-tools; do dpkg-deb -x "$(deb "$pkg")" "$root"; done

# The shipped manual pages format without a warning; the desktop entry and the AppStream data pass
# their validators.
for page in "$root"/usr/share/man/man1/*.1.gz; do
  warnings=$(LC_ALL=C.UTF-8 MANWIDTH=80 man --warnings -E UTF-8 -l -Tutf8 -Z "$page" 2>&1 >/dev/null)
  [ -z "$warnings" ] || fail "$(basename "$page"): $warnings"
done
desktop-file-validate "$root/usr/share/applications/org.fenklib.LynUtility.desktop" || fail "desktop entry"
appstreamcli validate --no-net "$root/usr/share/metainfo/org.fenklib.LynUtility.metainfo.xml" >"$scratch/appstream.log" 2>&1 ||
  { cat "$scratch/appstream.log"; fail "AppStream data"; }

# The programs run from the root as installed, with nothing of the build folder in reach: the
# utility finds the library beside its own folder, the library its data through XDG_DATA_DIRS.
# A library folder other than lib (multi-arch) is known to the loader through its cache on a real
# system; in the scratch root the loader's path stands in for it.
loader=()
[ "$libdir" = lib ] || loader=(LD_LIBRARY_PATH="$root/usr/$libdir")
installed=(env -u LD_LIBRARY_PATH -u DISPLAY -u WAYLAND_DISPLAY "${loader[@]}" QT_QPA_PLATFORM=offscreen HOME="$scratch/home"
  XDG_CONFIG_HOME="$scratch/config" XDG_DATA_DIRS="$root/usr/share")

# Every option a program's --help names has its place in the program's manual page.
for program in lyn-utility rcvsim nmeadump; do
  page=$(zcat "$root/usr/share/man/man1/$program.1.gz" | sed 's/\\-/-/g')
  for option in $("${installed[@]}" "$root/usr/bin/$program" --help 2>&1 | grep -oE -- '--[a-z][a-z-]*' | sort -u); do
    grep -qF -- "$option" <<<"$page" || fail "$program.1 does not describe $option"
  done
done

gga='$GPGGA,123519,4807.038,N,01131.000,E,1,08,0.9,545.4,M,46.9,M,,*47'
decoded=$(printf '%s\r\n' "$gga" | "${installed[@]}" "$root/usr/bin/nmeadump")
grep -q '"type":"position","lat":48.1173' <<<"$decoded" || fail "nmeadump gave: $decoded"

mkfifo "$scratch/sim.out"
"${installed[@]}" "$root/usr/bin/rcvsim" --tcp 127.0.0.1:0 >"$scratch/sim.out" &
sim_pid=$!
exec 3<"$scratch/sim.out"
read -r -t 60 -u 3 kind address || fail "the simulator printed no address"
[ "$kind" = tcp ] || fail "the simulator printed: $kind $address"

"${installed[@]}" "$root/usr/bin/lyn-utility" --link "tcp://$address" --tour "$scratch/tour" >"$scratch/tour.log" 2>&1 ||
  { status=$?; cat "$scratch/tour.log"; fail "the tour ended with $status"; }
for want in "Model: FNK-600" "run_ReceiverInfoDlg.png" "run_ReceiverPortsDlg:" "nothing failed"; do
  grep -qF "$want" "$scratch/tour.log" || { cat "$scratch/tour.log"; fail "the tour did not print \"$want\""; }
done
shots=$(find "$scratch/tour" -name '*.png' | wc -l)
[ -s "$scratch/tour/run_ReceiverInfoDlg.png" ] && [ "$shots" -ge 30 ] || fail "the tour saved $shots screenshots"
echo "installed lyn-utility toured the installed rcvsim at $address: $shots screenshots"

# A host built against the development package finds the library, its settings and its data.
dpkg-deb -x "$(deb libfenk-dev)" "$root"
cmake -S "$src/tests/install/consumer" -B "$scratch/consumer" -G Ninja -DCMAKE_PREFIX_PATH="$root/usr" >"$scratch/consumer.log" 2>&1 &&
  cmake --build "$scratch/consumer" >>"$scratch/consumer.log" 2>&1 || { cat "$scratch/consumer.log"; fail "consumer build"; }
"${installed[@]}" "$scratch/consumer/consumer" || fail "consumer exited with $?"
pc() { PKG_CONFIG_PATH="$root/usr/$libdir/pkgconfig" pkg-config --variable="$1" fenk; }
[ "$(realpath -m "$(pc includedir)")" = "$root/usr/include/fenk" ] || fail "pkg-config's includedir is $(pc includedir)"
[ "$(realpath -m "$(pc libdir)")" = "$root/usr/$libdir" ] || fail "pkg-config's libdir is $(pc libdir)"
echo "a host builds and runs against libfenk-dev"

# lintian: an error or a warning fails the packages, but for the warnings docs/packaging.md explains.
explained=initial-upload-closes-no-bugs,maintscript-calls-ldconfig,package-name-doesnt-match-sonames
explained+=,pkg-config-unavailable-for-cross-compilation
lintian --fail-on error,warning --suppress-tags "$explained" --tag-display-limit 0 "$debs"/*.deb >"$scratch/lintian.log" 2>&1 ||
  { cat "$scratch/lintian.log"; fail "lintian"; }
cat "$scratch/lintian.log"
echo "packages install and work"
