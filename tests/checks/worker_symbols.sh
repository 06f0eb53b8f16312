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
# What the compiler itself may call: the C library's memory functions, and 64-bit divisions where registers have 32.
compilers='mem(cpy|move|set|cmp)|_GLOBAL_OFFSET_TABLE_|__stack_chk_fail|__u?divdi3|__u?moddi3'
outside=$(nm -C "$@" | grep -E ' U ' | grep -vE " U ($compilers)" || true)
if [ -n "$outside" ]; then
    echo "functions that packed workers call elsewhere:"
    echo "$outside"
    exit 1
fi
echo "$# objects"
