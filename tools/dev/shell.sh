# shellcheck shell=bash
verb_shell() {
    if (($#)); then
        "$@"
    else
        exec bash -i
    fi
}
