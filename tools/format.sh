#!/bin/bash
# Formats every source in place.
cd "$(dirname "$0")/.." || exit 1
git ls-files '*.cpp' '*.h' | xargs clang-format-14 -i
