#!/bin/sh
# Compiles through ccache where it is installed. Precompiled headers need the two relaxed checks; paths below the
# project's root are made relative, so that one clone uses what another has compiled.
if command -v ccache >/dev/null 2>&1; then
    CCACHE_SLOPPINESS=pch_defines,time_macros
    CCACHE_BASEDIR=$(cd "$(dirname "$0")/.." && pwd)
    CCACHE_NOHASHDIR=1
    export CCACHE_SLOPPINESS CCACHE_BASEDIR CCACHE_NOHASHDIR
    exec ccache "$@"
fi
exec "$@"
