# Steps that ./run, ./test and ./bench/run share; to be sourced by bash at the root of the tree. Each prints one
# short line, and ends the script with a clear message where it cannot go on.

preset=release
log_dir=build/log

say() { printf 'kirolane: %s\n' "$*"; }

fail() {
    printf 'kirolane: %s\n' "$*" >&2
    exit 1
}

{ mkdir -p "$log_dir" 2>/dev/null && [[ -w build && -w $log_dir ]]; } ||
    fail "build/ cannot be written here; does it belong to another user?"

# Runs a command with its output in build/log/NAME.log.
logged() {
    local name=$1
    shift
    mkdir -p "$log_dir"
    "$@" >"$log_dir/$name.log" 2>&1 </dev/null
}

show_log() { tail -n 40 "$log_dir/$1.log" >&2; }

# listed_packages [COMMAND]: what every command needs, and what that one needs besides.
listed_packages() {
    sed 's/#.*//' packaging/debian-packages.txt | awk -v command="${1:-}" '$2 == "" || $2 == command { print $1 }' |
        sed '/^$/d'
}

missing_packages() {
    comm -23 <(listed_packages "$@" | sort) \
        <(listed_packages "$@" | xargs dpkg-query -W -f='${db:Status-Status} ${Package}\n' 2>/dev/null |
            sed -n 's/^installed //p' | sort -u)
}

# Whether these can be installed and nothing has to go for them.
fits() {
    [[ $(LC_ALL=C apt-get -s -q --no-remove --no-install-recommends install "$@" 2>&1) != *'remove is disabled'* ]]
}

# Those that can be installed beside what is there: PulseAudio, say, cannot where PipeWire is the desktop's sound server.
# Only what a single command needs is left out.
without_conflicts() {
    local package others
    if ! fits "$@"; then
        for package in $(sed 's/#.*//' packaging/debian-packages.txt | awk 'NF == 2 { print $1 }' | sort -u); do
            mapfile -t others < <(printf '%s\n' "$@" | grep -vxF "$package")
            ((${#others[@]} < $#)) || continue
            ((${#others[@]} == 0)) || fits "${others[@]}" || continue
            say "leaving out $package: other packages would have to go for it" >&2
            set -- "${others[@]}"
            break
        done
    fi
    (($# == 0)) || printf '%s\n' "$@"
}

# install_packages [COMMAND], as listed_packages names them. Nothing is removed for them.
install_packages() {
    if [[ ! -e /etc/debian_version ]] || ! command -v dpkg-query apt-get >/dev/null; then
        check_tools "$@"
        return
    fi
    local missing as_root=()
    mapfile -t missing < <(missing_packages "$@")
    ((${#missing[@]})) || return 0
    # libmpv-dev asks for libjack-dev: of the two that give it, the one whose library is here already.
    if [[ " ${missing[*]} " == *" libmpv-dev "* &&
        $(dpkg-query -W -f='${db:Status-Status}' libjack-jackd2-0 2>/dev/null) == installed* ]]; then
        missing+=(libjack-jackd2-dev)
    fi
    mapfile -t missing < <(without_conflicts "${missing[@]}")
    ((${#missing[@]})) || return 0
    if ((EUID != 0)); then
        as_root=(sudo)
        command -v sudo >/dev/null && { sudo -n true 2>/dev/null || { [[ -t 0 && -t 1 ]] && sudo -v; }; } ||
            fail "packages are missing; install them as root: apt-get install ${missing[*]}"
    fi
    say "installing packages that are missing"
    local apt=("${as_root[@]}" env DEBIAN_FRONTEND=noninteractive
        apt-get -y -q --no-remove -o Acquire::Retries=3 -o DPkg::Lock::Timeout=300)
    local attempt
    for attempt in 1 2 3; do
        # The package lists may be absent or older than the archive: fetched after a failure only.
        logged install "${apt[@]}" install --no-install-recommends "${missing[@]}" && return
        logged update "${apt[@]}" update || say "the package lists could not be fetched (attempt $attempt)"
        mapfile -t missing < <(without_conflicts "${missing[@]}") # before there were lists nothing could be known
        ((${#missing[@]})) || return 0
    done
    show_log install
    fail "not all packages could be installed: ${missing[*]}"
}

# Elsewhere than on Debian nothing is installed: what is needed is named, and the tools are looked for.
check_tools() {
    local tool absent=()
    for tool in c++ cmake ninja pkg-config rsvg-convert ffmpeg; do
        command -v "$tool" >/dev/null || absent+=("$tool")
    done
    say "this is no Debian system; by their Debian names these packages are needed:"
    listed_packages "$@" | sed 's/^/    /'
    ((${#absent[@]} == 0)) || fail "tools are missing: ${absent[*]}"
}

# build_targets TARGET...: those of the preset, without a word where everything is up to date; on a terminal with
# a count. Sets binary_dir.
build_targets() {
    binary_dir=build/$preset
    local cache=$binary_dir/CMakeCache.txt
    if [[ -e $cache ]] && ! grep -qxF "CMAKE_HOME_DIRECTORY:INTERNAL=$PWD" "$cache"; then
        say "$binary_dir is of another place: building anew"
        rm -rf "$binary_dir"
    fi
    if [[ ! -e $binary_dir/build.ninja ]]; then
        logged configure cmake --preset "$preset" || {
            show_log configure
            fail "the build could not be configured"
        }
    fi
    mkdir -p "$log_dir"
    ninja -C "$binary_dir" "$@" 2>&1 </dev/null | tee "$log_dir/build.log" | count_steps || {
        show_log build
        fail "the build failed; all of it is in $log_dir/build.log"
    }
}

count_steps() {
    local line building=false
    while IFS= read -r line; do
        # Looking for new files and for changes of the build itself is not building.
        [[ $line =~ ^\[([0-9]+)/([0-9]+)\]\ [^R] ]] || continue
        $building || say "building"
        building=true
        [[ ! -t 1 ]] || printf '\r    %s of %s ' "${BASH_REMATCH[1]}" "${BASH_REMATCH[2]}"
    done
    [[ ! -t 1 ]] || ! $building || printf '\n'
}
