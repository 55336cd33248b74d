#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Fails when a file is not formatted, or when an include goes against the arrows between folders.
# With the word "tidy" it runs clang-tidy over the whole project as well (minutes).
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

failed=0
complain()
{
    echo "$1" >&2
    failed=1
}

mapfile -t sources < <(git ls-files --cached --others --exclude-standard '*.cpp' '*.h')
clang-format --dry-run --Werror "${sources[@]}" || complain "clang-format -i would change these files"

# The licence of a file stands in its first lines, for those who meet it outside this tree.
unlicensed=$(git ls-files --cached --others --exclude-standard '*.cpp' '*.h' '*.mjs' '*.sh' '*.py' \
    '*.awk' '*.cmake' '*CMakeLists.txt' .ci/run | while read -r file; do
    [ ! -f "$file" ] || head -2 "$file" | grep -q 'SPDX-License-Identifier: MIT' || echo "$file"
done)
[ -z "$unlicensed" ] || complain "No SPDX-License-Identifier in the first lines of:
$unlicensed"

# may_not_include FOLDER PATTERN: no file in the folder includes what the pattern matches.
may_not_include()
{
    local found
    found=$(grep -rnE "^#\s*include\s+[\"<]($2)" "$1" --include='*.h' --include='*.cpp' || true)
    [ -z "$found" ] || complain "Against the arrows:
$found"
}
may_not_include host '(\.\./)*(src|cli|tests)/'
may_not_include host/desk '(\.\./)+lib/'
may_not_include src '(\.\./)*host/|vexdesk/terminal/'

if [ "${1:-}" = tidy ]; then
    mapfile -t units < <(printf '%s\n' "${sources[@]}" | grep '\.cpp$')
    run-clang-tidy -quiet -p build/dev "${units[@]}" || failed=1
fi
exit "$failed"
