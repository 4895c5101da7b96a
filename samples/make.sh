#!/bin/sh
# Remakes the sample documents beside this script from their sources in src/, with the producers that Debian packages. The
# documents are committed, so this runs only after a change of a source. They depend on the producers' versions (README.md
# names the versions used): after a change of version, check the texts in expected/ again.
#   samples/make.sh [--install]      --install fetches the producers with apt-get first
set -eu
here=$(cd "$(dirname "$0")" && pwd)
src=$here/src

if [ "${1:-}" = --install ]; then
    apt-get -o DPkg::Lock::Timeout=300 install -y --no-install-recommends chromium culmus fonts-dejavu-core fonts-freefont-ttf \
        fonts-hosny-amiri fonts-ipafont-gothic fonts-lohit-deva fonts-tlwg-laksaman-ttf fonts-wqy-microhei groff \
        libreoffice-writer-nogui pandoc python3 texlive-latex-base texlive-xetex
fi

# The time stamp for all producers: 2024-01-02T03:04:05Z.
export SOURCE_DATE_EPOCH=1704164645 FORCE_SOURCE_DATE=1 TZ=UTC LC_ALL=C.UTF-8
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
export HOME="$work/home"
mkdir "$HOME"

office() { # SOURCE FILTER TARGET
    soffice "-env:UserInstallation=file://$work/office" --headless --convert-to "$2" --outdir "$work" "$src/$1" > /dev/null
    mv "$work/${1%.fodt}.${2%%:*}" "$here/$3"
}
browser() {
    chromium --headless --no-sandbox --disable-gpu --user-data-dir="$work/browser" --virtual-time-budget=5000 "$@" 2> /dev/null
}
# Replaces time stamps and random identifiers by fixed ones of the same length, so that a PDF's cross-reference table stays
# valid.
stamp() { # FILE
    LC_ALL=C sed -i -E '/^\/ID \[ <|^<[0-9A-F]{32}> \]$|^\/DocChecksum /s/[0-9A-F]{32}/00000000000000000000000000000000/
        s/D:[0-9]{14}([+-][0-9]{2}.[0-9]{2}|Z)/D:20240102030405\1/g
        s/\\yr20[0-9]{2}\\mo[0-9]+\\dy[0-9]+\\hr[0-9]+\\min[0-9]+/\\yr2024\\mo1\\dy2\\hr3\\min4/g' "$1"
}

# RTF
office offer-german.fodt rtf offer-german.rtf
office lease-mixed.fodt rtf lease-mixed.rtf
pandoc --standalone -f markdown -t rtf "$src/recipe-polish.md" -o "$here/recipe-polish.rtf"
python3 "$src/legacy_rtf.py" "$src/notice-russian.rtf.in" "$here/notice-russian.rtf"
python3 "$src/legacy_rtf.py" "$src/library-japanese.rtf.in" "$here/library-japanese.rtf"
rm -rf "$here/field-notes.rtfd"
cp -r "$src/field-notes.rtfd" "$here/field-notes.rtfd"

# HTML
browser --dump-dom "file://$src/market-french.page.html" > "$here/market-french.html"
pandoc --standalone -f markdown -t html "$src/kettle-manual.md" -o "$here/kettle-manual.html"
iconv -f UTF-8 -t WINDOWS-1251 "$src/mail-thread-russian.htm" > "$here/mail-thread-russian.htm"
iconv -f UTF-8 -t WINDOWS-1253 "$src/poem-greek.htm" > "$here/poem-greek.htm"
iconv -f UTF-8 -t CP932 "$src/timetable-japanese.htm" > "$here/timetable-japanese.htm"

# PDF
for engine in pdflatex:thesis-page xelatex:sea-words; do
    (cd "$work" && cp "$src/${engine#*:}.tex" . && "${engine%%:*}" -interaction=batchmode "${engine#*:}.tex" > /dev/null)
    mv "$work/${engine#*:}.pdf" "$here/${engine#*:}.pdf"
done
tbl "$src/lamp.1" | preconv | groff -man -Tpdf -P-pa5 -dpaper=a5 -rLL=4.2i > "$here/lamp.pdf"
office village-letter.fodt 'pdf:writer_pdf_Export:{"UseTaggedPDF":{"type":"boolean","value":"true"}}' village-letter.pdf
office will-hebrew-arabic.fodt pdf will-hebrew-arabic.pdf
browser --no-pdf-header-footer --print-to-pdf="$work/voices.pdf" "file://$src/voices-of-asia.page.html" > /dev/null
mv "$work/voices.pdf" "$here/voices-of-asia.pdf"

for made in "$here"/*.pdf "$here"/*.rtf; do stamp "$made"; done
