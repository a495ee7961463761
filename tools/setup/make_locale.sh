#!/bin/sh
# Makes the locale de_DE.UTF-8 where it is missing: the tests run once under a decimal comma.
set -eu

if locale -a | grep -qi '^de_DE\.utf-\?8$'; then
    exit 0
fi
run=""
[ "$(id -u)" -eq 0 ] || run=sudo
echo "Making the locale de_DE.UTF-8"
$run localedef -i de_DE -f UTF-8 de_DE.UTF-8
