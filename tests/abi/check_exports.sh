#!/bin/sh
# Compares the functions declared in the public headers with the dynamic symbols the shared
# objects define: rvpcv.h against librvpcv, rvpcore.h against librvpcore. Any difference fails.
set -eu
inc=$1 lib=$2 core=$3
cc=${CC:-cc}
tmp=$(mktemp -d)
trap 'rm -rf "$tmp"' EXIT

declared() {  # header, guard macro of the other header (so only this header's names count)
  printf '#include "%s"\n' "$1" | "$cc" -E -P -I"$inc" -D"$2" -DRVPCV_BUILD -DRVPCORE_BUILD -x c - |
    tr '\n' ' ' | grep -oE 'visibility\("default"\)\)\) [^;{]*\(' |
    grep -oE '[A-Za-z_][A-Za-z0-9_]*[[:space:]]*\($' | tr -d ' (' | sort -u
}
exported() { nm -D --defined-only "$1" | awk '$2 ~ /^[TWiV]$/ {print $3}' | sort -u; }

declared "$inc/rvpcv.h" RVPCORE_H_SKIP_NONE > "$tmp/all"
declared "$inc/rvpcore.h" RVPCV_H > "$tmp/core_decl"
comm -23 "$tmp/all" "$tmp/core_decl" > "$tmp/cv_decl"
exported "$lib" > "$tmp/cv_exp"
exported "$core" > "$tmp/core_exp"

status=0
for pair in cv core; do
  if ! diff -u "$tmp/${pair}_decl" "$tmp/${pair}_exp" > "$tmp/diff"; then
    echo "lib$pair: declared (-) and exported (+) functions differ:"; cat "$tmp/diff"; status=1
  fi
done
n=$(wc -l < "$tmp/cv_decl"); m=$(wc -l < "$tmp/core_decl")
[ "$n" -gt 0 ] && [ "$m" -gt 0 ] || { echo "no declarations found"; status=1; }
[ $status -eq 0 ] && echo "exports match the headers: $n in librvpcv, $m in librvpcore"
exit $status
