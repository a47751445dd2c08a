# shellcheck shell=bash
# What .ci/run and .ci/nightly share: source it, do not run it.

cd -- "$(dirname -- "$(readlink -f -- "${BASH_SOURCE[0]}")")/.." || exit 1
exec </dev/null
export CI=true

summary=()
failed=()
left_out=()

# step NAME MINUTES COMMAND …: runs the command and notes how it ended. After so many minutes, several
# times what it takes on two quiet processors, it is ended and has failed.
step()
{
    local name=$1 minutes=$2 result=Passed code=0 start=$SECONDS
    # Told by the shell on standard error: how long it took is in the summary, but with others at
    # work on the machine only the processor's time can be compared.
    local TIMEFORMAT="----- $name: %0U sec of processor time and %0S sec of the system's"
    shift 2
    printf '\n===== %s: %s\n' "$name" "$*"
    time timeout --kill-after=30 "${minutes}m" "$@" || code=$?
    [[ $code -ne 124 && $code -ne 137 ]] || printf '%s: ended after %d minutes\n' "$name" "$minutes"
    if [[ $code -ne 0 ]]; then
        result="***Failed"
        failed+=("$name")
    fi
    local dots=................................
    summary+=("$(printf '%3d: %s %s %-9s %6d sec' $((${#summary[@]} + 1)) "$name" \
        "${dots:${#name}}" "$result" $((SECONDS - start)))")
}

# late NAME MINUTES COMMAND …: as step, unless so much time has passed that it might not end in time.
late()
{
    local -r enough=3300 # [s]
    if [[ $SECONDS -gt $enough ]]; then
        printf '\n===== %s: left out, no time\n' "$1"
        left_out+=("$1")
        return
    fi
    step "$@"
}

# Names all steps, and ends with 0 if all passed.
summarise()
{
    local total=${#summary[@]} bad=${#failed[@]}
    printf '\n===== Summary\n'
    printf '%s\n' "${summary[@]}"
    printf '\n%d%% tests passed, %d tests failed out of %d\n' \
        $((100 * (total - bad) / total)) "$bad" "$total"
    printf '\nTotal time = %d sec\n' "$SECONDS"
    [[ ${#left_out[@]} -eq 0 ]] || printf 'Left out, no time: %s\n' "${left_out[@]}"
    [[ $bad -ne 0 ]] || return 0
    printf 'Failed: %s\n' "${failed[@]}"
    return 1
}
