#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Makes the Debian packages, unpacks them into a root of its own, and uses what is there as somebody
# would who has installed them: the batch companion, the terminal, and the headers for plug-in authors.
#
#   packages.sh SOURCE_DIR BUILD_DIR
set -euo pipefail
export LC_ALL=C.UTF-8

source_dir=$1
build_dir=$2
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
root=$work/root
prefix=$root/usr

fail()
{
    echo "FAIL: $*" >&2
    exit 1
}

step() { echo "== $*"; }

# Nothing of the build's surroundings: no store of the user, no other libraries.
as_user()
{
    env -i PATH=/usr/bin:/bin HOME="$work/home" LC_ALL=C.UTF-8 QT_QPA_PLATFORM=offscreen \
        XDG_RUNTIME_DIR="$work/runtime" "$@"
}

step "cpack"
for config in CPackConfig CPackPluginConfig; do
    (cd "$build_dir" && cpack -G DEB -B "$work/packages" --config "$config.cmake") \
        >"$work/cpack.log" 2>&1 || { cat "$work/cpack.log" >&2; fail "cpack"; }
done
mkdir -p "$root" "$work/home" "$work/runtime"
chmod 700 "$work/runtime"
for name in vexdesk-desk tadatamanager vexdesk-dev; do
    package=$(ls "$work/packages/${name}"_*.deb) || fail "there is no package $name"
    [ "$(dpkg-deb -f "$package" Package)" = "$name" ] || fail "$package is not called $name"
    dpkg-deb -x "$package" "$root"
done

step "what the packages ask for"
depends() { dpkg-deb -f "$work/packages/$1"_*.deb Depends; }
depends vexdesk-desk | grep -q 'libqt6widgets6' || fail "vexdesk-desk does not ask for Qt"
depends tadatamanager | grep -q 'vexdesk-desk (>= ' || fail "tadatamanager does not ask for the terminal"
depends vexdesk-dev | grep -q 'vexdesk-desk (= ' || fail "vexdesk-dev does not ask for the terminal"

step "their versions"
version_of() { dpkg-deb -f "$work/packages/$1"_*.deb Version | sed 's/-[0-9]*$//'; }
desk_version=$(version_of vexdesk-desk)
plugin_version=$(version_of tadatamanager)
[ "$(version_of vexdesk-dev)" = "$desk_version" ] || fail "vexdesk-dev is not of the terminal's version"
newest=$(grep -m 1 '^## [^U]' "$source_dir/CHANGELOG.md")
[[ "$newest" == "## Terminal $desk_version, plug-in $plugin_version - "* ]] ||
    fail "the newest release in CHANGELOG.md is not $desk_version and $plugin_version: $newest"

# Tools that are here where the suite's packages are.
with_tool() # TOOL ARGUMENTS...
{
    if command -v "$1" >/dev/null; then
        "$@" >"$work/tool.log" 2>&1 || { cat "$work/tool.log" >&2; fail "$*"; }
    elif [ -n "${TADATA_REQUIRE_TOOLS:-}" ]; then
        fail "$1 is missing"
    else
        echo "skipped: there is no $1"
    fi
}
step "what the distribution's checkers say"
with_tool lintian --allow-root --fail-on error,warning "$work/packages"/*.deb
with_tool desktop-file-validate "$prefix/share/applications/vexdesk-desk.desktop"
with_tool appstreamcli validate --no-net "$prefix/share/metainfo/org.vexdesk.desk.metainfo.xml"
metainfo=$prefix/share/metainfo/org.vexdesk.desk.metainfo.xml
grep -qF "version=\"$desk_version\" date=\"${newest##* - }\"" "$metainfo" ||
    fail "$metainfo does not name the release $desk_version"

step "what they hold"
for name in vexdesk-desk tadatamanager; do
    if dpkg-deb -c "$work/packages/${name}"_*.deb | grep vexdesk-tour; then
        fail "$name holds the tour, which is for authors"
    fi
done
for file in bin/vexdesk-desk bin/tadata lib/vexdesk/.installed \
    lib/vexdesk/plugins/libtadatamanager.so lib/vexdesk/plugins/libtadataquality.so \
    share/applications/vexdesk-desk.desktop share/icons/hicolor/48x48/apps/vexdesk-desk.png \
    share/icons/hicolor/scalable/apps/vexdesk-desk.svg share/man/man1/tadata.1.gz \
    share/man/ru/man1/tadata.1.gz share/vexdesk/translations/vexdesk_en.qm share/vexdesk/docs/guide.ru.md \
    share/vexdesk/docs/guide.en.md share/vexdesk/docs/images/ru/options.png \
    share/vexdesk/translations/tadata_en.qm lib/vexdesk/plugins/translations/tadatamanager_en.qm \
    lib/vexdesk/plugins/translations/tadataquality_en.qm \
    share/doc/tadatamanager/guide.ru.md share/doc/tadatamanager/guide.en.md \
    include/vexdesk/iplugin.h lib/cmake/Vexdesk/VexdeskConfig.cmake; do
    [ -e "$prefix/$file" ] || fail "/usr/$file is missing"
done
[ "$(ls "$root")" = usr ] || fail "something lies outside /usr: $(ls "$root")"
if grep -rlF "$build_dir" "$prefix" | grep -v '\.md$'; then
    fail "these files name the build folder"
fi
while read -r file; do
    if ldd "$file" | grep -F vexdesk | grep -vF "$prefix"; then
        fail "$file takes its libraries from elsewhere"
    fi
done < <(find "$prefix/lib" -type f \( -name '*.so*' -o -perm -u+x \))

step "tadata"
as_user "$prefix/bin/tadata" import "$source_dir/docs/samples/vega-minutes.csv" \
    --series NORD/MAIN/VEGA --columns date=2,time=3,open=4,high=5,low=6,close=7,volume=8 >/dev/null
as_user "$prefix/bin/tadata" list | grep -q 'NORD/MAIN/VEGA' || fail "what was imported is not listed"
[ -d "$work/home/.local/share/Vexdesk/Vexdesk/tadata/NORD/MAIN/VEGA" ] ||
    fail "the store is not in the user's own directory"
as_user "$prefix/bin/tadata" --help | grep -qP '\p{Cyrillic}' || fail "tadata does not speak Russian"
[ "$(as_user "$prefix/bin/tadata" --version)" = "tadata $plugin_version" ] ||
    fail "tadata is not of the plug-in's version"
if as_user TADATA_LANGUAGE=en "$prefix/bin/tadata" --help | grep -P '\p{Cyrillic}'; then
    fail "tadata does not speak English"
fi

step "the terminal"
if as_user "$prefix/bin/vexdesk-desk" --language en --help | grep -P '\p{Cyrillic}'; then
    fail "the terminal does not speak English"
fi
as_user "$prefix/bin/vexdesk-tour" "$work/tour" >"$work/tour.log" 2>&1 ||
    { cat "$work/tour.log" >&2; fail "the tour"; }
[ "$(find "$work/tour" -name '*.png' | wc -l)" -gt 20 ] || fail "the tour made too few pictures"

step "a plug-in of somebody else, built with the headers; and every header alone"
cmake -S "$source_dir/tests/package/consumer" -B "$work/consumer" -G Ninja \
    -DCMAKE_PREFIX_PATH="$prefix" >"$work/consumer.log" 2>&1 &&
    cmake --build "$work/consumer" >>"$work/consumer.log" 2>&1 ||
    { cat "$work/consumer.log" >&2; fail "the plug-in does not build"; }
cmake -S "$source_dir/tests/package/headers" -B "$work/headers" -G Ninja \
    -DCMAKE_PREFIX_PATH="$prefix" >"$work/headers.log" 2>&1 &&
    cmake --build "$work/headers" >>"$work/headers.log" 2>&1 ||
    { cat "$work/headers.log" >&2; fail "a header alone does not build"; }
plugin_dir=$(dirname "$(find "$work/consumer" -name 'libconsumer.so')")
as_user "$prefix/bin/vexdesk-desk" --language en --plugins "$plugin_dir" --list-plugins >"$work/plugins.txt"
grep -qP '^loaded\tconsumer\t' "$work/plugins.txt" ||
    { cat "$work/plugins.txt" >&2; fail "the terminal does not load it"; }

# With another compiler than the terminal, where there is one: it is the quicker of the two as well.
step "this plug-in, built with the headers alone"
cmake -S "$source_dir" -B "$work/plugin" -G Ninja -DTADATA_INSTALLED_HOST=ON -DTADATA_BUILD_TESTS=OFF \
    -DCMAKE_CXX_COMPILER="$(command -v clang++ || command -v c++)" \
    -DTADATA_PRECOMPILED_HEADERS=ON -DCMAKE_BUILD_TYPE=Debug -DCMAKE_CXX_FLAGS_DEBUG= \
    -DCMAKE_PREFIX_PATH="$prefix" -DCMAKE_EXPORT_COMPILE_COMMANDS=ON >"$work/plugin.log" 2>&1 &&
    cmake --build "$work/plugin" --target tadatamanager tadataquality tadata >>"$work/plugin.log" 2>&1 ||
    { cat "$work/plugin.log" >&2; fail "the plug-in does not build"; }
if grep -F "$source_dir/host" "$work/plugin/compile_commands.json"; then
    fail "the plug-in is built with the host's sources"
fi
as_user "$prefix/bin/vexdesk-desk" --language en --plugins "$work/plugin/bin/plugins" --list-plugins |
    grep -qP '^loaded\ttadatamanager\t' || fail "the terminal does not load it"
echo "All of it holds."
