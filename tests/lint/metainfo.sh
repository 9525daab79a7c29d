#!/bin/bash
# metainfo.sh MEND FILE: validates the metadata. To AppStream from 1.0 on it is a fault that they name no home page, which
# they do not until a publisher gives one (KIROLANE_ADDRESS); earlier ones do not know that word.
options=()
[[ $(appstreamcli --version 2>/dev/null) == *'version: 0.'* ]] || options=(--override=url-homepage-missing=info)
exec "$(dirname "$0")/validate.sh" "$1" appstreamcli validate --no-net --no-color "${options[@]}" "$2"
