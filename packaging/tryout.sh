#!/bin/bash
# tryout.sh [FILE.deb]: installs the package on this machine, starts it, lets it play on a virtual display, and removes
# it. Without a package of another's making it first builds one, in two places, and compares the two. For a machine that
# may be changed: packages are installed for it. As root, or as a user with sudo.
#
# Each step ends the script where it finds a fault. What stays: build/tryout/two-displays.png, to be looked at.
set -euo pipefail
here=$(dirname "$(dirname "$(readlink -f "$0")")")
package=${1:+$(readlink -f "$1")}
cd "$here"
source packaging/setup.sh
export LC_ALL=C.UTF-8

as_root=()
((EUID == 0)) || as_root=(sudo)
apt=("${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -y -q)
temporary=$(mktemp -d)
trap 'rm -rf "$temporary"' EXIT
program=/usr/lib/kirolane

installed() { dpkg-query -W -f '${db:Status-Abbrev} ${Package}\n' | sed -n 's/^ii *//p' | sort; }

# All files that are not written anew by every run of a package manager, without this tree and the temporary ones.
files() {
    "${as_root[@]}" find / -xdev \( -path "$here" -o -path "$temporary" -o -path /tmp -o -path /run -o -path /proc \
        -o -path /var/lib/dpkg -o -path /var/lib/apt -o -path /var/cache -o -path /var/log \) -prune -o -print | sort
}

if [[ -z $package ]]; then
    ./package
    package=$(readlink -f build/package/*.deb)
    say "building once more, in another folder"
    mkdir "$temporary/again"
    tar -c --exclude=./build --exclude=./.git . | tar -x -C "$temporary/again"
    CCACHE_DISABLE=1 "$temporary/again/package" >/dev/null
    cmp "$package" "$temporary/again/build/package/${package##*/}" || fail "two builds differ"
    say "two builds give the same bytes: $(sha256sum "$package" | cut -d ' ' -f 1)"
fi

say "installing ${package##*/}"
installed >"$temporary/before"
logged tryout-lists "${apt[@]}" update
cp "$package" "$temporary/"
chmod 755 "$temporary" # apt reads it as a user of its own
logged tryout-install "${apt[@]}" install --no-install-recommends "$temporary/${package##*/}" || {
    show_log tryout-install
    fail "the package cannot be installed"
}
dpkg-query -L kirolane | sort >"$temporary/own"

say "looking at what it brings"
kirolane --version
for file in "$program"/kirolane{,-engine} /usr/lib/*/qt6/plugins/platforms/libqxcb.so; do
    ! ldd "$file" | grep 'not found' || fail "$file lacks libraries"
done
present=$(ls "$program" | sed 's/\.[a-z0-9]*$//' | sort | tr '\n' ' ')
[[ $present == "kirolane kirolane-engine サンプル音１ サンプル音２ サンプル１ サンプル２ サンプル３ " ]] ||
    fail "the program's folder holds: $present"
status=0
HOME=$temporary DISPLAY='' kirolane 2>"$temporary/no-display" || status=$?
((status == 1 && $(wc -l <"$temporary/no-display") == 1)) || fail "without a display: $status $(<"$temporary/no-display")"

say "playing"
mapfile -t desk < <(sed -n '/^# The virtual desktop/,/^$/{/^[a-z]/p}' packaging/debian-packages.txt)
mapfile -t desk < <(comm -13 "$temporary/before" <(printf '%s\n' "${desk[@]}" ffmpeg | sort)) # which saves the picture
logged tryout-desk "${apt[@]}" install --no-install-recommends "${desk[@]}" || fail "no virtual desktop"
files >"$temporary/played-from"
HOME=$temporary /usr/bin/python3 -B -m desk.demo "$(command -v kirolane)" build/tryout
comm -13 "$temporary/played-from" <(files) >"$temporary/left"
[[ ! -s $temporary/left ]] || fail "the run has left: $(<"$temporary/left")"

say "removing"
files >"$temporary/with"
logged tryout-purge "${apt[@]}" purge kirolane
files >"$temporary/without"
new=$(comm -13 "$temporary/with" "$temporary/without")
taken=$(comm -23 "$temporary/with" "$temporary/without" | comm -23 - "$temporary/own")
[[ -z $new$taken ]] || fail "the removal has made '$new' and taken '$taken'"
comm -12 "$temporary/own" "$temporary/without" | while IFS= read -r left; do # folders that others have, too
    dpkg-query --search "$left" >/dev/null 2>&1 || fail "the removal has left $left"
done
logged tryout-rest "${apt[@]}" purge "${desk[@]}"
logged tryout-rest "${apt[@]}" autoremove --purge
diff "$temporary/before" <(installed) || fail "other packages than before are installed"
say "installed, played and removed without a trace"
