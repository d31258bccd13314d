# SPDX-License-Identifier: MIT
# Shared by the scripts: sourced, never run.

# Removes a folder only when it is one the scripts made: a fake Mac (it holds .fakemac/) or a
# folder below build/. An empty, unset or unexpected path stops the script instead.
remove_scratch_tree() {
    local target=${1:-}
    if [ -z "$target" ]; then
        echo "refusing to remove an empty path" >&2
        return 1
    fi
    [ -e "$target" ] || return 0
    local resolved repo
    resolved=$(realpath -- "$target")
    repo=$(realpath -- "$(dirname "${BASH_SOURCE[0]}")/../..")
    case "$resolved" in
        / | "$HOME" | "$repo") echo "refusing to remove $resolved" >&2; return 1 ;;
    esac
    if [ -d "$resolved/.fakemac" ] || [[ "$resolved" == "$repo"/build/?* ]]; then
        rm -rf -- "$resolved"
    else
        echo "refusing to remove $resolved: neither a fake Mac nor below build/" >&2
        return 1
    fi
}

# Prints the first installed clang++ that links a libFuzzer harness ($QUENZO_CLANG first, then
# clang++, then versioned names, newest first); fails when there is none.
find_fuzzing_clang() {
    local probe candidates=() candidate
    probe=$(mktemp -d) || return 1
    [ -n "${QUENZO_CLANG:-}" ] && candidates+=("$QUENZO_CLANG")
    candidates+=(clang++)
    while IFS= read -r candidate; do
        candidates+=("$candidate")
    done < <(compgen -c clang++- | grep -E '^clang\+\+-[0-9]+$' | sort -t- -k2 -rn | uniq)
    printf 'extern "C" int LLVMFuzzerTestOneInput(const unsigned char *, unsigned long) { return 0; }\n' \
        >"$probe/probe.cpp"
    for candidate in "${candidates[@]}"; do
        if command -v "$candidate" >/dev/null &&
            "$candidate" -fsanitize=fuzzer "$probe/probe.cpp" -o "$probe/probe" 2>/dev/null; then
            rm -rf -- "$probe"
            echo "$candidate"
            return 0
        fi
    done
    rm -rf -- "$probe"
    echo "no clang++ with the libFuzzer runtime found (scripts/setup installs one)" >&2
    return 1
}
