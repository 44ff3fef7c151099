#!/bin/sh
# Compiles through ccache where it is installed; precompiled headers need the two relaxed checks.
if command -v ccache >/dev/null 2>&1; then
    export CCACHE_SLOPPINESS=pch_defines,time_macros
    exec ccache "$@"
fi
exec "$@"
