#!/usr/bin/env bash
# Cost of the nodes of expressions beside Lua 5.4: bench/nodes.sh BUILD_FOLDER
set -eu
[ -x "$1/nodes" ] || { echo "nodes: skipped, liblua5.4-dev is missing"; exit 0; }
exec "$1/nodes"
