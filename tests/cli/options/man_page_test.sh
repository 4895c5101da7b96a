#!/usr/bin/env bash
# man_page_test.sh PAGE: the man page has no mistake that groff or mandoc reports, and shows what it should.
set -euo pipefail
page=$1
warnings=$(groff -man -Tutf8 -ww -z "$page" 2>&1)
[ -z "$warnings" ] || { echo "$warnings"; exit 1; }
if command -v mandoc >/dev/null; then
    # A page that is made at each build has no date.
    warnings=$(mandoc -Tlint -W warning "$page" | grep -v 'missing date' || true)
    [ -z "$warnings" ] || { echo "$warnings"; exit 1; }
fi
shown=$(groff -man -Tascii -P-c -P-b -P-u -P-o "$page")
grep -q -- '--retry-failed' <<<"$shown"
grep -q -- '3-7,12,20-' <<<"$shown"
