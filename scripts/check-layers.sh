#!/usr/bin/env bash
# Checks every project include against the table in docs/architecture.md: which folder may
# include which. Prints each include that breaks it and exits 1; silent and 0 when clean.
set -euo pipefail
cd "$(dirname "$0")/.."

subsystems="link measure profiles storage graph printing"
# The state headers of the subsystems: all that the hub may include of them.
hub_state="link/link_state.h link/comm_port.h measure/measure_state.h profiles/profile_state.h storage/record_state.h graph/graph_state.h printing/printing_state.h"

allowed() {  # allowed FROM_FOLDER INCLUDED_PATH
  local from=$1 path=$2 to=${2%%/*}
  [ "$from" = "$to" ] && return 0
  case $from in
    core | sim) return 1 ;;
    hub) [ "$to" = core ] && return 0
         for h in $hub_state; do [ "$path" = "$h" ] && return 0; done
         return 1 ;;
    link) case $to in core | hub | measure) return 0 ;; esac; return 1 ;;
    printing) case $to in core | hub | graph) return 0 ;; esac; return 1 ;;
    measure | profiles | storage | graph) case $to in core | hub) return 0 ;; esac; return 1 ;;
    log1) case $to in core | hub) return 0 ;; esac
          for s in $subsystems; do [ "$to" = "$s" ] && return 0; done
          return 1 ;;
    ui) case $to in cli | app | sim | tests | bench) return 1 ;; esac; return 0 ;;
    cli | app) case $to in sim | tests | bench) return 1 ;; esac; return 0 ;;
    *) return 0 ;;
  esac
}

bad=0
for folder in core hub log1 $subsystems ui cli app sim; do
  [ -d "$folder" ] || continue
  while IFS= read -r hit; do
    file=${hit%%:*}
    rest=${hit#*:}
    line=${rest%%:*}
    path=$(sed -E 's/.*#include "([^"]+)".*/\1/' <<<"$rest")
    [[ $path == */* ]] || continue
    if ! allowed "$folder" "$path"; then
      echo "$file:$line: $folder/ may not include $path (see docs/architecture.md)"
      bad=1
    fi
  done < <(grep -rn --include='*.h' --include='*.cpp' '^#include "' "$folder" || true)
  # Below ui/ the logic is standard C++ only.
  case $folder in ui | cli | app) ;; *)
    if grep -rn --include='*.h' --include='*.cpp' -E '^#include <Q' "$folder"; then
      echo "$folder/ includes Qt"; bad=1
    fi ;;
  esac
done
exit $bad
