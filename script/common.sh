# What the scripts share. To be sourced: afterwards the working directory is the root of the project.

# A closed standard input would give its number to the next file that is opened.
exec </dev/null

unset CDPATH
cd "$(dirname "${BASH_SOURCE[0]}")/.."
jobs=$(nproc)

if command -v ccache >/dev/null; then
    export CMAKE_C_COMPILER_LAUNCHER=ccache CMAKE_CXX_COMPILER_LAUNCHER=ccache
fi

heading()
{
    printf '\n== %s\n' "$*"
}

fail()
{
    printf '%s: %s\n' "${0##*/}" "$*" >&2
    exit 1
}

# The results of all steps, in order: a line each of name, outcome, seconds.
step_names=()
step_outcomes=()
step_seconds=()
steps_failed=0

# Runs a command or a function as a named step. A failing step is noted and the next one runs; a
# function stops at its first failing command.
step()
{
    local name=$1 begin=$SECONDS status
    shift
    heading "$name"
    set +e
    (
        set -e
        "$@"
    )
    status=$?
    set -e
    step_names+=("$name")
    step_seconds+=($((SECONDS - begin)))
    if ((status == 0)); then
        step_outcomes+=(passed)
    else
        step_outcomes+=(FAILED)
        steps_failed=$((steps_failed + 1))
    fi
    printf '%s: %s after %d s\n' "$name" "${step_outcomes[-1]}" "${step_seconds[-1]}"
}

# The table of all steps; `note NAME` may add a column to a row.
summary()
{
    local i
    printf '\n%-28s %-8s %7s   %s\n' step outcome seconds tests
    for i in "${!step_names[@]}"; do
        printf '%-28s %-8s %7d   %s\n' "${step_names[i]}" "${step_outcomes[i]}" \
            "${step_seconds[i]}" "$(note "${step_names[i]}")"
    done
}

note()
{
    :
}
