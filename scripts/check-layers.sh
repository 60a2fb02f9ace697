#!/usr/bin/env bash
# Fails, with one line per offence, when a source file includes a header of a
# layer above its own. The layers, lowest first; each may include those
# before it (the public headers in include/ belong to data):
#   core data shapes scene render tools window api
set -euo pipefail
cd "$(dirname "$0")/.."

layers=(core data shapes scene render tools window api)
declare -A rank owner
for i in "${!layers[@]}"; do rank[${layers[$i]}]=$i; done
for layer in "${layers[@]}"; do
    for header in "$layer"/*.h; do owner[$(basename "$header")]=$layer; done
done
for header in include/*.h; do owner[$(basename "$header")]=data; done

status=0
for layer in "${layers[@]}"; do
    for file in "$layer"/*.h "$layer"/*.cpp; do
        [ -e "$file" ] || continue
        while IFS= read -r included; do
            target=${owner[$(basename "$included")]:-}
            [ -n "$target" ] || continue
            if [ "${rank[$target]}" -gt "${rank[$layer]}" ]; then
                echo "layer violation: $file includes $target/$(basename "$included") ($layer may include only ${layers[*]:0:${rank[$layer]}+1})"
                status=1
            fi
        done < <(sed -n 's/^[[:space:]]*#[[:space:]]*include[[:space:]]*"\([^"]*\)".*/\1/p' "$file")
    done
done
exit $status
