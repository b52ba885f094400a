# What the scripts of the roads share: a page's blocks of commands, and a folder for the trial. The caller has set $page.

trial=$(mktemp -d /tmp/clinic-road-XXXXXX)
mkdir "$trial/home" "$trial/shims"
touch "$trial/said" "$trial/failure"
export trial HOME=$trial/home PATH=$trial/shims:$PATH QT_QPA_PLATFORM=offscreen LANG=C.UTF-8
exec {told}>&2 # also where a command fails whose words are kept elsewhere
unset XDG_CONFIG_HOME XDG_DATA_HOME XDG_STATE_HOME PGUSER PGPASSWORD PGDATABASE PGSSLMODE PGPASSFILE

failed() {
    echo "FAILED: $*" >> "$trial/failure"
    exit 1
}

# blocks KIND FIRST [LAST]: the page's blocks of that kind from the one of that number on; every line stands on its own line of
# the page.
blocks() {
    awk -v kind="\`\`\`$1" -v first="$2" -v last="${3:-9999}" '
        /^```/ { inside = !inside; wanted = inside && $0 == kind; number += wanted; print ""; next }
        { print (wanted && number >= first && number <= last ? $0 : "") }' "$page"
}

# commands KIND: all but the first, which holds the settings.
commands() { blocks "$1" 2; }

# demand_settings KIND: every name that the page's first block of that kind sets is set here, too.
demand_settings() {
    local name
    for name in $(blocks "$1" 1 1 | grep -oE '^ *[a-z]+=' | tr -d ' ='); do
        [ -n "${!name:-}" ] || failed "the page has a setting '$name' that is not tried"
    done
}

# Tells how it went and takes the trial's folder away; `tidy_up` is the caller's.
leave() {
    local status=$?
    trap - ERR EXIT
    set +e
    [ "$status" -eq 0 ] || tail -n 60 "$trial/said" "$trial/failure" >&"$told"
    tidy_up
    rm -rf "$trial"
    exit "$status"
}
trap leave EXIT
trap 'exit 1' INT TERM
set -E
trap 'echo "FAILED: ${BASH_SOURCE[0]##*/} line $LINENO: $BASH_COMMAND" >> "$trial/failure"' ERR
