# What the lint has found clean, remembered by content: an empty file for each source, named by the hash of everything
# that decides about it: its text and that of the project's headers that it includes, the flags, the rules, the versions
# of clang-tidy and of the libraries. Source it after common.sh; $work is the lint's own folder.
cache=${XDG_CACHE_HOME:-$HOME/.cache}/lumro-lint
kept_days=60 # without being used

# From the build, into $work: "commands" (source, object, rules, flags) and "keys" (source, key).
read_build() { # BUILD_FOLDER SOURCE...
    commands "$1" >"$work/commands"
    includes "$1" >"$work/includes"
    shift
    local strangers
    strangers=$(comm -23 <(printf '%s\n' "$@" | sort) <(cut -f 1 "$work/commands" | sort))
    [ -z "$strangers" ] || die "Not part of the build:" $strangers
    keys >"$work/keys"
}

# The flags are those of the compiler without its launcher, its output and g++'s precompiled headers.
commands() { # BUILD_FOLDER
    sed -n 's/^ *"command": "\(.*\)",$/\1/p' "$1/compile_commands.json" |
        sed 's/\\\(.\)/\1/g; s/ -fpch-preprocess//; s/ -Winvalid-pch//; s/ -include [^ ]*cmake_pch.hxx//' |
        sed -n "s,^\([^ ]*ccache\.sh \)\?[^ ]* \(.*\) -o \([^ ]*\) -c $root/\([^ ]*\)\$,\4\t\3\t\2,p" |
        sort -s -u -t "$(printf '\t')" -k 1,1 |
        while IFS=$'\t' read -r source object flags; do
            printf '%s\t%s\t%s\t%s\n' "$source" "$object" "$(rules_of "$source")" "$flags"
        done
}

rules_of() { # SOURCE: the nearest .clang-tidy
    local folder=./$1
    until folder=${folder%/*} && [ -f "$folder/.clang-tidy" ]; do :; done
    printf '%s\n' "$folder/.clang-tidy"
}

# The files of the project, generated ones among them, of which each object was made: object, file.
includes() { # BUILD_FOLDER
    ninja -C "$1" -t deps | awk -v OFS='\t' '
        /^[^ ]/ { object = $1; sub(/:$/, "", object) }
        /^ / && !/^ *\/usr\// && !/\.gch$/ { print object, $1 }' >"$work/dependencies"
    paste <(cut -f 1 "$work/dependencies") <(cd "$1" && cut -f 2 "$work/dependencies" | xargs realpath -ms) |
        grep -F "	$root/" | sort -u
}

# Source and key. Paths are those below the project's root, so that another clone finds the same keys.
keys() {
    local versions
    versions=$({ clang-tidy --version && dpkg-query -W '*-dev'; } 2>/dev/null | sha256sum)
    mkdir "$work/facts"
    { cut -f 2 "$work/includes" && git ls-files --full-name '*.clang-tidy' | sed "s,^,$root/,"; } | sort -u |
        xargs sha256sum | awk -F'\t' -v versions="$versions" -v root="$root/" -v facts="$work/facts" '
            FILENAME == "-" { hash[substr($0, 67)] = substr($0, 1, 64); next }
            FILENAME ~ /includes$/ { made_of[$1] = made_of[$1] hash[$2] " " $2 "\n"; next }
            {
                rules = hash[root ".clang-tidy"] " " hash[root substr($3, 3)]
                fact = versions "\n" rules "\n" $4 "\n" made_of[$2]
                gsub(root, "", fact)
                file = sprintf("%s/%05d", facts, FNR)
                print fact >file
                close(file)
            }' - "$work/includes" "$work/commands"
    paste <(cut -f 1 "$work/commands") <(sha256sum "$work"/facts/* | cut -c 1-64)
}

not_known_clean() { # SOURCE...
    local source key
    local -A key_of
    mkdir -p "$cache"
    find "$cache" -type f -mtime "+$kept_days" -delete
    while IFS=$'\t' read -r source key; do key_of["$source"]=$key; done <"$work/keys"
    for source; do
        key=${key_of["$source"]}
        if [ -e "$cache/$key" ]; then touch "$cache/$key"; else printf '%s\n' "$source"; fi
    done
}

remember_clean() { # SOURCE...
    local source
    for source; do : >"$cache/$(awk -F'\t' -v source="$source" '$1 == source { print $2 }' "$work/keys")"; done
}
