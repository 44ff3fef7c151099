#!/bin/bash
# Refuses C++ files that clang-format would change, and the toolkit's own test macros under tests/: inside a
# GoogleTest body those pass silently, whatever they check.   --fix: formats instead.
. "$(dirname "$0")/lib/common.sh"

mapfile -t files < <(sources)
if [ "${1:-}" = --fix ]; then
    exec clang-format -i "${files[@]}"
fi

printf '%s\0' "${files[@]}" | xargs -0 -n 40 clang-format --dry-run -Werror

if grep -nE '\b(QVERIFY2?|QCOMPARE|QTRY_[A-Z_]+|QFAIL|QSKIP|QEXPECT_FAIL)\b' $(sources 'tests/*.h' 'tests/*.cpp') /dev/null; then
    die "These macros pass silently inside a GoogleTest body: use EXPECT_ and ASSERT_ instead."
fi
say "Format: ${#files[@]} files are right."
