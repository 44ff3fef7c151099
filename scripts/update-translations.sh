#!/bin/bash
# Brings the translation files up to date with the texts in the sources: new texts are added as unfinished, texts
# that are gone are dropped. An argument names another folder with copies of the files.
# LUPDATE names the tool when it is not on the path under that name.
. "$(dirname "$0")/lib/common.sh"
folder=${1:-resources/translations}

sources=()
for layer in app core ui view outputs identity printer; do
    if [ -d "$layer" ]; then sources+=("$layer"); fi
done
"${LUPDATE:-lupdate}" -silent -no-obsolete -locations none -extensions cpp,h,ui "${sources[@]}" -ts "$folder"/*.ts
