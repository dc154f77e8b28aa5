#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Runs the Windows test programs of a finished cross build under Wine, on a screen of their own.
#
#   tests/windows/run_wine_suites.sh [BUILD-FOLDER]
#
# The build folder (build/windows unless given) holds windows_suites.txt: one line per run, with the
# program, its result file and, for runs of some tests on a finer screen or on a system in another language,
# the dots per inch, the tests' filter, and the language's name here (tr_TR). Those runs are left out when GTEST_FILTER asks for tests. The results are GoogleTest XML;
# suites.txt lists them. The exit code is 0 only when every program ran to its end and every test passed.
set -uo pipefail

root="$(cd "$(dirname "$0")/../.." && pwd)"
build="${1:-$root/build/windows}"
# Longer than any program takes, in seconds; each has a watchdog of its own besides.
limit="${PELORA_WINE_LIMIT:-600}"

export WINEPREFIX="${PELORA_WINEPREFIX:-$root/build/wineprefix}"
export WINEARCH=win64 WINEDEBUG=-all
# No parts for managed code and web pages, and no debugger that would wait for somebody.
# The directory user-interface library is the tests' own or there is none: Wine's only throws.
export WINEDLLOVERRIDES="mscoree,mshtml=;winedbg.exe=d;dsuiext=n"
# Automation strings are freed at once, so that they can be counted.
export OANOCACHE=1
export XENVIRONMENT="$root/tests/windows/x11_defaults"

if [ -z "${PELORA_WINE_SCREEN:-}" ]; then
  export PELORA_WINE_SCREEN=1
  # A program and Wine's server take turns thousands of times a second: on one processor they do so twice
  # as fast as across two.
  processor="$(taskset -cp $$ | grep -oE '[0-9]+$')"
  exec taskset -c "$processor" xvfb-run -a -s "-screen 0 1280x1024x24" "$0" "$build"
fi

end_wine() { wineserver -k 2>/dev/null; wineserver -w 2>/dev/null; }
trap end_wine EXIT
# One left over from another screen would know no screen at all.
end_wine

"$root/tests/windows/make_wine_prefix.sh" || exit 1

# Wine reads the dots per inch when it starts.
use_dpi() {
  [ "$1" = "${PELORA_DPI:-}" ] && return
  export PELORA_DPI="$1"
  wine reg add 'HKCU\Control Panel\Desktop' /v LogPixels /t REG_DWORD /d "$1" /f >/dev/null </dev/null
  end_wine
}

# Wine takes its language from this system's, when it starts. The language need not be installed here.
locales="$root/build/locales"
use_language() {
  [ "$1" = "${language_in_use:-}" ] && return
  language_in_use="$1"
  end_wine
  unset LC_ALL PELORA_LANGUAGE
  [ -z "$1" ] && return
  if [ -e "/usr/share/i18n/locales/$1" ]; then
    [ -e "$locales/$1.UTF-8" ] || { mkdir -p "$locales" && localedef -i "$1" -f UTF-8 "$locales/$1.UTF-8"; }
    export PELORA_LANGUAGE="${1/_/-}"
  fi
  # The shell itself does not look there, and says so.
  { export LOCPATH="$locales" LC_ALL="$1.UTF-8"; } 2>/dev/null
}

failed=0
unset PELORA_DPI
mkdir -p "$build/results"
while IFS=$'\t' read -r program results dpi filter language; do
  [ -n "$filter" ] && [ -n "${GTEST_FILTER:-}" ] && continue
  use_dpi "${dpi:-96}"
  use_language "${language:-}"
  name="$(basename "$results" .xml)"
  rm -f "$results"
  printf '%s: ' "$name"
  timeout --kill-after=10 "$limit" wine "$program" \
    "--gtest_output=xml:$(winepath -w "$results" 2>/dev/null)" ${filter:+"--gtest_filter=$filter"} \
    >"$build/results/$name.log" 2>&1
  code=$?
  tail -n 400 "$build/results/$name.log" | grep -aE '^\[  (PASSED|FAILED)|^(watchdog|crash):' | head -40
  case "$code" in
    0) ;;
    97 | 124 | 137) echo "$name hung (exit code $code)"; failed=1 ;;
    *) echo "$name failed (exit code $code); see results/$name.log"; failed=1 ;;
  esac
  if [ ! -s "$results" ]; then
    echo "$name left no results"
    failed=1
  fi
done <"$build/windows_suites.txt"

[ -s "$build/windows_suites.txt" ] || { echo "no program to run"; failed=1; }
exit "$failed"
