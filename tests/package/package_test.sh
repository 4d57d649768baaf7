#!/usr/bin/env bash
# Tests of the Debian package, one case a call:  package_test.sh CASE SOURCE_DIR BUILD_DIR
# "make" comes first; the others look at what it made. Exit status 77: cannot be tried here.
# Pipes end in a grep that reads all: with -q it may leave before the command before it has written its
# last line, and that command's failure is the pipe's.
set -euo pipefail
case_=$1
source_dir=$2
build_dir=$3
made=$build_dir/package-test
export LC_ALL=C.UTF-8 PATH=$PATH:/usr/sbin:/sbin

scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
failed=0
fail() { printf 'package.%s: %s\n' "$case_" "$*" >&2; failed=1; }
skip() { printf 'package.%s: not tried: %s\n' "$case_" "$*"; exit 77; }
need() { command -v "$1" >/dev/null || skip "no $1"; }
package() { ls "$made"/zem_*.deb; }

# dpkg on a system of its own below $scratch/root, in which nothing is installed.
dpkg_there() {
    local as_root=()
    [ "$(id -u)" -eq 0 ] || as_root=(fakeroot)
    mkdir -p "$scratch/root/var/lib/dpkg/"{info,updates,triggers}
    touch "$scratch/root/var/lib/dpkg/status"
    "${as_root[@]}" dpkg --root="$scratch/root" --log=/dev/null --force-not-root --force-depends --force-confold "$@" \
        >"$scratch/dpkg.log" 2>&1 || { cat "$scratch/dpkg.log" >&2; fail "dpkg $*"; return 1; }
}
installed_files() { (cd "$scratch/root" && find . -path ./var -prune -o -type f -printf '/%P\n'); }
# The package with another version, and with a line more in its settings.
newer_package() {
    dpkg-deb -R "$(package)" "$scratch/newer"
    sed -i 's/^Version: .*/Version: 99-1/' "$scratch/newer/DEBIAN/control"
    echo '! new' >>"$scratch/newer/etc/X11/app-defaults/zem"
    dpkg-deb --root-owner-group -b "$scratch/newer" "$scratch/newer.deb" >/dev/null
}
# The sample program, imported by the importer in folder $1 to $scratch/cov/sample.log.
sample() { "$1/zem-import" gcc -o "$scratch/cov" --name sample "$made/sample" >"$scratch/import.log"; }

case $case_ in
make)
    rm -rf "$made"
    cpack --config "$build_dir/CPackConfig.cmake" -B "$made" >"$scratch/log" 2>&1 ||
        { cat "$scratch/log"; fail "cpack"; }
    rm -rf "$made/_CPack_Packages"
    package >/dev/null || fail "no package"
    # A program with coverage, for those that run what is in the package.
    mkdir "$made/sample"
    cp "$source_dir"/tests/data/gcc-coverage/* "$made/sample"
    (cd "$made/sample" && g++ --coverage -O0 ./*.cc -o sample && ./sample >/dev/null)
    ;;
lintian)
    need lintian
    # A build for daily work is no less a package, so nothing is let pass here.
    findings=$(lintian --allow-root --fail-on error,warning "$(package)" 2>&1) || fail "findings"
    [ -z "$findings" ] || fail "$findings"
    ;;
contents)
    dpkg-deb -x "$(package)" "$scratch/root"
    [ "$(dpkg-deb -I "$(package)" conffiles)" = /etc/X11/app-defaults/zem ] || fail "conffiles"
    cd "$scratch/root"
    for program in usr/bin/*; do
        [ -e "usr/share/man/man1/${program##*/}.1.gz" ] || fail "$program has no manual page"
        [ -e "usr/share/bash-completion/completions/${program##*/}" ] ||
            fail "$program has no completion"
    done
    for page in zem-map.5 zem-log.5; do
        [ -e "usr/share/man/man5/$page.gz" ] || fail "no $page"
    done
    for size in 32 64 128; do
        file "usr/share/icons/hicolor/${size}x$size/apps/zem.png" | grep "$size x $size" >/dev/null ||
            fail "icon of $size"
    done
    for topic in overview toolbar reports about; do
        [ -s "usr/share/zem/help/$topic.hlp" ] || fail "no help on $topic"
    done
    cmp etc/X11/app-defaults/zem "$source_dir/resources/app-defaults/zem" || fail "defaults"
    if command -v xpmtoppm >/dev/null; then
        "$source_dir/script/icons" --check || fail "icons"
    fi
    ;;
install)
    need dpkg
    [ "$(id -u)" -eq 0 ] || need fakeroot
    dpkg_there -i "$(package)"
    bin=$scratch/root/usr/bin
    sample "$bin"
    "$bin/zem-report" -df "$scratch/cov/sample.log" | grep '^jobs::total' >/dev/null || fail "no report"
    "$bin/zem-dump" "$scratch/cov/sample.log" | grep 'ZEMLogHeader' >/dev/null || fail "no dump"
    dpkg_there -r zem
    left=$(installed_files)
    [ "$left" = /etc/X11/app-defaults/zem ] || fail "left after removal: $left"
    dpkg_there -P zem
    left=$(installed_files)
    [ -z "$left" ] || fail "left after purge: $left"
    ;;
upgrade)
    need dpkg
    [ "$(id -u)" -eq 0 ] || need fakeroot
    dpkg_there -i "$(package)"
    # Settings that were changed here stay, the new ones lie beside them.
    echo 'zem.geometry: 900x700' >>"$scratch/root/etc/X11/app-defaults/zem"
    newer_package
    dpkg_there -i "$scratch/newer.deb"
    grep -q 900x700 "$scratch/root/etc/X11/app-defaults/zem" || fail "settings lost"
    grep -q '! new' "$scratch/root/etc/X11/app-defaults/zem.dpkg-dist" || fail "no new settings"
    dpkg --root="$scratch/root" -s zem | grep '^Version: 99-1' >/dev/null || fail "version"
    dpkg_there -i "$(package)" || fail "back to the older one"
    dpkg_there -P zem
    ;;
desktop)
    dpkg-deb -x "$(package)" "$scratch/root"
    share=$scratch/root/usr/share
    if command -v desktop-file-validate >/dev/null; then
        desktop-file-validate "$share/applications/zem.desktop" || fail "desktop entry"
    fi
    if command -v appstreamcli >/dev/null; then
        appstreamcli validate-tree --no-net "$scratch/root" || fail "catalogue entry"
    fi
    need update-mime-database
    need gio
    update-mime-database "$share/mime" >/dev/null 2>&1
    sample "$scratch/root/usr/bin"
    # Whatever they are called.
    cp "$scratch/cov/sample.log" "$scratch/picture.png"
    cp "$scratch"/cov/sample-*.map "$scratch/letter"
    echo "a log of words" >"$scratch/words.log"
    type_of() {
        XDG_DATA_HOME=$scratch/none XDG_DATA_DIRS=$share:/usr/share \
            gio info -a standard::content-type "$1" | sed -n 's/.*content-type: //p'
    }
    [ "$(type_of "$scratch/cov/sample.log")" = application/x-zem-log ] || fail "type of a log"
    [ "$(type_of "$scratch/letter")" = application/x-zem-map ] || fail "type of a map"
    [ "$(type_of "$scratch/words.log")" != application/x-zem-log ] || fail "any log is taken"
    ;;
completion)
    dpkg-deb -x "$(package)" "$scratch/root"
    sample "$scratch/root/usr/bin"
    export PATH=$scratch/root/usr/bin:$PATH
    cd "$scratch"
    # What bash offers for the last of these words.
    bash_offers() {
        bash --norc -c '
            compopt() { :; }
            . "$1/usr/share/bash-completion/completions/zem"
            shift
            COMP_WORDS=("$@")
            COMP_CWORD=$((${#COMP_WORDS[@]} - 1))
            _zem
            printf "%s\n" "${COMPREPLY[@]}"' bash "$scratch/root" "$@"
    }
    zsh_offers() {
        zsh -f -c '
            compadd() { shift; print -l -- ${(M)@:#${PREFIX}*} }
            _files() { print -l -- files "$@" }
            root=$1
            shift
            words=("$@")
            CURRENT=$#words
            PREFIX=$words[-1]
            . $root/usr/share/zsh/vendor-completions/_zem' zsh "$scratch/root" "$@"
    }
    try() {
        local shell=$1 wanted=$2
        shift 2
        "${shell}_offers" "$@" 2>"$scratch/err" | grep -xF -e "$wanted" >/dev/null ||
            fail "$shell does not offer $wanted for: $*: $(cat "$scratch/err")"
    }
    for shell in bash zsh; do
        command -v $shell >/dev/null || continue
        try $shell -dF zem -d
        try $shell --version zem-report --v
        try $shell --relative zem-import --re
        try $shell untouched__Fi zem cov/sample.log -ff unt
        try $shell jobs zem-report cov/sample.log -fo jo
        try $shell "$made/sample/main.cc" zem cov/sample.log -fF "$made/sample/m"
    done
    try bash cov/sample.log zem cov/
    try bash Square zem cov/sample.log -fo jobs::Squ
    try bash '\(anonymous\ namespace\)' zem cov/sample.log -fo ''
    ;;
manuals)
    need man
    dpkg-deb -x "$(package)" "$scratch/root"
    for page in "$scratch"/root/usr/share/man/man?/*.gz; do
        said=$(MANROFFSEQ='' MANWIDTH=80 man --warnings -E UTF-8 -l -Tutf8 -Z "$page" 2>&1 >/dev/null)
        [ -z "$said" ] || fail "$page: $said"
    done
    MANWIDTH=80 man -l "$scratch/root/usr/share/man/man5/zem-map.5.gz" >"$scratch/map.txt"
    for words in 'A name may lack its zero' '0x00006704' 'zem-container(5)'; do
        grep -qF "$words" "$scratch/map.txt" || fail "zem-map(5) does not say $words"
    done
    ;;
window)
    need Xvfb
    need xwd
    dpkg-deb -x "$(package)" "$scratch/root"
    sample "$scratch/root/usr/bin"
    # As from a menu: with the entry's command, once without a file and once with one.
    command=$(sed -n 's/^Exec=\(.*\) %F$/\1/p' "$scratch/root/usr/share/applications/zem.desktop")
    export XAPPLRESDIR=$scratch/root/etc/X11/app-defaults PATH=$scratch/root/usr/bin:$PATH HOME=/nonexistent
    for log in '' "$scratch/cov/sample.log"; do
        # shellcheck disable=SC2086 # the command is words
        "$source_dir/script/screenshot" "$made/window${log:+-log}.png" $command $log \
            >"$scratch/out" 2>"$scratch/err" || fail "no window: $(cat "$scratch/err")"
        [ ! -s "$scratch/err" ] || fail "said: $(cat "$scratch/err")"
    done
    cmp -s "$made/window.png" "$made/window-log.png" && fail "the log shows nothing"
    ;;
source)
    cpack --config "$build_dir/CPackSourceConfig.cmake" -B "$scratch/out" >"$scratch/log" 2>&1 ||
        { cat "$scratch/log"; fail "cpack"; }
    mkdir "$scratch/tree"
    tar -xf "$scratch"/out/zem-*.tar.gz -C "$scratch/tree" --strip-components=1
    [ ! -e "$scratch/tree/.git" ] && [ ! -e "$scratch/tree/build" ] || fail "more than sources"
    cmake -S "$scratch/tree" -B "$scratch/configured" >"$scratch/log" 2>&1 ||
        { cat "$scratch/log"; fail "does not configure"; }
    ;;
*)
    fail "no such case"
    ;;
esac
exit $failed
