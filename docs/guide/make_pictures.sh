#!/usr/bin/env bash
# make_pictures.sh [BUILD]: takes the pictures of docs/ from the windows of BUILD (by default build/release, built with its tests), on a
# private screen in an own /home, so that no name of this machine shows.
set -euo pipefail
top=$(dirname "$(dirname "$(dirname "$(readlink -f "$0")")")")
build=$(readlink -f "${1:-$top/build/release}")
export top build
exec unshare --map-root-user --mount bash -c '
    mount -t tmpfs tmpfs /home
    mkdir /home/user
    QUILLOW=$build/bin/quillow PYTHONPATH=$top/tests/gui PYTHONDONTWRITEBYTECODE=1 QUILLOW_TEST_MIRRORS="- - - -" \
        exec /usr/bin/python3 "$top/tests/gui/session.py" --home /home/user -- /usr/bin/python3 "$top/docs/guide/make_pictures.py" \
        "$top/samples" "$top/docs"'
