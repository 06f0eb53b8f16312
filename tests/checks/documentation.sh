#!/usr/bin/env bash
# Builds the reference of the public headers, in which every warning is an error. Runs in the project's root.
# Usage: documentation.sh DOXYGEN OUTPUT_DIRECTORY
set -euo pipefail
mkdir -p "$2"
{ cat docs/Doxyfile; echo "OUTPUT_DIRECTORY = \"$2\""; } | "$1" -
