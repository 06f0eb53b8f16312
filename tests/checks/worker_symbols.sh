#!/usr/bin/env bash
# No object compiled for an instruction set may offer code that the linker could use for everybody: weak symbols
# (inline functions, templates) would send older processors into instructions that they do not have.
# Usage: worker_symbols.sh OBJECT...
set -euo pipefail

[ $# -gt 0 ] || { echo "no objects"; exit 1; }
weak=$(nm -C --defined-only "$@" | grep -E ' [WwVvu] ' || true)
if [ -n "$weak" ]; then
    echo "weak symbols in packed workers:"
    echo "$weak"
    exit 1
fi
outside=$(nm -C "$@" | grep -E ' U ' | grep -vE ' U (mem(cpy|move|set|cmp)|_GLOBAL_OFFSET_TABLE_|__stack_chk_fail)' || true)
if [ -n "$outside" ]; then
    echo "functions that packed workers call elsewhere:"
    echo "$outside"
    exit 1
fi
echo "$# objects"
