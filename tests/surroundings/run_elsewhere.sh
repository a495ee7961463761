#!/bin/sh
# Runs a test program from a copy of its build: in a read-only folder with a blank and accents in its path, without
# HOME or any other environment, at the far end of the time zones, and as an ordinary user.
#
#     run_elsewhere.sh <build folder> <source folder> <program> [argument ...]
set -eu

build=$1
source=$2
program=$3
shift 3

root=$(mktemp -d)
trap 'chmod -R u+w "$root"; rm -rf "$root"' EXIT
chmod 755 "$root"
place="$root/Größe und Maß"
mkdir "$place"
cp -a "$build/bin" "$build/lib" "$build/share" "$place"
chmod -R a-w "$place"
mkdir -m 777 "$root/scratch"

# To the privileged user no folder is read-only.
ordinary=
if [ "$(id -u)" -eq 0 ]; then
    ordinary="setpriv --reuid=65534 --regid=65534 --clear-groups"
    if ! $ordinary test -r "$source/CMakeLists.txt"; then
        echo "An ordinary user cannot read $source: the tests run as the privileged one, whom nothing is read-only to."
        ordinary=
    fi
fi

cd "$place"
$ordinary env -i PATH=/usr/bin:/bin TZ=FAR-14 TMPDIR="$root/scratch" ${QXCMS_CORPUS:+"QXCMS_CORPUS=$QXCMS_CORPUS"} \
    "$place/bin/$program" "$@"
