#!/bin/bash
# validate.sh MEND TOOL ARGUMENT...: fails, and says what mends it, where the tool finds anything in its file. Status 77
# where the tool is not here.
mend=$1
shift
command -v "$1" >/dev/null || { echo "skipped: $1 is not here"; exit 77; }
said=$("$@" 2>&1)
status=$?
if ((status != 0)) || grep -qiE 'error|warning|hint' <<<"$said"; then
    printf '%s\n' "$said" "$mend"
    exit 1
fi
