#!/bin/sh
# Installs the Debian packages given as arguments that are missing; does nothing when all are there.
set -eu

missing=""
for package in "$@"; do
    state=$(dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null || true)
    [ "$state" = installed ] || missing="$missing $package"
done
[ -n "$missing" ] || exit 0

run=""
if [ "$(id -u)" -ne 0 ]; then
    if ! command -v sudo >/dev/null 2>&1; then
        echo "These packages are missing and cannot be installed without root or sudo:$missing" >&2
        echo "Ask an administrator for: apt-get install --no-install-recommends$missing" >&2
        exit 1
    fi
    run=sudo
fi

echo "Installing:$missing"
# $run and $missing are lists of words.
# shellcheck disable=SC2086
if ! { $run apt-get update -qq && $run env DEBIAN_FRONTEND=noninteractive \
    apt-get install -y -qq --no-install-recommends $missing; } >&2; then
    echo "These packages could not be installed:$missing" >&2
    echo "Install them by hand: apt-get install --no-install-recommends$missing" >&2
    exit 1
fi
