#!/usr/bin/env bash
# Runs the commands of a document:  document_test.sh PAGE SOURCE_DIR BUILD_DIR
# PAGE "make" comes first: it makes the sample program that the others work with.
#
# PAGE "FILE#HEADING" stands for the indented commands below that heading. They work on a project of
# their own, in a folder with a blank, and what makes the build comes first. Nobody looks: zem is
# zem-report, which takes the same words, and --view is left out.
#
#   ```sh              run, one block after the other, beginning in the source tree
#   ```text            compared with what the block before has printed; "..." stands for anything
#   ```sh build        commands that build the project, and ```sh untried for other systems: the shell
#                      reads them, and every file and preset of this tree that they name is there
#
# A manual page's commands are those of its EXAMPLES. The sample program has been imported under all
# names that the pages have for logs. A zem that they start opens its window on a display
# in memory and is ended again. Exit status 77: cannot be tried here.
set -euo pipefail
page=$1
source_dir=$2
build_dir=$3
heading=
case $page in
    *'#'*) heading=${page#*#}; page=${page%%#*} ;;
esac
scratch=$(mktemp -d)
block=
finish() {
    local status=$?
    if [ $status -ne 0 ] && [ -f "$block.err" ]; then
        printf '%s: fails:\n' "$page" >&2
        cat "$block" "$block.err" >&2
    fi
    rm -rf "$scratch"
}
trap finish EXIT
fail() { printf '%s: %s\n' "$page" "$*" >&2; exit 1; }
command -v Xvfb >/dev/null && command -v xwd >/dev/null || { echo "no Xvfb or xwd"; exit 77; }

mkdir "$scratch/bin" "$scratch/home"
cat >"$scratch/bin/zem" <<END
#!/bin/sh
"$source_dir/script/screenshot" "$scratch/window.png" "$build_dir/bin/zem" "\$@" \
    >"$scratch/window.out" 2>"$scratch/window.err" && [ ! -s "$scratch/window.err" ] ||
    { echo "zem \$*:" >&2; cat "$scratch/window.err" >&2; exit 1; }
END
chmod +x "$scratch/bin/zem"
export PATH=$scratch/bin:$build_dir/bin:$PATH HOME=$scratch/home
unset DISPLAY

# The blocks, one file each: 001.sh, 002.text ...
blocks() {
    awk -v out="$scratch/block" '
        /^```/ && inside { close(file); inside = 0; next }
        /^```/ { kind = substr($0, 4); gsub(/ /, "-", kind); inside = 1
                 file = sprintf("%s%03d.%s", out, ++n, kind == "" ? "plain" : kind); next }
        inside { print >file }' "$source_dir/$page"
}
examples() {
    # The sample's coverage is what it is.
    awk '/^\.SH/ { here = /EXAMPLES/ } /^\.fi/ { inside = 0 } inside { print }
        here && /^\.nf/ { inside = 1 }' "$source_dir/$page" |
        sed -E -e 's/(--fail-under) [0-9]+/\1 1/' -e 's/\\-\\-fail\\-under [0-9]+/--fail-under 1/' \
             -e 's/\\e/\\/g' -e 's/\\-/-/g' -e "s,/tmp/,$scratch/,g" >"$scratch/block001.sh"
}
below_heading() {
    awk -v wanted="## $heading" '/^## / { here = $0 == wanted } here && /^    / { print substr($0, 5) }' \
        "$source_dir/$page" | sed -e 's/ --view / /' >"$scratch/commands"
    { grep '^cmake ' "$scratch/commands"; grep -v '^cmake ' "$scratch/commands"; } >"$scratch/block001.sh"
    printf '#!/bin/sh\nexec zem-report "$@"\n' >"$scratch/bin/zem"
}
make_project() {
    mkdir -p "$1/src"
    cat >"$1/CMakeLists.txt" <<'END'
cmake_minimum_required(VERSION 3.16)
project(sample CXX)
enable_testing()
add_executable(parser src/parser.cpp)
add_test(NAME parses COMMAND parser)
END
    printf 'int main(int n, char**)\n{\n    return n > 1 ? 1 : 0;\n}\n' >"$1/src/parser.cpp"
}
# What the examples of zem-run start, without the tools that would make a build.
make_drivers() {
    rm -rf "$1/build"
    mkdir "$1/build"
    (cd "$1" && g++ --coverage -o build/calc part.cc) # counters belong to where it was built
    printf 'add_test(sum "%s/build/calc" "1 + 2")\n' "$1" >"$1/build/CTestTestfile.cmake"
    printf 'check:\n\tbuild/calc "1 + 2"\n' >"$1/Makefile"
    cat >"$scratch/bin/meson" <<'END'
#!/bin/sh
[ "$1" = test ] || { echo '[]'; exit; }
eval "$3 build/calc 4"
END
    cat >"$1/server" <<'END'
#!/bin/sh
exec build/calc 8
END
    chmod +x "$scratch/bin/meson" "$1/server"
    sed -i -e 's/ --view / /' "$scratch/block001.sh"
}
# Lines with "..." are patterns.
compare() {
    local wanted got
    exec 3<"$1" 4<"$2"
    while IFS= read -r wanted <&3; do
        IFS= read -r got <&4 || fail "not printed: $wanted"
        # shellcheck disable=SC2053 # a pattern, on purpose
        wanted=${wanted//\[/\\[}
        [[ $got == ${wanted//.../*} ]] || fail "printed: $got, and not: $wanted"
    done
    if IFS= read -r got <&4; then
        fail "printed, too: $got"
    fi
}
# What commands that cannot be run here name in this tree.
check_names() {
    bash -n "$1" || fail "the shell cannot read $1"
    local name
    for name in $(grep -oE '(^|[ ])script/[a-z-]+' "$1"); do
        [ -x "$source_dir/$name" ] || fail "there is no $name"
    done
    for name in $(grep -oE -e '--preset [a-z]+' "$1" | cut -d' ' -f2); do
        grep -q "\"name\": \"$name\"" "$source_dir/CMakePresets.json" || fail "no preset $name"
    done
    for name in $(grep -oE -e '-DZEM_[A-Z_]+' "$1" | cut -c3-); do
        grep -rqE "(option|set)\($name" "$source_dir"/CMakeLists.txt "$source_dir"/packaging ||
            fail "no option $name"
    done
}

made=$build_dir/documents-test
make_sample() {
    rm -rf "$made"
    cp -r "$source_dir/docs/examples/calc" "$made"
    cd "$made"
    mkdir -p build
    g++ --coverage -O0 -o build/calc main.cpp parse/*.cpp eval/*.cpp
    build/calc '1 + 2 * 3' >/dev/null
    for name in sums nightly build; do
        zem-import gcc -o cov --relative --name $name build >/dev/null
    done
    # What the importer's own page builds.
    printf 'int main(int n, char**)\n{\n    if (n > 1)\n        return 0;\n    return 0;\n}\n' >part.cc
}

case $page in
    make) make_sample; exit 0 ;;
    *.1 | docs/resources/*) start=$scratch/work
        cp -r "$made" "$start"
        ln -s "$source_dir/docs" "$start/docs" ;;
esac
case $page${heading:+#} in
    *.1) examples ;;
    *'#') start="$scratch/my project"; make_project "$start"; below_heading ;;
    docs/resources/*) blocks ;;
    *) blocks; start=$source_dir ;;
esac
[ "$page" != docs/man/zem-run.1 ] || make_drivers "$start"
cd "$start"
printed=$scratch/nothing
touch "$printed"
for block in "$scratch"/block*; do
    case $block in
        *.sh)
            echo "== $(head -n 1 "$block") ..."
            printed=$block.printed
            # In this shell, for "cd" to last, and not in a condition, where a failure would not end it.
            eval "$(cat "$block")" >"$printed" 2>"$block.err"
            ;;
        *.text)
            compare "$block" "$printed"
            ;;
        *.sh-build | *.sh-untried)
            check_names "$block"
            ;;
    esac
done
